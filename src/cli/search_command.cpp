// search: every given port (or every listed one) searched once, the modules
// found read wholly, and an exit code that tells the whole of it.

#include "command_steps.h"
#include "commands.h"
#include "history/flow_entries.h"
#include "link/concurrent_search.h"
#include "model/record_json.h"
#include "port_argument.h"
#include "serial/network_port.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/message.h"

#include <QJsonArray>
#include <QJsonObject>

namespace velmor::cli {

int searchedPorts(Session& session, const QCommandLineParser& parser, QList<PortEntry>& ports)
{
    ports = session.ports();
    if (parser.isSet(optionName(Opt::Port))) {
        ports.clear();
        for (const QString& argument : parser.values(optionName(Opt::Port))) {
            PortEntry port;
            if (!session.choosePort(argument, port)) {
                if (namesNetworkScheme(argument))
                    return unknownPort(session, argument);
                printError(texts::message::openPortFail(shownText(argument), session.language()));
                printError(pick(texts::message::kReason, session.language())
                               .arg(shownText(argument), pick(texts::cli::kNoSuchPort, session.language())));
                return kExitPortFailed;
            }
            ports.append(port);
        }
    }
    ports = distinctPorts(ports);
    return kExitDone;
}

void recordSearch(Session& session, const QList<PortEntry>& ports, const LinesRead& read)
{
    QStringList lines;
    for (const PortEntry& port : ports)
        lines << port.name;
    QList<FoundModule> modules;
    for (const ConcurrentSearch::Found& found : read.every)
        modules.append({found.port.name, &found.record, found.wholly});
    for (const HistoryEntry& entry :
         searchEntries(lines, modules, read.portFailed ? failureName(Failure::PortNotOpened) : QString()))
        session.record(entry);
}

LinesRead readLines(Session& session, const QList<PortEntry>& ports, bool wholeRack)
{
    LinesRead read;
    read.report = pick(texts::message::kNoModuleFound, session.language());
    if (ports.isEmpty()) {
        printError(pick(texts::message::kNoComPort, session.language()));
        return read;
    }
    // The closing report goes to standard output; what came before it
    // (refused replies, ports that would not open) to standard error.
    // Every line at once, each with its own exchange; the result is the
    // one-by-one search's.
    ConcurrentSearch search(session.operations(), session.dialogs());
    if (wholeRack)
        search.keepEveryModule();
    QObject::connect(&search, &ConcurrentSearch::frameLogged, &session.frameLog(), &FrameLog::append);
    QObject::connect(&search, &ConcurrentSearch::portNotOpened,
                     [&](const PortEntry& port, OpenFailure failure, const QString& reason) {
        read.portFailed = true;
        session.dialogs().showMessage({}, session.portFailureText(port, failure, reason));
    });
    QObject::connect(&search, &ConcurrentSearch::lineBusy, [&](const PortEntry& port, const LineHolder& holder) {
        read.portFailed = true;
        session.dialogs().showMessage({}, Operations::lineBusyText(port.name, holder, session.language()));
    });
    session.dialogs().hold(true);
    read.found = search.searchAllAtOnce(ports, ports.first().number);
    QStringList messages = session.dialogs().takeHeld();
    session.dialogs().hold(false);
    read.report = messages.takeLast();
    for (const QString& message : messages)
        printError(message);
    read.unread = search.unreadModules();
    read.every = search.everyModule();
    return read;
}

int runSearch(Session& session, const QCommandLineParser& parser)
{
    QList<PortEntry> ports;
    if (const int code = searchedPorts(session, parser, ports))
        return code;

    const LinesRead read = readLines(session, ports);
    const int found = read.found;
    const QList<int>& unread = read.unread;
    const bool portFailed = read.portFailed;
    const QString& report = read.report;

    QJsonArray modules;
    QJsonArray incomplete;
    QString text;
    for (int i = 0; i < found; ++i) {
        const ModuleRecord& module = session.state().table[static_cast<size_t>(i)];
        const QString portName = shownText(session.portName(module.portNumber));
        modules.append(recordToJson(module));
        text += QString::number(i + 1) + QLatin1Char('\t') + portName + QLatin1Char('\t')
              + QString::number(module.busAddress) + QLatin1Char('\t') + shownText(trimmedText(module.modelName))
              + QLatin1Char('\t') + QString::number(module.moduleNumber) + QLatin1Char('\n');
        if (unread.contains(i)) {
            incomplete.append(i + 1);
            printError(pick(texts::message::kNotReadWholly, session.language())
                           .arg(QString::number(i + 1), portName, QString::number(module.busAddress)));
        }
    }
    recordSearch(session, ports, read);
    if (session.json())
        session.printJson(QJsonObject{{QStringLiteral("modules"), modules},
                                      {QStringLiteral("incomplete"), incomplete},
                                      {QStringLiteral("report"), report}});
    else
        session.printText(text + report);
    if (portFailed)
        return kExitPortFailed;
    return found > 0 && unread.isEmpty() ? kExitDone : kExitExchangeFailed;
}

}  // namespace velmor::cli
