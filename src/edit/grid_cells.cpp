#include "grid_cells.h"

#include "model/capabilities.h"
#include "model/models.h"

#include "model/number_text.h"
#include "model/parameters.h"
#include "model/reference.h"
#include "texts/grid.h"
#include "texts/hints.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace velmor {

namespace {

// The parameter behind each of the channel grid's columns 1 to 10; column 3
// (automatic balance) reads the mask instead.
struct ParameterColumn {
    int column;
    Parameter parameter;
};

constexpr ParameterColumn kParameterColumns[] = {
    {1, Parameter::Excitation}, {2, Parameter::Balance},    {4, Parameter::Coupling},
    {5, Parameter::Gain},       {6, Parameter::Cutoff},     {7, Parameter::Hold},
    {8, Parameter::ZeroAdjust}, {9, Parameter::GainAdjust}, {10, Parameter::Integral},
};
static_assert(std::size(texts::grid::kChannelHeadings) == kLastParameterColumn);

constexpr int kLastReferenceColumn = kFirstReferenceColumn + static_cast<int>(std::size(kReferenceColumns)) - 1;

// Adjust and coefficient grids: four entries of each table are shown...
// ...except the gain coefficients of "TM-B8", which keeps eleven of them.

constexpr NumberPicture kHundredthsPicture{1, 2, 2};  // "0.00"
constexpr NumberPicture kTenthsPicture{1, 1, 1};      // "0.0"

// A channel count read from a module or a file may be anything; the grids
// never show more than the wired channels.
int shownChannels(const ModuleRecord& record)
{
    return std::clamp<int>(record.channelCount, 0, kWiredChannels);
}

QString channelName(int channel, Language language)
{
    return pick(texts::grid::kChannelPrefix, language) + QString::number(channel + 1);
}

// Columns "heading1", "heading2" ... with their hints.
void appendNumbered(GridCells& cells, const Text& heading, const Text& hint, int count, Language language)
{
    for (int i = 1; i <= count; ++i) {
        cells.headings << pick(heading, language) + QString::number(i);
        cells.hints << pick(hint, language).arg(i);
    }
}

// Column 0 of every grid names the channel.
void appendChannelColumn(GridCells& cells, Language language)
{
    cells.headings << pick(texts::grid::kChannelPrefix, language);
    cells.hints << pick(texts::hints::kChannelColumns[0], language);
}

qint32 entry(const Table17& table, int index)
{
    return table[static_cast<size_t>(index)];
}

const ChannelRecord& channelAt(const ModuleRecord& record, int channel)
{
    return record.channels[static_cast<size_t>(channel)];
}

}  // namespace

QString channelCellText(const ModuleRecord& record, int channel, int column, qint32 balanceMask,
                        Language language)
{
    if (channel < 0 || channel >= kWiredChannels)
        return QString();
    if (column == kChannelNameColumn)
        return channelName(channel, language);
    if (column == kAutoBalanceColumn) {
        const bool chosen = (static_cast<quint32>(balanceMask) >> channel) & 1u;
        return pick(chosen ? texts::grid::kAutoBalanceChosen : texts::grid::kAutoBalanceLeftOut, language);
    }
    for (const ParameterColumn& p : kParameterColumns)
        if (p.column == column)
            return parameterText(p.parameter, record, channel, language);
    if (hasReferenceColumns(record.modelCode) && column >= kFirstReferenceColumn && column <= kLastReferenceColumn)
        return referenceCell(kReferenceColumns[column - kFirstReferenceColumn], channelAt(record, channel), language);
    return QString();
}

static_assert(std::size(texts::hints::kChannelColumns) == std::size(texts::grid::kChannelHeadings) + 1);

GridCells channelGridCells(const ModuleRecord& record, Language language, qint32 balanceMask)
{
    GridCells cells;
    appendChannelColumn(cells, language);
    for (const Text& heading : texts::grid::kChannelHeadings)
        cells.headings << pick(heading, language);
    for (const Text& hint : std::span(texts::hints::kChannelColumns).subspan(1))
        cells.hints << pick(hint, language);
    int lastColumn = kLastParameterColumn;
    if (hasReferenceColumns(record.modelCode)) {
        for (ReferenceColumn column : kReferenceColumns) {
            cells.headings << referenceHeader(column, language);
            cells.hints << pick(texts::hints::kReferenceColumn, language);
        }
        for (int c = kFirstReferenceColumn; c <= kLastReferenceColumn; ++c)
            cells.greyColumns << c;
        lastColumn = kLastReferenceColumn;
    }
    for (int channel = 0; channel < shownChannels(record); ++channel) {
        QStringList row;
        for (int column = 0; column <= lastColumn; ++column)
            row << channelCellText(record, channel, column, balanceMask, language);
        cells.rows << row;
    }
    return cells;
}

