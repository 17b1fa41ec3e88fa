#include "record_text.h"

#include "edit/grid_cells.h"
#include "model/fixed_text.h"
#include "model/reference.h"
#include "shown_text.h"
#include "texts/window.h"

#include <QList>
#include <QStringList>

#include <algorithm>

namespace velmor::cli {
namespace {

using Rows = QList<QStringList>;

// Columns padded to their widest cell, two blanks apart.
QString tableText(Rows rows)
{
    // Names and units come from a module or a file: no control characters.
    for (QStringList& row : rows)
        for (QString& cell : row)
            cell = shownText(cell);
    QList<qsizetype> widths;
    for (const QStringList& row : rows)
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (widths.size() <= i)
                widths.append(0);
            widths[i] = std::max(widths[i], row[i].size());
        }
    QString text;
    for (const QStringList& row : rows) {
        QString line;
        for (qsizetype i = 0; i < row.size(); ++i)
            line += row[i].leftJustified(widths[i] + 2);
        text += line.trimmed() + QLatin1Char('\n');
    }
    return text;
}

// A grid's headings and rows as they are shown, less the columns named.
Rows gridRows(const GridCells& cells, const QList<int>& leftOut = {})
{
    Rows rows{cells.headings};
    rows += cells.rows;
    for (QStringList& row : rows)
        for (qsizetype c = row.size() - 1; c >= 0; --c)
            if (leftOut.contains(static_cast<int>(c)))
                row.removeAt(c);
    return rows;
}

QString moduleSection(const ModuleRecord& record, const QString& portName, Language language)
{
    QList<InfoCell> cells = moduleInfoCells(record, portName, language);
    // The model's name beside what its code says.
    QString& model = cells[kInfoModelRow].value;
    model = trimmedText(record.modelName) + QStringLiteral(" (") + model + QLatin1Char(')');
    Rows rows;
    for (const InfoCell& cell : cells)
        rows << QStringList{cell.label, cell.value};
    return pick(texts::window::kFrame3, language) + QLatin1Char('\n') + tableText(rows);
}

QString channelSection(const ModuleRecord& record, Language language)
{
    // Without the automatic-balance marks, which are pictures rather than
    // text; so no balance mask is needed.
    const GridCells cells = channelGridCells(record, language, 0);
    return channelFrameTitle(record.modelCode, language) + QLatin1Char('\n')
         + tableText(gridRows(cells, {kAutoBalanceColumn}));
}

}  // namespace

QString recordText(const ModuleRecord& record, const QString& portName, Language language)
{
    return moduleSection(record, portName, language) + QLatin1Char('\n') + channelSection(record, language)
         + QLatin1Char('\n') + tableText(gridRows(adjustGridCells(record, language))) + QLatin1Char('\n')
         + tableText(gridRows(calibrationGridCells(record, language)));
}

}  // namespace velmor::cli
