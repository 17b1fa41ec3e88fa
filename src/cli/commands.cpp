#include "commands.h"

#include "config/config_file.h"
#include "model/messages.h"
#include "model/record_json.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

namespace velmor::cli {
namespace {

const QCommandLineOption kPort({QStringLiteral("port")}, QStringLiteral("Port: a device path, a name or a number as 'ports' lists it."), QStringLiteral("P"));
const QCommandLineOption kAddress({QStringLiteral("address")}, QStringLiteral("Bus address of the module, 0 to 255."), QStringLiteral("A"));
const QCommandLineOption kSave({QStringLiteral("save")}, QStringLiteral("Also write the module's configuration file (8679 bytes)."), QStringLiteral("FILE"));
const QCommandLineOption kConfig({QStringLiteral("config")}, QStringLiteral("Configuration file to load."), QStringLiteral("FILE"));
const QCommandLineOption kOnlyOne({QStringLiteral("only-one-module")}, QStringLiteral("Confirm that only one module is on the line; the write goes to every module."));
const QCommandLineOption kChannels({QStringLiteral("channels")}, QStringLiteral("Channels to balance, 1-based, e.g. 1,2,5-8 (default: all)."), QStringLiteral("LIST"));

int usage(const QString& text)
{
    printError(text);
    return kExitUsage;
}

// Sets up the port of a command; on failure the exit code is returned.
int takePort(Session& session, const QCommandLineParser& parser, PortEntry& port)
{
    if (!parser.isSet(kPort))
        return usage(QStringLiteral("--port is required."));
    if (!session.choosePort(parser.value(kPort), port)) {
        // As the window says it when a request's port will not open.
        printError(pick(msg::kOpenComPortFail, session.language()));
        return kExitPortFailed;
    }
    return kExitDone;
}

int takeAddress(Session& session, const QCommandLineParser& parser)
{
    bool ok = false;
    const int address = parser.value(kAddress).toInt(&ok);
    if (!parser.isSet(kAddress) || !ok || address < 0 || address > 255)
        return usage(QStringLiteral("--address takes a number from 0 to 255."));
    session.record().busAddress = static_cast<qint16>(address);
    return kExitDone;
}

int loadFile(Session& session, const QString& path)
{
    if (!loadConfigFile(path, session.record())) {
        printError(pick(msg::kOpenConfigFail, session.language()));
        return kExitFileFailed;
    }
    return kExitDone;
}

// "1,2,5-8" as a channel mask (bit c for channel c+1); false on anything else.
bool channelMask(const QString& list, qint32& mask)
{
    static const QRegularExpression item(QStringLiteral("^(\\d+)(?:-(\\d+))?$"));
    quint32 bits = 0;
    for (const QString& part : list.split(QLatin1Char(','))) {
        const QRegularExpressionMatch m = item.match(part.trimmed());
        if (!m.hasMatch())
            return false;
        const int first = m.captured(1).toInt();
        const int last = m.captured(2).isEmpty() ? first : m.captured(2).toInt();
        if (first < 1 || last > kWiredChannels || first > last)
            return false;
        for (int c = first; c <= last; ++c)
            bits |= 1u << (c - 1);
    }
    mask = static_cast<qint32>(bits);
    return true;
}

// Prints the module after a flow that worked; the exit code says how it went.
int finish(Session& session, bool ok, const PortEntry& port)
{
    if (ok)
        session.printRecord(port.name);
    return session.outcome(ok);
}

void declareNothing(QCommandLineParser&) {}

void declarePort(QCommandLineParser& parser) { parser.addOption(kPort); }

void declareRead(QCommandLineParser& parser)
{
    parser.addOptions({kPort, kAddress, kSave});
}

void declareWrite(QCommandLineParser& parser)
{
    parser.addOptions({kPort, kAddress, kConfig});
}

void declareWriteInfo(QCommandLineParser& parser)
{
    parser.addOptions({kPort, kConfig, kOnlyOne});
}

void declareBalance(QCommandLineParser& parser)
{
    parser.addOptions({kPort, kAddress, kChannels});
}

void declareShow(QCommandLineParser& parser)
{
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Configuration file to decode."));
}

int runPorts(Session& session, const QCommandLineParser&)
{
    QJsonArray list;
    QString text;
    for (const PortEntry& port : session.ports()) {
        list.append(QJsonObject{{QStringLiteral("name"), port.name},
                                {QStringLiteral("number"), port.number},
                                {QStringLiteral("device"), port.device}});
        text += port.name + QLatin1Char('\t') + QString::number(port.number) + QLatin1Char('\t') + port.device + QLatin1Char('\n');
    }
    if (session.json())
        session.printJson(list);
    else if (!text.isEmpty())
        session.printText(text);
    return kExitDone;
}

int runSearch(Session& session, const QCommandLineParser& parser)
{
    QList<PortEntry> ports;
    for (const QString& argument : parser.values(kPort)) {
        PortEntry port;
        if (!session.choosePort(argument, port)) {
            printError(msg::openPortFail(argument, session.language()));
            return kExitPortFailed;
        }
        ports.append(port);
    }
    if (!parser.isSet(kPort))
        ports = session.ports();

    int found = 0;
    QString report = pick(msg::kNoModuleFound, session.language());
    if (ports.isEmpty()) {
        printError(pick(msg::kNoComPort, session.language()));
    } else {
        // The closing report goes to standard output; what came before it
        // (refused replies, ports that would not open) to standard error.
        ModuleSearch search(session.operations(), session.dialogs());
        session.dialogs().hold(true);
        found = search.cmdSearch_Click(ports, ports.first().number);
        QStringList messages = session.dialogs().takeHeld();
        session.dialogs().hold(false);
        report = messages.takeLast();
        for (const QString& message : messages)
            printError(message);
    }

    QJsonArray modules;
    QString text;
    for (int i = 0; i < found; ++i) {
        const ModuleRecord& module = session.state().table[static_cast<size_t>(i)];
        modules.append(recordToJson(module));
        text += QString::number(i + 1) + QLatin1Char('\t') + session.portName(module.portNumber) + QLatin1Char('\t')
              + QString::number(module.busAddress) + QLatin1Char('\t') + trimmedText(module.modelName) + QLatin1Char('\t')
              + QString::number(module.moduleNumber) + QLatin1Char('\n');
    }
    if (session.json())
        session.printJson(QJsonObject{{QStringLiteral("modules"), modules}, {QStringLiteral("report"), report}});
    else
        session.printText(text + report);
    return found > 0 ? kExitDone : kExitExchangeFailed;
}

int runRead(Session& session, const QCommandLineParser& parser)
{
    if (const int code = takeAddress(session, parser))
        return code;
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    if (!session.operations().cmdFrame3Receive())
        return session.outcome(false);
    if (parser.isSet(kSave) && !saveConfigFile(parser.value(kSave), session.record())) {
        printError(pick(msg::kOpenConfigFail, session.language()));
        return kExitFileFailed;
    }
    session.printRecord(port.name);
    return kExitDone;
}

int runWrite(Session& session, const QCommandLineParser& parser)
{
    if (!parser.isSet(kConfig))
        return usage(QStringLiteral("--config is required."));
    if (const int code = loadFile(session, parser.value(kConfig)))
        return code;
    if (const int code = takeAddress(session, parser))
        return code;
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    return finish(session, session.operations().cmdFrame1Send(), port);
}

int runWriteInfo(Session& session, const QCommandLineParser& parser)
{
    if (!parser.isSet(kConfig))
        return usage(QStringLiteral("--config is required."));
    if (const int code = loadFile(session, parser.value(kConfig)))
        return code;
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    // The write reaches every module on the line: without the confirmation the
    // question is printed and nothing is sent.
    session.dialogs().setAnswer(parser.isSet(kOnlyOne));
    const bool ok = session.operations().cmdFrame3Send();
    return parser.isSet(kOnlyOne) ? finish(session, ok, port) : kExitUsage;
}

int runBeckon(Session& session, const QCommandLineParser& parser)
{
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    return finish(session, session.operations().beckon(), port);
}

int runBalance(Session& session, const QCommandLineParser& parser)
{
    if (const int code = takeAddress(session, parser))
        return code;
    qint32 mask = -1;
    if (parser.isSet(kChannels) && !channelMask(parser.value(kChannels), mask))
        return usage(QStringLiteral("--channels takes channel numbers 1 to 16, e.g. 1,2,5-8."));
    session.state().channelMask[0] = mask;
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    return finish(session, session.operations().cmdBalance(), port);
}

int runShow(Session& session, const QCommandLineParser& parser)
{
    if (parser.positionalArguments().size() != 1)
        return usage(QStringLiteral("show takes one configuration file."));
    if (const int code = loadFile(session, parser.positionalArguments().first()))
        return code;
    session.printRecord(session.portName(session.record().portNumber));
    return kExitDone;
}

}  // namespace

const QList<Command>& commands()
{
    static const QList<Command> list = {
        {"ports", "[options]", "List the serial ports: NAME, NUMBER, DEVICE.", declareNothing, runPorts},
        {"search", "[options]", "Search ports (default: all) at addresses 0..16, then read every module found.", declarePort, runSearch},
        {"read", "[options]", "Read a module wholly and print it; --save keeps its configuration file.", declareRead, runRead},
        {"write", "[options]", "Send a configuration file's parameters, adjust values and coefficients to a module.", declareWrite, runWrite},
        {"write-info", "[options]", "Write a file's module information to the only module on the line (address 255).", declareWriteInfo, runWriteInfo},
        {"beckon", "[options]", "Ask the module on the line to answer with its information.", declarePort, runBeckon},
        {"balance", "[options]", "Balance the bridges of the chosen channels, wait 3 s, then read the module.", declareBalance, runBalance},
        {"show", "[options] FILE", "Decode a configuration file and print its record.", declareShow, runShow},
    };
    return list;
}

}  // namespace velmor::cli
