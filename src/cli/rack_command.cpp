// velmor-cli rack: every module on every line at once, saved as a rack file,
// checked against one (nothing is written), or restored to it.

#include "commands.h"

#include "command_steps.h"
#include "rack/rack_restore.h"
#include "shown_text.h"
#include "texts/desktop.h"
#include "texts/rack.h"

#include "texts/cli.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace velmor::cli {
namespace {

QStringList lineNames(const QList<PortEntry>& ports)
{
    QStringList names;
    for (const PortEntry& port : ports)
        names << port.name;
    return names;
}

QString row(const QStringList& cells) { return cells.join(QLatin1Char('\t')) + QLatin1Char('\n'); }

int saveRack(Session& session, const QCommandLineParser& parser, const QString& path)
{
    if (const int refused = refuseIrregularFile(session, path))
        return refused;
    QList<PortEntry> ports;
    if (const int code = searchedPorts(session, parser, ports))
        return code;
    const LinesRead read = readLines(session, ports, true);
    recordSearch(session, ports, read);
    Rack rack{QDateTime::currentDateTimeUtc(), QStringLiteral(VELMOR_VERSION), lineNames(ports), {}};
    QString text;
    bool allRead = true;
    for (const ConcurrentSearch::Found& found : read.every) {
        const RackModule m = rackModuleOf(found);
        if (!found.wholly) {
            allRead = false;
            printError(pick(texts::rack::kNotWhollyRead, session.language()).arg(shownText(m.line)).arg(m.address));
            continue;
        }
        rack.modules << m;
        text += row({shownText(m.line), QString::number(m.address), shownText(m.model), QString::number(m.moduleNumber)});
    }
    if (const QString failure = writeRackFile(path, rack); !failure.isEmpty()) {
        printError(pick(texts::rack::kCannotWrite, session.language()).arg(shownText(path), shownText(failure)));
        return kExitFileFailed;
    }
    session.printText(text);
    if (read.portFailed)
        return kExitPortFailed;
    return !read.every.isEmpty() && allRead ? kExitDone : kExitExchangeFailed;
}

// The file, every field checked, then the live rack on the file's lines,
// compared with it. Nothing is sent before the file is known good.
struct RackChecked {
    int exit = kExitDone;  // not done: the file was refused or a line cannot be named
    QList<PortEntry> ports;
    QList<CheckedModule> checked;
    bool portFailed = false;
};

RackChecked readAndCheck(Session& session, const QString& path)
{
    RackChecked result;
    QString error;
    const std::optional<Rack> rack = readRackFile(path, session.language(), &error);
    if (!rack) {
        printError(error);
        result.exit = QFileInfo::exists(path) ? kExitUsage : kExitFileFailed;
        return result;
    }
    for (const QString& line : rack->lines) {
        PortEntry port;
        if (!session.choosePort(line, port)) {
            result.exit = unknownPort(session, line);
            return result;
        }
        result.ports << port;
    }
    const LinesRead read = readLines(session, result.ports, true);
    recordSearch(session, result.ports, read);
    QList<RackModule> live;
    for (const ConcurrentSearch::Found& found : read.every)
        live << rackModuleOf(found);
    result.checked = checkRack(*rack, live, session.language());
    result.portFailed = read.portFailed;
    return result;
}

// The table or its JSON, and the exit code: 0 when every module came out
// fine, 1 when one did not, 3 when a line failed.
int printed(Session& session, const QJsonArray& list, const QString& text, bool portFailed, bool allFine)
{
    if (session.json())
        session.printJson(list);
    else
        session.printText(text);
    if (portFailed)
        return kExitPortFailed;
    return allFine ? kExitDone : kExitExchangeFailed;
}

QJsonObject moduleJson(const RackModule& module)
{
    return {{QStringLiteral("line"), module.line},
            {QStringLiteral("address"), module.address},
            {QStringLiteral("model"), module.model},
            {QStringLiteral("moduleNumber"), module.moduleNumber}};
}

QStringList moduleCells(const RackModule& module)
{
    return {shownText(module.line), QString::number(module.address), shownText(module.model),
            QString::number(module.moduleNumber)};
}

QStringList cellTexts(const QList<CellDifference>& cells)
{
    QStringList texts;
    for (const CellDifference& d : cells)
        texts << cellChangeText(d);
    return texts;
}

int checkRackFile(Session& session, const QString& path)
{
    const Language language = session.language();
    const RackChecked result = readAndCheck(session, path);
    if (result.exit != kExitDone)
        return result.exit;
    bool allSame = true;
    QJsonArray list;
    QString text;
    for (const CheckedModule& c : result.checked) {
        allSame = allSame && c.status == RackStatus::Same;
        const QStringList cells = cellTexts(c.cells);
        QJsonObject o = moduleJson(c.shown());
        o.insert(QStringLiteral("status"), pick(rackStatusText(c.status), Language::English));
        o.insert(QStringLiteral("cells"), QJsonArray::fromStringList(cells));
        list.append(o);
        text += row(moduleCells(c.shown()) << pick(rackStatusText(c.status), language)
                                           << shownText(cells.join(QStringLiteral("; "))));
    }
    return printed(session, list, text, result.portFailed, allSame);
}

QStringList groupTexts(const QList<WriteGroup>& groups, Language language)
{
    QStringList names;
    for (const WriteGroup& group : groups)
        names << writeGroupName(group, language);
    return names;
}

// The rack as the file has it again: a check, then only the differing groups
// of each module written, all lines at once, and each module written to read
// back and compared with the file.
int restoreRack(Session& session, const QCommandLineParser& parser, const QString& path)
{
    const Language language = session.language();
    const RackChecked result = readAndCheck(session, path);
    if (result.exit != kExitDone)
        return result.exit;
    const RestoreChoices choices{parser.isSet(optionName(Opt::ForceRestore)),
                                 parser.isSet(optionName(Opt::OnlyOneModule))};
    RackRestore restore(session.operations());
    QObject::connect(&restore, &RackRestore::frameLogged, &session.frameLog(), &FrameLog::append);
    const QList<RestoredModule> restored = restore.restore(result.checked, result.ports, choices, language);
    for (const HistoryEntry& entry : restoreEntries(restored, path))
        session.record(entry);

    bool allDone = true;
    QJsonArray list;
    QString text;
    for (const RestoredModule& m : restored) {
        allDone = allDone && (m.outcome == RestoreOutcome::Unchanged || m.outcome == RestoreOutcome::Restored);
        QJsonObject o = moduleJson(m.checked.shown());
        o.insert(QStringLiteral("check"), pick(rackStatusText(m.checked.status), Language::English));
        o.insert(QStringLiteral("outcome"), pick(restoreOutcomeText(m.outcome), Language::English));
        o.insert(QStringLiteral("groupsSent"), QJsonArray::fromStringList(groupTexts(m.sent, Language::English)));
        o.insert(QStringLiteral("why"), m.why);
        list.append(o);
        text += row(moduleCells(m.checked.shown())
                    << pick(restoreOutcomeText(m.outcome), language)
                    << shownText(groupTexts(m.sent, language).join(pick(texts::desktop::kNameSeparator, language)))
                    << shownText(m.why));
    }
    return printed(session, list, text, result.portFailed, allDone);
}

}  // namespace

