#include "cell_grid.h"

#include <QBrush>
#include <QHeaderView>

namespace velmor {

CellTextModel::CellTextModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

bool CellTextModel::holds(const QModelIndex& index) const
{
    // Views ask about the invalid index too (flags() for drops): no warning for that.
    return index.isValid() && index.model() == this && index.row() < rowCount() && index.column() < columnCount();
}

void CellTextModel::showCells(const GridCells& cells)
{
    beginResetModel();
    cells_ = cells;
    endResetModel();
}

int CellTextModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(cells_.rows.size());
}

int CellTextModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(cells_.headings.size());
}

QVariant CellTextModel::data(const QModelIndex& index, int role) const
{
    if (!holds(index))
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        // A row shorter than the headings shows blanks in the missing cells.
        return cells_.rows.at(index.row()).value(index.column());
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignCenter);
    case Qt::BackgroundRole:
        if (cells_.greyColumns.contains(index.column()))
            return QBrush(QColor(kGreyCellColor));
        return QVariant();
    default:
        return QVariant();
    }
}

QVariant CellTextModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        if (section < 0 || section >= cells_.headings.size())
            return QVariant();
        return cells_.headings.at(section);
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags CellTextModel::flags(const QModelIndex& index) const
{
    if (!holds(index))
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

CellGrid::CellGrid(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QTableView(parent)
    , model_(new CellTextModel(this))
{
    setObjectName(objectName);
    setAccessibleName(accessibleName);
    setModel(model_);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    horizontalHeader()->setHighlightSections(false);
}

void CellGrid::showCells(const GridCells& cells)
{
    model_->showCells(cells);
    verticalHeader()->setHidden(cells.firstColumnNamesRows);
    // The widest of heading and cells, so that no heading is clipped.
    resizeColumnsToContents();
}

}  // namespace velmor
