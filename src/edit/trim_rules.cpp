#include "trim_rules.h"

#include "model/limits.h"

#include "edit/grid_cells.h"
#include "model/number_text.h"
#include "texts/editor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace velmor {

namespace {

// Adjust grid: columns 1-4 zero adjust (one byte on the wire), 5-8 gain adjust.
constexpr int kAdjustZeroColumns = 4;
constexpr int kAdjustColumns = 8;

constexpr double kGainCoefScale = 100.0;  // hundredths
constexpr double kZeroCoefScale = 10.0;   // tenths

bool isZeroAdjustColumn(int column)
{
    return column <= kAdjustZeroColumns;
}

int adjustHighest(int column)
{
    return isZeroAdjustColumn(column) ? kZeroAdjustHighest : kGainAdjustHighest;
}

int shownChannels(const ModuleRecord& module)
{
    return std::clamp<int>(module.channelCount, 0, kWiredChannels);
}

int lastColumn(TrimGrid grid, const ModuleRecord& module)
{
    if (grid == TrimGrid::Adjust)
        return kAdjustColumns;
    return gainCoefColumns(module.modelCode) + zeroCoefColumns(module.modelCode);
}

bool isTrimCell(TrimGrid grid, const ModuleRecord& module, int row, int column)
{
    return row >= 1 && row <= shownChannels(module) && column >= 1 && column <= lastColumn(grid, module);
}

// The entry behind a cell; the caller has checked the cell with isTrimCell.
qint32& adjustEntry(ChannelRecord& channel, int column)
{
    if (isZeroAdjustColumn(column))
        return channel.zeroAdjustTable[static_cast<size_t>(column - 1)];
    return channel.gainAdjustTable[static_cast<size_t>(column - 1 - kAdjustZeroColumns)];
}

struct CoefCell {
    qint32* entry;
    double scale;
};

CoefCell coefEntry(int modelCode, ChannelRecord& channel, int column)
{
    const int gains = gainCoefColumns(modelCode);
    if (column > gains)
        return {&channel.zeroCoef[static_cast<size_t>(column - 1 - gains)], kZeroCoefScale};
    return {&channel.gainCoef[static_cast<size_t>(column - 1)], kGainCoefScale};
}

// Rounded with halves to even (the default rounding mode); a value beyond the
// 32-bit field is held at its end rather than wrapped.
qint32 roundedToField(double value)
{
    const double rounded = std::nearbyint(value);
    if (std::isnan(rounded))
        return 0;
    constexpr double lowest = std::numeric_limits<qint32>::min();
    constexpr double highest = std::numeric_limits<qint32>::max();
    return static_cast<qint32>(std::clamp(rounded, lowest, highest));
}

ChannelRecord& channelOfRow(ModuleRecord& module, int row)
{
    return module.channels[static_cast<size_t>(row - 1)];
}

}  // namespace

bool adjustTextInRange(const QString& text, int column)
{
    const double value = std::trunc(leadingNumber(text));
    return value >= 0 && value <= adjustHighest(column);
}

EditResult typeIntoTrimCell(TrimGrid grid, ModuleRecord& module, int row, int column, const QString& cellText,
                            const QString& boxText)
{
    EditResult result;
    if (!isTrimCell(grid, module, row, column) || cellText.trimmed() == boxText.trimmed())
        return result;
    result.cells << CellUpdate{row, column, boxText};
    ChannelRecord& channel = channelOfRow(module, row);
    if (grid == TrimGrid::Adjust) {
        if (const std::optional<int> value = wholeNumberWithin(boxText, adjustHighest(column))) {
            adjustEntry(channel, column) = *value;
            result.stored = true;
        }
        return result;
    }
    const CoefCell cell = coefEntry(module.modelCode, channel, column);
    *cell.entry = roundedToField(leadingNumber(boxText) * cell.scale);
    result.stored = true;
    return result;
}

bool trimRowsNeedPrompt(RowSpan rows)
{
    return rows.first != rows.last;
}

TrimPrompt trimPrompt(TrimGrid grid, Language language)
{
    const Text& text = grid == TrimGrid::Adjust ? texts::editor::kPromptText : texts::editor::kCalibrationPromptText;
    return {pick(texts::editor::kPromptTitle, language), pick(text, language)};
}

EditResult answerTrimRows(TrimGrid grid, ModuleRecord& module, RowSpan rows, int column, const QString& answer)
{
    EditResult result;
    if (!trimRowsNeedPrompt(rows) || answer.trimmed().isEmpty() || column < 1 || column > lastColumn(grid, module))
        return result;
    if (rows.first > rows.last)
        std::swap(rows.first, rows.last);

    const double number = leadingNumber(answer);
    QString text = answer;
    qint32 value = 0;
    if (grid == TrimGrid::Adjust) {
        value = roundedToField(number);
        if (value > adjustHighest(column)) {
            value = adjustHighest(column);
            text = QString::number(value);
        }
    }

    for (int row = std::max(rows.first, 1); row <= std::min(rows.last, shownChannels(module)); ++row) {
        ChannelRecord& channel = channelOfRow(module, row);
        if (grid == TrimGrid::Adjust) {
            adjustEntry(channel, column) = value;
        } else {
            const CoefCell cell = coefEntry(module.modelCode, channel, column);
            *cell.entry = roundedToField(number * cell.scale);
        }
        result.cells << CellUpdate{row, column, text};
        result.stored = true;
    }
    return result;
}

}  // namespace velmor