void declareRack(QCommandLineParser& parser, Language language)
{
    parser.addPositionalArgument(QStringLiteral("save|check|restore|report"), pick(texts::rack::kRackSummary, language));
    parser.addPositionalArgument(pick(texts::cli::kFileValue, language), pick(texts::rack::kRackUsage, language));
    addOptions(parser, {Opt::Ports, Opt::OnlyOneModule, Opt::ForceRestore, Opt::Out}, language);
}

int runRack(Session& session, const QCommandLineParser& parser)
{
    const QStringList args = parser.positionalArguments();
    if (args.size() != 2)
        return usage(session, texts::rack::kRackUsage);
    // Each option belongs to one command and is refused with the others, never
    // passed over; the lines of a check and a restore are the file's own.
    const auto given = [&](Opt option) { return parser.isSet(optionName(option)); };
    const bool lines = given(Opt::Ports);
    const bool out = given(Opt::Out);
    const bool restoring = given(Opt::OnlyOneModule) || given(Opt::ForceRestore);
    const QString& command = args[0];
    if (command == QLatin1String("save") && !out && !restoring)
        return saveRack(session, parser, args[1]);
    if (command == QLatin1String("check") && !lines && !out && !restoring)
        return checkRackFile(session, args[1]);
    if (command == QLatin1String("restore") && !lines && !out)
        return restoreRack(session, parser, args[1]);
    if (command == QLatin1String("report") && !lines && !restoring)
        return reportRack(session, parser, args[1]);
    return usage(session, texts::rack::kRackUsage);
}

}  // namespace velmor::cli
