#include "frame_log_pane.h"

#include "file_chooser.h"
#include "link/exchange.h"
#include "link/frame_log_csv.h"
#include "link/operator_dialogs.h"
#include "texts/frame_log.h"
#include "texts/message.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace velmor {
namespace {

QPushButton* button(const char* name, const Text& caption, Language language)
{
    auto* button = new QPushButton(pick(caption, language));
    button->setObjectName(QLatin1String(name));
    return button;
}

}  // namespace

FrameLogPane::FrameLogPane(const Exchange& exchange, FileChooser& files, OperatorDialogs& dialogs, Language language,
                           QMainWindow* window)
    : QDockWidget(window)
    , model_(log_, language)
    , table_(new QTableView)
    , files_(files)
    , dialogs_(dialogs)
    , language_(language)
{
    setObjectName(QStringLiteral("FrameLogPane"));
    setWindowTitle(pick(texts::frame_log::kPaneTitle, language));
    // After the title: the dock gives its title to this entry whenever the
    // title changes.
    toggleViewAction()->setText(pick(texts::frame_log::kMnuViewFrameLog, language));
    toggleViewAction()->setObjectName(QStringLiteral("MnuView_FrameLog"));
    connect(&exchange, &Exchange::frameLogged, &log_, &FrameLog::append);

    table_->setObjectName(QStringLiteral("FrameLogTable"));
    table_->setAccessibleName(pick(texts::frame_log::kTableName, language));
    table_->setModel(&model_);
    // Fixed pitch, as the frame labels: the bytes of a frame line up.
    table_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    table_->setWordWrap(false);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->verticalHeader()->hide();
    // Rows are one line or four: scrolled by pixels, the newest row shows whole.
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setColumnWidths();
    connect(&model_, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
        const QScrollBar* bar = table_->verticalScrollBar();
        following_ = bar->value() == bar->maximum();
    });
    connect(&model_, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { rowsAdded(first, last); });

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(table_, 1);
    layout->addWidget(buildButtons());
    setWidget(content);

    window->addDockWidget(Qt::BottomDockWidgetArea, this);
    hide();
}

void FrameLogPane::setColumnWidths()
{
    const QFontMetrics metrics(table_->font());
    const auto widest = [&](const QStringList& texts) {
        int width = 0;
        for (const QString& text : texts)
            width = std::max(width, metrics.horizontalAdvance(text));
        return width + 2 * metrics.averageCharWidth();
    };
    const auto column = [&](FrameLogModel::Column c, QStringList texts) {
        texts << model_.headerData(c, Qt::Horizontal).toString();
        table_->setColumnWidth(c, widest(texts));
    };
    QStringList outcomes;
    for (const FrameOutcome outcome : {FrameOutcome::Sent, FrameOutcome::Accepted, FrameOutcome::TimedOut,
                                       FrameOutcome::SkippedLate})
        outcomes << FrameLogModel::outcomeText({.outcome = outcome}, language_);
    for (int status = 1; status <= static_cast<int>(std::size(texts::frame_log::kRefusalReasons)); ++status)
        outcomes << FrameLogModel::outcomeText({.outcome = FrameOutcome::Refused, .status = status}, language_);
    column(FrameLogModel::Time, {QStringLiteral("00:00:00.000")});
    column(FrameLogModel::Direction, {pick(texts::frame_log::kOut, language_), pick(texts::frame_log::kIn, language_)});
    column(FrameLogModel::Outcome, outcomes);
    column(FrameLogModel::Frame, {QString(16 * 4, QLatin1Char('0'))});  // a line of 16 bytes
    // Room for a request and a whole reply below the header.
    table_->setMinimumHeight(table_->horizontalHeader()->sizeHint().height() + 7 * metrics.lineSpacing()
                             + table_->horizontalScrollBar()->sizeHint().height());
}

QWidget* FrameLogPane::buildButtons()
{
    auto* exportButton = button("cmdFrameLogExport", texts::frame_log::kExport, language_);
    auto* clearButton = button("cmdFrameLogClear", texts::frame_log::kClear, language_);
    connect(exportButton, &QPushButton::clicked, this, &FrameLogPane::exportCsv);
    connect(clearButton, &QPushButton::clicked, &log_, &FrameLog::clear);
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(exportButton);
    layout->addWidget(clearButton);
    layout->addStretch(1);
    return row;
}

void FrameLogPane::rowsAdded(int first, int last)
{
    // A whole frame is four lines high, a request one. Rows are sized only in
    // sight (sizing asks for every cell's text): hidden, the pane costs the
    // exchanges next to nothing.
    if (!isVisible())
        return;
    for (int row = first; row <= last; ++row)
        table_->resizeRowToContents(row);
    if (following_)
        table_->scrollToBottom();
}

void FrameLogPane::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    table_->resizeRowsToContents();
    table_->scrollToBottom();
}

void FrameLogPane::exportCsv()
{
    const QString path = files_.saveFileName();
    if (path.isEmpty())
        return;
    QString error;
    if (!writeCsv(path, log_.rows(), &error))
        dialogs_.showMessage(pick(texts::message::kTitle, language_), pick(texts::frame_log::kCannotWrite, language_).arg(path, error));
}

}  // namespace velmor
