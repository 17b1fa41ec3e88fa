// edit: a configuration file changed as the channel grid changes a module,
// assignment by assignment through the grid's own rules, and saved only when
// every assignment was taken.

#include "command_steps.h"
#include "commands.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "config/record_check.h"
#include "edit/field_assignment.h"
#include "edit/grid_cells.h"
#include "model/fixed_text.h"
#include "shown_text.h"
#include "texts/cli.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

#include <algorithm>
#include <bit>
#include <optional>

namespace velmor::cli {
namespace {

struct Assignment {
    QString given;  // as on the command line
    QString name;
    QString value;
};

// One assignment taken: the cells it rewrote, each as the record then reads.
struct Change {
    const Assignment* assignment;
    QMap<QPair<int, int>, QString> cells;  // (row, column) -> text
};

bool forced(const QCommandLineParser& parser) { return parser.isSet(optionName(Opt::ForceWrite)); }

QString modelOf(const ModuleRecord& module) { return shownText(trimmedText(module.modelName)); }

// The file into the current record; unless forced, only a module's record.
int loadEditedFile(Session& session, const QCommandLineParser& parser, const QString& path)
{
    return loadCheckedRecord(session, path, forced(parser), texts::cli::kNotModuleRecordToEdit);
}

int chooseRuns(Session& session, const QCommandLineParser& parser, const ModuleRecord& module, QList<RowSpan>& runs)
{
    const int channels = std::clamp<int>(module.channelCount, 0, kWiredChannels);
    if (!parser.isSet(optionName(Opt::Channels))) {
        if (channels > 0)
            runs = {{1, channels}};
        return kExitDone;
    }
    qint32 mask = 0;
    if (!channelMask(parser.value(optionName(Opt::Channels)), mask))
        return usage(session, texts::cli::kChannelsSyntax);
    const int highest = std::bit_width(static_cast<quint32>(mask));
    if (highest > module.channelCount) {
        printError(pick(texts::cli::kChannelBeyondFile, session.language())
                       .arg(QString::number(highest), modelOf(module), QString::number(module.channelCount)));
        return kExitUsage;
    }
    runs = runsOfMask(static_cast<quint32>(mask));
    return kExitDone;
}

Change changeOf(const Assignment& assignment, const ModuleRecord& module, const EditResult& result,
                Language language)
{
    // The texts the file reads from now on: the frequency dialog's own text can
    // differ from what its code reads back (option 1 adds 2 on every base).
    Change change{&assignment, {}};
    for (const CellUpdate& cell : result.cells)
        change.cells[{cell.row, cell.column}] = channelCellText(module, cell.row - 1, cell.column, 0, language);
    return change;
}

void printChanges(Session& session, const QString& path, const ModuleRecord& module, const QList<Change>& changes,
                  bool saved)
{
    const QStringList headings = channelGridCells(module, session.language(), 0).headings;
    if (session.json()) {
        QJsonArray list;
        for (const Change& change : changes) {
            QJsonArray cells;
            for (auto cell = change.cells.cbegin(); cell != change.cells.cend(); ++cell)
                cells.append(QJsonObject{{QStringLiteral("channel"), cell.key().first},
                                         {QStringLiteral("column"), cell.key().second},
                                         {QStringLiteral("heading"), headings.value(cell.key().second)},
                                         {QStringLiteral("text"), cell.value()}});
            list.append(QJsonObject{{QStringLiteral("field"), change.assignment->name},
                                    {QStringLiteral("value"), change.assignment->value},
                                    {QStringLiteral("cells"), cells}});
        }
        session.printJson(QJsonObject{{QStringLiteral("file"), path}, {QStringLiteral("saved"), saved},
                                      {QStringLiteral("changes"), list}});
        return;
    }
    // Per assignment: the assignment, a heading line, then a line per channel.
    QString text;
    for (const Change& change : changes) {
        text += shownText(change.assignment->given) + QLatin1Char('\n');
        QList<int> rows, columns;
        for (auto cell = change.cells.cbegin(); cell != change.cells.cend(); ++cell) {
            if (!rows.contains(cell.key().first))
                rows << cell.key().first;
            if (!columns.contains(cell.key().second))
                columns << cell.key().second;
        }
        if (rows.isEmpty())
            continue;
        std::ranges::sort(columns);
        QStringList line{headings.value(kChannelNameColumn)};
        for (int column : columns)
            line << headings.value(column);
        text += line.join(QLatin1Char('\t')) + QLatin1Char('\n');
        for (int row : rows) {
            line = QStringList{channelCellText(module, row - 1, kChannelNameColumn, 0, session.language())};
            for (int column : columns)
                line << shownText(change.cells.value({row, column}));
            text += line.join(QLatin1Char('\t')) + QLatin1Char('\n');
        }
    }
    session.printText(text);
}

}  // namespace

void declareEdit(QCommandLineParser& parser, Language language)
{
    // --channels and --force mean here what they say for a file, not for a module.
    parser.addOption(QCommandLineOption(optionName(Opt::Channels), pick(texts::cli::kEditChannelsOption, language),
                                       pick(texts::cli::kListValue, language)));
    parser.addOption(QCommandLineOption(optionName(Opt::ForceWrite), pick(texts::cli::kForceEditOption, language)));
    parser.addPositionalArgument(pick(texts::cli::kFileValue, language), pick(texts::cli::kEditFileArgument, language));
    parser.addPositionalArgument(pick(texts::cli::kAssignmentValue, language),
                                 pick(texts::cli::kAssignmentArgument, language),
                                 pick(texts::cli::kAssignmentValue, language) + QStringLiteral("..."));
}

int runEdit(Session& session, const QCommandLineParser& parser)
{
    const Language language = session.language();
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() < 2)
        return usage(session, texts::cli::kEditTakesFileAndAssignments);
    QList<Assignment> assignments;
    for (const QString& given : arguments.mid(1)) {
        const qsizetype equals = given.indexOf(QLatin1Char('='));
        if (equals <= 0) {
            printError(pick(texts::cli::kNotAnAssignment, language).arg(shownText(given)));
            return kExitUsage;
        }
        assignments.append({given, given.left(equals).trimmed(), given.mid(equals + 1)});
    }
    const QString path = arguments.first();
    if (const int code = loadEditedFile(session, parser, path))
        return code;
    ModuleRecord module = session.record();
    QList<RowSpan> runs;
    if (const int code = chooseRuns(session, parser, module, runs))
        return code;

    // Every assignment is taken before anything is written, so a refusal leaves the file as it was.
    QList<Change> changes;
    bool stored = false;
    for (const Assignment& assignment : assignments) {
        EditResult result;
        const std::optional<QString> refusal =
            assignField(module, {assignment.name, assignment.value}, runs, language, result);
        if (refusal) {
            // Names and values come from the command line, the model's name from the file.
            printError(pick(texts::cli::kEditRefused, language).arg(shownText(assignment.given), shownText(*refusal)));
            return kExitUsage;
        }
        stored = stored || result.stored;
        changes.append(changeOf(assignment, module, result, language));
    }
    QString reason;
    if (stored) {
        if (!saveConfigFile(path, module, &reason))
            return configFileFailed(session, path, reason);
        session.recordFile(EntryKind::Save, path);
    }
    printChanges(session, path, module, changes, stored);
    return kExitDone;
}

}  // namespace velmor::cli
