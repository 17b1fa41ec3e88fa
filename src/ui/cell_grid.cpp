#include "cell_grid.h"

#include <QBrush>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

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

namespace {

// A warning sign for a cell shown but not stored: an amber triangle with a
// dark rim and mark, which reads on a light and on a dark background alike.
QIcon unstoredPicture()
{
    QPixmap picture(16, 16);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x3e, 0x27, 0x00), 1.2));
    painter.setBrush(QColor(0xff, 0xb3, 0x00));
    painter.drawPolygon(QPolygonF({QPointF(8, 1.5), QPointF(15, 14.5), QPointF(1, 14.5)}));
    painter.setPen(QPen(QColor(0x3e, 0x27, 0x00), 2));
    painter.drawLine(QPointF(8, 5.5), QPointF(8, 10));
    painter.drawPoint(QPointF(8, 12.5));
    return QIcon(picture);
}

}  // namespace

QList<int> CellTextModel::showCells(const GridCells& cells)
{
    unstored_.clear();
    const bool sameShape = cells.headings == cells_.headings && cells.greyColumns == cells_.greyColumns
        && cells.rows.size() == cells_.rows.size();
    if (!sameShape) {
        beginResetModel();
        cells_ = cells;
        marked_.clear();
        endResetModel();
        QList<int> all;
        for (int c = 0; c < columnCount(); ++c)
            all << c;
        return all;
    }
    // Redrawing after each reply of a whole read: most cells stay as they were.
    QList<int> changed;
    for (int r = 0; r < cells.rows.size(); ++r)
        for (int c = 0; c < columnCount(); ++c)
            if (setCell(r, c, cells.rows.at(r).value(c)) && !changed.contains(c))
                changed << c;
    cells_.firstColumnNamesRows = cells.firstColumnNamesRows;
    return changed;
}

QList<int> CellTextModel::setCells(const QList<CellUpdate>& updates)
{
    QList<int> changed;
    for (const CellUpdate& u : updates) {
        if (u.row < 1 || u.row > rowCount() || u.column < 0 || u.column >= columnCount())
            continue;
        if (setCell(u.row - 1, u.column, u.text) && !changed.contains(u.column))
            changed << u.column;
    }
    return changed;
}

void CellTextModel::setPictures(int column, const QHash<QString, QIcon>& pictures)
{
    pictureColumn_ = column;
    pictures_ = pictures;
    if (rowCount() > 0 && column < columnCount())
        emit dataChanged(index(0, column), index(rowCount() - 1, column));
}

void CellTextModel::markUnstored(const GridCells& stored, const QString& note)
{
    for (int r = 0; r < rowCount(); ++r) {
        for (int c = 0; c < columnCount(); ++c) {
            const QString kept = stored.rows.value(r).value(c);
            const QString wanted = cells_.rows.at(r).value(c) == kept ? QString() : note.arg(kept);
            if (unstored_.value({r, c}) == wanted)
                continue;
            if (wanted.isEmpty())
                unstored_.remove({r, c});
            else
                unstored_.insert({r, c}, wanted);
            emit dataChanged(index(r, c), index(r, c));
        }
    }
}

void CellTextModel::markCells(const QHash<QPair<int, int>, QString>& descriptions)
{
    QHash<QPair<int, int>, QString> marks;
    for (auto it = descriptions.begin(); it != descriptions.end(); ++it)
        marks.insert({it.key().first - 1, it.key().second}, it.value());
    QList<QPair<int, int>> touched = marks.keys();
    for (auto it = marked_.begin(); it != marked_.end(); ++it)
        if (marks.value(it.key()) != it.value())
            touched.append(it.key());
    marked_ = marks;
    for (const auto& [row, column] : touched)
        if (row >= 0 && row < rowCount() && column >= 0 && column < columnCount())
            emit dataChanged(index(row, column), index(row, column));
}

QString CellTextModel::cellText(int row, int column) const
{
    if (row < 1 || row > rowCount())
        return QString();
    return cells_.rows.at(row - 1).value(column);
}

