// edit: a configuration file changed as the channel grid changes a module,
// assignment by assignment through the grid's own rules, and saved only when
// every assignment was taken.

#include "command_steps.h"
#include "commands.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "config/record_check.h"
#include "edit/channel_rules.h"
#include "edit/frequency_dialog_rules.h"
#include "edit/grid_cells.h"
#include "model/fixed_text.h"
#include "model/number_text.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/frequency.h"
#include "texts/message.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

#include <algorithm>
#include <bit>
#include <optional>

namespace velmor::cli {
namespace {

struct Field {
    const char* name;
    int column;
};

// Column 3, the automatic-balance mark, is no part of the record and has no field.
constexpr Field kFields[] = {
    {"excitation", kExcitationColumn},   {"balance", kBalanceColumn},
    {"coupling", kCouplingColumn},       {"gain", kGainColumn},
    {"cutoff", kCutoffColumn},           {"division", kHoldColumn},
    {"zero-adjust", kZeroAdjustColumn},  {"gain-adjust", kGainAdjustColumn},
    {"integral", kIntegralColumn},       {"bridge", kBridgeColumn},
    {"coef", kCoefColumn},               {"sensitivity", kSensitivityColumn},
    {"range", kRangeColumn},             {"unit", kUnitColumn},
    {"type", kTypeColumn},
};

// What the grid takes when a value is typed into an adjust cell.
constexpr int kHighestZeroAdjust = 255;
constexpr int kHighestGainAdjust = 1023;

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

const Field* findField(const QString& name)
{
    for (const Field& field : kFields)
        if (name.compare(QLatin1String(field.name), Qt::CaseInsensitive) == 0)
            return &field;
    return nullptr;
}

QString fieldNames()
{
    QStringList names;
    for (const Field& field : kFields)
        if (field.column != kUnitColumn)
            names << QString::fromLatin1(field.name);
    return names.join(QStringLiteral(", "));
}

QString refusalText(Refusal refusal, const ModuleRecord& module, const QString& field, Language language)
{
    switch (refusal) {
    case Refusal::NoCapability: return pick(texts::cli::kFieldNoCapability, language).arg(modelOf(module), field);
    case Refusal::ReferenceReadOnly: return pick(texts::cli::kFieldReadOnly, language).arg(modelOf(module));
    case Refusal::NoSuchColumn: return pick(texts::cli::kFieldNoColumn, language).arg(modelOf(module), field);
    case Refusal::UnknownCapability: return pick(texts::cli::kFieldUnknownCapability, language).arg(modelOf(module), field);
    case Refusal::NoEditor: return pick(texts::cli::kUnitFollowsType, language);
    case Refusal::None: break;
    }
    return {};
}

// The item a value names: its text as the list shows it in either language
// (English without regard to case, which also takes the grid's "One Integral"),
// else its code. The gain and division items are numbers themselves, so there
// a number is never read as a position. -1 when no item fits.
int listItem(const ModuleRecord& module, int column, const QString& value)
{
    const QString wanted = value.trimmed();
    for (Language language : {Language::Chinese, Language::English}) {
        const QStringList items = channelEditor(module, column, language).items;
        for (qsizetype i = 0; i < items.size(); ++i)
            if (items[i].compare(wanted, Qt::CaseInsensitive) == 0)
                return static_cast<int>(i);
    }
    if (column == kGainColumn || column == kHoldColumn)
        return -1;
    bool isNumber = false;
    const int code = wanted.toInt(&isNumber);
    const qsizetype count = channelEditor(module, column, Language::English).items.size();
    return isNumber && code >= 0 && code < count ? code : -1;
}

void merge(EditResult& into, const EditResult& from)
{
    into.cells += from.cells;
    into.stored = into.stored || from.stored;
}

// The frequency dialog over each run: opened on the frequency, the frequency
// typed into it (on "TM-C8" the dialog opens on another base than it types
// on, and the typed one is what is meant), the candidate equal to it or else
// the lower one clicked, OK.
std::optional<QString> setFrequency(ModuleRecord& module, const QString& value, const QList<RowSpan>& runs,
                                    Language language, EditResult& result)
{
    const std::optional<double> frequency = wholeTextNumber(value);
    if (!frequency)
        return pick(texts::message::kInputDataError, language);
    // Out of the limits the dialog offers "Overflow" / "Too low" instead of a frequency.
    const CutoffLimits limits = cutoffLimits(module);
    if (const FrequencyFit fit = frequencyFit(*frequency, limits); fit != FrequencyFit::Within)
        return pick(texts::cli::kCutoffLimits, language)
            .arg(pick(fit == FrequencyFit::Overflow ? texts::frequency::kOverflow : texts::frequency::kTooLow, language), modelOf(module),
                 QString::number(limits.lowest), QString::number(limits.highest));
    const QString typed = formatNumber(*frequency, kCutoffPicture);
    FrequencyDialogState dialog = startFrequencyDialog(module, typed);
    frequencyTextChanged(dialog, module, typed, language);
    frequencyOptionClicked(dialog, dialog.captions[0] == typed ? 0 : 1);
    for (const RowSpan& run : runs)
        merge(result, acceptFrequencyDialog(dialog, module, run));
    return std::nullopt;
}

// The adjust columns are typed into the cells, row by row: their prompts store
// unevenly on purpose (the zero-adjust prompt fills the gain adjust, the
// gain-adjust prompt stores nothing), and a field must land where it is named.
std::optional<QString> typeAdjust(ModuleRecord& module, const Field& field, const QString& value,
                                  const QList<RowSpan>& runs, Language language, EditResult& result)
{
    const int highest = field.column == kZeroAdjustColumn ? kHighestZeroAdjust : kHighestGainAdjust;
    for (const RowSpan& run : runs) {
        const RowSpan rows = gridRows(module, run);
        for (int row = rows.first; row <= rows.last; ++row) {
            const QString shown = channelCellText(module, row - 1, field.column, 0, language);
            const EditResult typed = typeIntoCell(module, row, field.column, shown, value, language);
            if (!typed.cells.isEmpty() && !typed.stored)
                return pick(texts::cli::kWholeNumberUpTo, language)
                    .arg(QString::fromLatin1(field.name), QString::number(highest));
            merge(result, typed);
            if (typed.cells.isEmpty())  // the cell shows that value already
                result.cells << CellUpdate{row, field.column, shown};
        }
    }
    return std::nullopt;
}

// One assignment into `module` over the runs of rows; the reason when the grid
// would refuse it. A refused assignment may leave `module` half changed: the
// caller works on a copy.
std::optional<QString> apply(ModuleRecord& module, const Assignment& assignment, const QList<RowSpan>& runs,
                             Language language, EditResult& result)
{
    const Field* field = findField(assignment.name);
    if (!field)
        return pick(texts::cli::kNoSuchField, language).arg(shownText(assignment.name), fieldNames());
    const QString name = QString::fromLatin1(field->name);
    const ChannelEditor editor = channelEditor(module, field->column, language);
    if (editor.refusal != Refusal::None)
        return refusalText(editor.refusal, module, name, language);

    switch (editor.kind) {
    case EditorKind::List: {
        const int item = listItem(module, field->column, assignment.value);
        if (item < 0)
            return pick(texts::cli::kNoSuchItem, language)
                .arg(shownText(assignment.value), name, editor.items.join(QStringLiteral(", ")));
        for (const RowSpan& run : runs) {
            openingList(module, field->column, run.first);
            merge(result, chooseListItem(module, field->column, item, run, language));
        }
        return std::nullopt;
    }
    case EditorKind::WholeNumberPrompt:
    case EditorKind::NumberPrompt: {
        const std::optional<double> number = wholeTextNumber(assignment.value);
        if (!number)
            return pick(texts::message::kInputDataError, language);
        if (*number < 0)
            return pick(texts::cli::kNotNegative, language).arg(name);
        if (field->column == kZeroAdjustColumn || field->column == kGainAdjustColumn)
            return typeAdjust(module, *field, assignment.value, runs, language, result);
        for (const RowSpan& run : runs)
            merge(result, answerPrompt(module, field->column, assignment.value, run, language));
        return std::nullopt;
    }
    case EditorKind::FrequencyDialog:
        return setFrequency(module, assignment.value, runs, language, result);
    case EditorKind::Toggle:
    case EditorKind::None: break;
    }
    return refusalText(Refusal::NoSuchColumn, module, name, language);
}

// The file into the current record; unless forced, only a module's record.
int loadEditedFile(Session& session, const QCommandLineParser& parser, const QString& path)
{
    return loadCheckedRecord(session, path, forced(parser), texts::cli::kNotModuleRecordToEdit);
}

// Each contiguous run of chosen channels is one selection of the grid.
QList<RowSpan> runsOf(quint32 mask)
{
    QList<RowSpan> runs;
    for (int row = 1; row <= kWiredChannels; ++row) {
        if (!((mask >> (row - 1)) & 1u))
            continue;
        if (!runs.isEmpty() && runs.last().last == row - 1)
            runs.last().last = row;
        else
            runs.append({row, row});
    }
    return runs;
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
    runs = runsOf(static_cast<quint32>(mask));
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
        if (const std::optional<QString> refusal = apply(module, assignment, runs, language, result)) {
            printError(pick(texts::cli::kEditRefused, language).arg(shownText(assignment.given), *refusal));
            return kExitUsage;
        }
        stored = stored || result.stored;
        changes.append(changeOf(assignment, module, result, language));
    }
    QString reason;
    if (stored && !saveConfigFile(path, module, &reason))
        return configFileFailed(session, path, reason);
    printChanges(session, path, module, changes, stored);
    return kExitDone;
}

}  // namespace velmor::cli
