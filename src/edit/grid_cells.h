#pragma once

#include "model/module_table.h"
#include "texts/language.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace velmor {

// The texts of one grid as it is first shown: a heading per column, one row of
// cells per channel, and the columns painted grey. Column 0 names the channel
// ("CH1", "CH2", ...) in all three grids.
struct GridCells {
    QStringList headings;
    QStringList hints;  // a one-line tool tip per heading, when the grid has them
    QList<QStringList> rows;
    QList<int> greyColumns;
    // Column 0 already names each row, so a view needs no row numbers of its own.
    bool firstColumnNamesRows = true;

    bool operator==(const GridCells&) const = default;
};

// The channel grid's columns: 1 to 10 are the channel parameters, 11 to 16
// the reference columns (model/reference.h).
inline constexpr int kChannelNameColumn = 0;
inline constexpr int kExcitationColumn = 1;
inline constexpr int kBalanceColumn = 2;
inline constexpr int kAutoBalanceColumn = 3;
inline constexpr int kCouplingColumn = 4;
inline constexpr int kGainColumn = 5;
inline constexpr int kCutoffColumn = 6;
inline constexpr int kHoldColumn = 7;
inline constexpr int kZeroAdjustColumn = 8;
inline constexpr int kGainAdjustColumn = 9;
inline constexpr int kIntegralColumn = 10;
inline constexpr int kLastParameterColumn = kIntegralColumn;
inline constexpr int kBridgeColumn = 11;
inline constexpr int kCoefColumn = 12;
inline constexpr int kSensitivityColumn = 13;
inline constexpr int kRangeColumn = 14;
inline constexpr int kUnitColumn = 15;
inline constexpr int kTypeColumn = 16;

// The channel grid MSHGridOperate: columns 0 to 10, and the grey reference
// columns 11 to 16 for "TM-B8" and "TM-B16" only. One row per channel of the
// record's channel count (0..16). Column 3 reads the channel's bit of
// `balanceMask`, the module's automatic-balance mask (bit n for channel n).
GridCells channelGridCells(const ModuleRecord& record, Language language, qint32 balanceMask);

// The text of one cell of the channel grid, channel index 0..15, column 0..16;
// empty for a column the grid does not have.
QString channelCellText(const ModuleRecord& record, int channel, int column, qint32 balanceMask,
                        Language language);

// The adjust grid MSHGridNoOperate: entries 0..3 of zeroAdjustTable in columns
// 1-4 and of gainAdjustTable in columns 5-8, as whole numbers.
GridCells adjustGridCells(const ModuleRecord& record, Language language);
QString adjustCellText(const ChannelRecord& channel, int column);

// The coefficient grid MSHGridCalibration: gainCoef in hundredths ("0.00") in
// columns 1-4 and zeroCoef in tenths ("0.0") in columns 5-8; model code 3 has
// eleven gain coefficients in columns 1-11 and no zero coefficients.
GridCells calibrationGridCells(const ModuleRecord& record, Language language);
QString calibrationCellText(int modelCode, const ChannelRecord& channel, int column);

// One row of the module-information panel: its label and its value.
struct InfoCell {
    QString label;
    QString value;
};

// The module-information panel's rows: the line, the address, the model,
// the module number and version, then the capabilities in panel order.
QList<InfoCell> moduleInfoCells(const ModuleRecord& record, const QString& lineName, Language language);
inline constexpr int kInfoAddressRow = 1;
// The rows from here on are the panel's own, in its order.
inline constexpr int kInfoModelRow = 2;

// How many gain-coefficient columns the coefficient grid has for a model (4 or 11),
// and how many zero-coefficient columns follow them (4 or 0).
int gainCoefColumns(int modelCode);
int zeroCoefColumns(int modelCode);

}  // namespace velmor
