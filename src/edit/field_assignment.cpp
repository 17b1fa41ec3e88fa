#include "field_assignment.h"

#include "channel_rules.h"
#include "frequency_dialog_rules.h"
#include "grid_cells.h"
#include "model/fixed_text.h"
#include "model/limits.h"
#include "model/number_text.h"
#include "texts/assignment.h"
#include "texts/frequency.h"
#include "texts/message.h"

namespace velmor {
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

QString modelOf(const ModuleRecord& module) { return trimmedText(module.modelName); }

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
    case Refusal::NoCapability: return pick(texts::assignment::kFieldNoCapability, language).arg(modelOf(module), field);
    case Refusal::ReferenceReadOnly: return pick(texts::assignment::kFieldReadOnly, language).arg(modelOf(module));
    case Refusal::NoSuchColumn: return pick(texts::assignment::kFieldNoColumn, language).arg(modelOf(module), field);
    case Refusal::UnknownCapability: return pick(texts::assignment::kFieldUnknownCapability, language).arg(modelOf(module), field);
    case Refusal::NoEditor: return pick(texts::assignment::kUnitFollowsType, language);
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
        return pick(texts::assignment::kCutoffLimits, language)
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
    const int highest = field.column == kZeroAdjustColumn ? kZeroAdjustHighest : kGainAdjustHighest;
    for (const RowSpan& run : runs) {
        const RowSpan rows = gridRows(module, run);
        for (int row = rows.first; row <= rows.last; ++row) {
            const QString shown = channelCellText(module, row - 1, field.column, 0, language);
            const EditResult typed = typeIntoCell(module, row, field.column, shown, value, language);
            if (!typed.cells.isEmpty() && !typed.stored)
                return pick(texts::assignment::kWholeNumberUpTo, language)
                    .arg(QString::fromLatin1(field.name), QString::number(highest));
            merge(result, typed);
            if (typed.cells.isEmpty())  // the cell shows that value already
                result.cells << CellUpdate{row, field.column, shown};
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<QString> assignField(ModuleRecord& module, const FieldAssignment& assignment, const QList<RowSpan>& runs,
                                   Language language, EditResult& result)
{
    const Field* field = findField(assignment.name);
    if (!field)
        return pick(texts::assignment::kNoSuchField, language).arg(assignment.name, fieldNames());
    const QString name = QString::fromLatin1(field->name);
    const ChannelEditor editor = channelEditor(module, field->column, language);
    if (editor.refusal != Refusal::None)
        return refusalText(editor.refusal, module, name, language);

    // The editor a click would open, used as an operator would: the item
    // chosen, the number answered, the dialog driven. The toggle is no part
    // of the record, so no field names it.
    using Outcome = std::optional<QString>;
    struct Assign {
        ModuleRecord& module;
        const Field& field;
        const QString& name;
        const QString& value;
        const QList<RowSpan>& runs;
        Language language;
        EditResult& result;

        Outcome list(const ChannelEditor& editor)
        {
            const int item = listItem(module, field.column, value);
            if (item < 0)
                return pick(texts::assignment::kNoSuchItem, language).arg(value, name, editor.items.join(QStringLiteral(", ")));
            for (const RowSpan& run : runs) {
                openingList(module, field.column, run.first);
                merge(result, chooseListItem(module, field.column, item, run, language));
            }
            return std::nullopt;
        }
        Outcome prompt(const ChannelEditor&)
        {
            const std::optional<double> number = wholeTextNumber(value);
            if (!number)
                return pick(texts::message::kInputDataError, language);
            if (*number < 0)
                return pick(texts::assignment::kNotNegative, language).arg(name);
            if (field.column == kZeroAdjustColumn || field.column == kGainAdjustColumn)
                return typeAdjust(module, field, value, runs, language, result);
            for (const RowSpan& run : runs)
                merge(result, answerPrompt(module, field.column, value, run, language));
            return std::nullopt;
        }
        Outcome frequencyDialog(const ChannelEditor&) { return setFrequency(module, value, runs, language, result); }
        Outcome toggle(const ChannelEditor& editor) { return none(editor); }
        Outcome none(const ChannelEditor&) { return refusalText(Refusal::NoSuchColumn, module, name, language); }
    };
    return withEditor(editor, Assign{module, *field, name, assignment.value, runs, language, result});
}

QList<RowSpan> runsOfMask(quint32 mask)
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

}  // namespace velmor
