#include "commands.h"

#include "command_steps.h"
#include "config/config_file.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/history.h"
#include "texts/rack.h"
#include "texts/message.h"

#include <QJsonArray>
#include <QJsonObject>

namespace velmor::cli {
namespace {

void declarePorts(QCommandLineParser& parser, Language language) { addOptions(parser, {Opt::Ports}, language); }

void declarePort(QCommandLineParser& parser, Language language) { addOptions(parser, {Opt::Port}, language); }

void declareRead(QCommandLineParser& parser, Language language)
{
    addOptions(parser, {Opt::Port, Opt::Address, Opt::Save}, language);
}

void declareWrite(QCommandLineParser& parser, Language language)
{
    addOptions(parser, {Opt::Port, Opt::Address, Opt::Config, Opt::ForceWrite}, language);
}

void declareWriteInfo(QCommandLineParser& parser, Language language)
{
    addOptions(parser, {Opt::Port, Opt::Config, Opt::OnlyOneModule, Opt::ForceWrite}, language);
}

void declareBalance(QCommandLineParser& parser, Language language)
{
    addOptions(parser, {Opt::Port, Opt::Address, Opt::Channels, Opt::ForceBalance}, language);
}

void declareShow(QCommandLineParser& parser, Language language)
{
    parser.addPositionalArgument(pick(texts::cli::kFileValue, language), pick(texts::cli::kFileArgument, language));
}

int runPorts(Session& session, const QCommandLineParser& parser)
{
    // Nothing on the machine tells of network lines: those given are listed.
    for (const QString& argument : parser.values(optionName(Opt::Port))) {
        PortEntry port;
        if (!session.choosePort(argument, port))
            return unknownPort(session, argument);
    }
    QJsonArray list;
    QString text;
    for (const PortEntry& port : session.ports()) {
        list.append(QJsonObject{{QStringLiteral("name"), port.name},
                                {QStringLiteral("number"), port.number},
                                {QStringLiteral("device"), port.device}});
        text += shownText(port.name) + QLatin1Char('\t') + QString::number(port.number) + QLatin1Char('\t')
              + shownText(port.device) + QLatin1Char('\n');
    }
    if (session.json())
        session.printJson(list);
    else if (!text.isEmpty())
        session.printText(text);
    return kExitDone;
}

int runRead(Session& session, const QCommandLineParser& parser)
{
    if (const int code = takeAddress(session, parser))
        return code;
    const QString save = parser.value(optionName(Opt::Save));
    // Refused before anything goes out, rather than after the module was read.
    if (parser.isSet(optionName(Opt::Save)))
        if (const int code = refuseIrregularFile(session, save))
            return code;
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    const bool read = session.operations().readEverything();
    session.recordFlow("read", EntryKind::Read, read);
    if (!read)
        return session.outcome(false);
    QString reason;
    if (parser.isSet(optionName(Opt::Save))) {
        if (!saveConfigFile(save, session.record(), &reason))
            return configFileFailed(session, save, reason);
        session.recordFile(EntryKind::Save, save);
    }
    session.printRecord(port.name);
    return kExitDone;
}

int runBeckon(Session& session, const QCommandLineParser& parser)
{
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    return finish(session, "beckon", std::nullopt, session.operations().beckon(), port);
}

int runShow(Session& session, const QCommandLineParser& parser)
{
    if (parser.positionalArguments().size() != 1)
        return usage(session, texts::cli::kShowTakesOneFile);
    const QString path = parser.positionalArguments().first();
    // Any bytes are shown, as Open takes them; what write would refuse, and
    // what a short file left of the defaults, is said beside the record.
    QByteArray bytes;
    if (const int code = loadCheckedRecord(session, path, true, texts::cli::kNotModuleRecord, &bytes))
        return code;
    if (const QString notice = shortFileNotice(shownText(path), bytes.size(), session.language()); !notice.isEmpty())
        printError(notice);
    if (const QString fault = recordFaultText(checkStoredRecord(bytes), path, session.language()); !fault.isEmpty())
        printError(pick(texts::cli::kShownNotModuleRecord, session.language()).arg(shownText(path), fault));
    session.recordFile(EntryKind::Open, path);
    session.printRecord(session.portName(session.record().portNumber));
    return kExitDone;
}

}  // namespace

const QList<Command>& commands()
{
    using namespace texts::cli;
    static const QList<Command> list = {
        {"ports", &kOptionsSynopsis, &kPortsSummary, declarePorts, runPorts},
        {"search", &kOptionsSynopsis, &kSearchSummary, declarePorts, runSearch},
        {"read", &kOptionsSynopsis, &kReadSummary, declareRead, runRead},
        {"write", &kOptionsSynopsis, &kWriteSummary, declareWrite, runWrite},
        {"write-info", &kOptionsSynopsis, &kWriteInfoSummary, declareWriteInfo, runWriteInfo},
        {"beckon", &kOptionsSynopsis, &kBeckonSummary, declarePort, runBeckon},
        {"balance", &kOptionsSynopsis, &kBalanceSummary, declareBalance, runBalance},
        {"show", &kShowSynopsis, &kShowSummary, declareShow, runShow},
        {"edit", &kEditSynopsis, &kEditSummary, declareEdit, runEdit},
        {"report", &kReportSynopsis, &kReportSummary, declareReport, runReport},
        {"history", &texts::history::kHistorySynopsis, &texts::history::kHistorySummary, declareHistory, runHistory},
        {"diff", &texts::history::kDiffSynopsis, &texts::history::kDiffSummary, declareDiff, runDiff},
        {"rack", &texts::rack::kRackSynopsis, &texts::rack::kRackSummary, declareRack, runRack},
    };
    return list;
}

}  // namespace velmor::cli