bool CellTextModel::setCell(int row, int column, const QString& text)
{
    QStringList& cellsOfRow = cells_.rows[row];
    while (cellsOfRow.size() <= column)
        cellsOfRow << QString();
    if (cellsOfRow.at(column) == text)
        return false;
    cellsOfRow[column] = text;
    const QModelIndex cell = index(row, column);
    emit dataChanged(cell, cell, {Qt::DisplayRole});
    return true;
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
    // A row shorter than the headings shows blanks in the missing cells.
    const QString text = cells_.rows.at(index.row()).value(index.column());
    const bool picture = index.column() == pictureColumn_ && pictures_.contains(text);
    const QString unstored = unstored_.value({index.row(), index.column()});
    const QString marked = marked_.value({index.row(), index.column()});
    const bool grey = cells_.greyColumns.contains(index.column());
    // What the cell's marks say, for the tool tip and a screen reader.
    QStringList said;
    for (const QString& note : {marked, unstored})
        if (!note.isEmpty())
            said << note;
    const QVariant notes = said.isEmpty() ? QVariant() : QVariant(said.join(QLatin1Char(' ')));
    switch (role) {
    case Qt::DisplayRole:
        return picture ? QString() : text;
    case Qt::DecorationRole:
        if (picture)
            return pictures_.value(text);
        if (!unstored.isEmpty()) {
            static const QIcon sign = unstoredPicture();
            return sign;
        }
        return QVariant();
    case Qt::ToolTipRole:
        return picture ? text : notes;
    case Qt::AccessibleTextRole:
        return picture ? text : QVariant();
    case Qt::AccessibleDescriptionRole:
        return notes;
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignCenter);
    case Qt::BackgroundRole:
        if (!marked.isEmpty())
            return QBrush(QColor(kMarkedCellColor));
        return grey ? QVariant(QBrush(QColor(kGreyCellColor))) : QVariant();
    case Qt::ForegroundRole:
        return grey || !marked.isEmpty() ? QVariant(QBrush(QColor(kColouredCellText))) : QVariant();
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
    if (orientation == Qt::Horizontal && role == Qt::ToolTipRole)
        return section >= 0 && section < cells_.hints.size() ? QVariant(cells_.hints.at(section)) : QVariant();
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags CellTextModel::flags(const QModelIndex& index) const
{
    if (!holds(index))
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

namespace {

constexpr int kRowMargin = 4;  // pixels above and below a row's text
constexpr int kLeastRows = 4;

}  // namespace

CellGrid::CellGrid(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QTableView(parent)
    , model_(new CellTextModel(this))
{
    setObjectName(objectName);
    setAccessibleName(accessibleName);
    setModel(model_);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    // An edit goes to the rows from one end of the selection to the other:
    // the grid lets no other selection be made (Ctrl+click adds nothing).
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    setWordWrap(false);
    horizontalHeader()->setHighlightSections(false);
    // Rows as tall as a line of text and its margins (the style's default is
    // taller), so that sixteen channels fit on a 1080-line screen.
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * kRowMargin);
    // Never squeezed below a few rows: a short screen scrolls the page instead.
    setMinimumHeight(horizontalHeader()->sizeHint().height() + kLeastRows * verticalHeader()->defaultSectionSize()
                     + 2 * frameWidth() + horizontalScrollBar()->sizeHint().height());
    horizontalHeader()->viewport()->installEventFilter(this);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!headingHeld_)
            return;
        operatorWidths_.resize(std::max(operatorWidths_.size(), qsizetype(column) + 1));
        operatorWidths_[column] = width;
    });
}

void CellGrid::setOperatorWidths(const QList<int>& widths)
{
    operatorWidths_ = widths;
    QList<int> all;
    for (int c = 0; c < model_->columnCount(); ++c)
        all << c;
    fitColumns(all);
}

void CellGrid::showCells(const GridCells& cells)
{
    verticalHeader()->setHidden(cells.firstColumnNamesRows);
    fitColumns(model_->showCells(cells));
}

void CellGrid::setCells(const QList<CellUpdate>& updates) { fitColumns(model_->setCells(updates)); }

QList<int> CellGrid::showEdit(const EditResult& result)
{
    setCells(result.cells);
    QList<int> rows;
    if (result.stored)
        for (const CellUpdate& cell : result.cells)
            if (!rows.contains(cell.row))
                rows << cell.row;
    return rows;
}

RowSpan CellGrid::selectedRows(int row) const
{
    RowSpan rows{row, row};
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
        rows.first = std::min(rows.first, index.row() + 1);
        rows.last = std::max(rows.last, index.row() + 1);
    }
    return rows;
}

void CellGrid::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && isEnabled())
        emit cellReleased(index.row() + 1, index.column(), selectedRows(index.row() + 1));
}

void CellGrid::fitColumns(const QList<int>& columns)
{
    for (int c : columns) {
        resizeColumnToContents(c);
        if (c < operatorWidths_.size() && columnWidth(c) < operatorWidths_[c])
            setColumnWidth(c, operatorWidths_[c]);
    }
}

bool CellGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == horizontalHeader()->viewport()) {
        if (event->type() == QEvent::MouseButtonPress)
            headingHeld_ = true;
        else if (event->type() == QEvent::MouseButtonRelease)
            headingHeld_ = false;
    }
    return QTableView::eventFilter(watched, event);
}

}  // namespace velmor
