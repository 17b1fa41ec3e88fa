#include "rack_results_dialog.h"

#include "cell_grid.h"
#include "texts/rack.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmor {
namespace {

QTableWidgetItem* item(const QString& text, bool marked)
{
    auto* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    cell->setToolTip(text);
    if (marked) {
        // The same mark as an edit not yet sent: black on amber, in any theme.
        cell->setBackground(QColor(kMarkedCellColor));
        cell->setForeground(QColor(kColouredCellText));
    }
    return cell;
}

}  // namespace

RackResultsDialog::RackResultsDialog(const QString& title, const QString& summary, const QList<RackResultRow>& rows,
                                     Language language, QWidget* parent)
    : QDialog(parent)
{
    using namespace texts::rack;
    setObjectName(QStringLiteral("RackResults"));
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    auto* said = new QLabel(summary, this);
    said->setObjectName(QStringLiteral("RackSummary"));
    said->setWordWrap(true);
    said->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(said);

    table_ = new QTableWidget(static_cast<int>(rows.size()), static_cast<int>(std::size(kResultColumns)), this);
    table_->setObjectName(QStringLiteral("RackResultsTable"));
    table_->setAccessibleName(pick(kResultsName, language));
    table_->setAccessibleDescription(summary);
    QStringList headers;
    for (const Text& column : kResultColumns)
        headers << pick(column, language);
    table_->setHorizontalHeaderLabels(headers);
    table_->verticalHeader()->setVisible(false);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setWordWrap(false);
    for (int r = 0; r < rows.size(); ++r) {
        const RackResultRow& row = rows[r];
        const QStringList cells{row.line, QString::number(row.address), row.model, QString::number(row.moduleNumber),
                                row.status, row.details};
        for (int c = 0; c < cells.size(); ++c)
            table_->setItem(r, c, item(cells[c], !row.fine && c == 4));
    }
    table_->resizeColumnsToContents();
    table_->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(table_, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(pick(kClose, language));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(900, 420);
}

}  // namespace velmor
