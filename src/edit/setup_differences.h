#pragma once

#include "grid_cells.h"

#include <QList>
#include <QString>

namespace velmor {

// Where two setups of a module read differently, cell by cell, in the texts
// the window shows them in.
enum class SetupPart { Information, Channels, Adjust, Calibration };

struct CellDifference {
    SetupPart part = SetupPart::Information;
    // In a grid, row 1 is the first channel and the column is the grid's own;
    // in the information, the row of moduleInfoCells and column 0.
    int row = 0;
    int column = 0;
    QString name;    // "CH2 Gain", "serial num."
    QString before;  // as `from` shows it
    QString after;   // as `to` shows it
    // A reference column of the channel grid: kept in files, never sent.
    bool reference = false;

    bool operator==(const CellDifference&) const = default;
};

// Every cell of the information panel and of the channel, adjust and
// coefficient grids whose text differs between `from` and `to`, in that
// order. The grids are laid out as `to` shows them; a cell that only one of
// them has reads as empty in the other. The automatic-balance column reads
// `balanceMask` for both, as it belongs to no setup. The line is not compared.
QList<CellDifference> setupDifferences(const ModuleRecord& from, const ModuleRecord& to, qint32 balanceMask,
                                       Language language);

// "CH2 Gain 2 → 5": a difference as results name it.
QString cellChangeText(const CellDifference& difference);

// The differences that a write would send: all but the reference columns.
QList<CellDifference> sentDifferences(const ModuleRecord& from, const ModuleRecord& to, qint32 balanceMask,
                                      Language language);

// A group of the module's memory that a write sends whole: the information,
// a channel group or an adjust block (four channels each), a calibration
// pair (two channels).
struct WriteGroup {
    SetupPart part = SetupPart::Information;
    int index = 0;

    bool operator==(const WriteGroup&) const = default;
};

// The groups a write has to send to make the module hold what the differences'
// `after` shows, each once, in the order of the differences.
QList<WriteGroup> groupsToSend(const QList<CellDifference>& differences);

// "channels", "channel group 2", ... in `language`.
QString setupPartName(SetupPart part, Language language);
QString writeGroupName(const WriteGroup& group, Language language);

}  // namespace velmor