QString adjustCellText(const ChannelRecord& channel, int column)
{
    if (column >= 1 && column <= kAdjustEntries)
        return QString::number(entry(channel.zeroAdjustTable, column - 1));
    if (column > kAdjustEntries && column <= 2 * kAdjustEntries)
        return QString::number(entry(channel.gainAdjustTable, column - 1 - kAdjustEntries));
    return QString();
}

GridCells adjustGridCells(const ModuleRecord& record, Language language)
{
    GridCells cells;
    appendChannelColumn(cells, language);
    appendNumbered(cells, texts::grid::kZeroAdjustLabel, texts::hints::kZeroAdjustColumn, kAdjustEntries, language);
    appendNumbered(cells, texts::grid::kGainAdjustLabel, texts::hints::kGainAdjustColumn, kAdjustEntries, language);
    for (int channel = 0; channel < shownChannels(record); ++channel) {
        QStringList row{channelName(channel, language)};
        for (int column = 1; column <= 2 * kAdjustEntries; ++column)
            row << adjustCellText(channelAt(record, channel), column);
        cells.rows << row;
    }
    return cells;
}

int gainCoefColumns(int modelCode)
{
    return hasWideCalibration(modelCode) ? kWideGainCoefEntries : kCoefEntries;
}

int zeroCoefColumns(int modelCode)
{
    return hasWideCalibration(modelCode) ? 0 : kCoefEntries;
}

QString calibrationCellText(int modelCode, const ChannelRecord& channel, int column)
{
    const int gains = gainCoefColumns(modelCode);
    if (column >= 1 && column <= gains)
        return formatNumber(entry(channel.gainCoef, column - 1) / 100.0, kHundredthsPicture);
    if (column > gains && column <= gains + zeroCoefColumns(modelCode))
        return formatNumber(entry(channel.zeroCoef, column - 1 - gains) / 10.0, kTenthsPicture);
    return QString();
}

QList<InfoCell> moduleInfoCells(const ModuleRecord& record, const QString& lineName, Language language)
{
    const auto capability = [&](Capability c) { return capabilityText(record, c, language); };
    return {
        {pick(texts::grid::kPortLabel, language), lineName},
        {pick(texts::grid::kModuleLabel, language), QString::number(record.busAddress)},
        {pick(texts::grid::kModelLabel, language), capability(Capability::Model)},
        {pick(texts::grid::kNumberLabel, language), QString::number(record.moduleNumber)},
        {pick(texts::grid::kVersionLabel, language), QString::number(record.version)},
        {pick(texts::grid::kBalanceLabel, language), capability(Capability::Balance)},
        {pick(texts::grid::kExcitationLabel, language), capability(Capability::Excitation)},
        {pick(texts::grid::kCouplingLabel, language), capability(Capability::AcCoupling)},
        {pick(texts::grid::kFilterLabel, language), capability(Capability::Filter)},
        {pick(texts::grid::kHoldLabel, language), capability(Capability::Hold)},
        {pick(texts::grid::kZeroAdjustLabel, language), capability(Capability::Zero)},
        {pick(texts::grid::kGainAdjustLabel, language), capability(Capability::Adjust)},
        {pick(texts::grid::kGainLabel, language), capability(Capability::Gain)},
        {pick(texts::grid::kIntegralLabel, language), capability(Capability::Integral)},
    };
}

GridCells calibrationGridCells(const ModuleRecord& record, Language language)
{
    const int columns = gainCoefColumns(record.modelCode) + zeroCoefColumns(record.modelCode);
    GridCells cells;
    appendChannelColumn(cells, language);
    appendNumbered(cells, texts::grid::kGainCoefHeading, texts::hints::kGainCoefColumn, gainCoefColumns(record.modelCode),
                   language);
    appendNumbered(cells, texts::grid::kZeroCoefHeading, texts::hints::kZeroCoefColumn, zeroCoefColumns(record.modelCode),
                   language);
    for (int channel = 0; channel < shownChannels(record); ++channel) {
        QStringList row{channelName(channel, language)};
        for (int column = 1; column <= columns; ++column)
            row << calibrationCellText(record.modelCode, channelAt(record, channel), column);
        cells.rows << row;
    }
    return cells;
}

}  // namespace velmor
