#include "channel_grid_editor.h"

#include "cell_box.h"
#include "cell_grid.h"
#include "edit/grid_cells.h"
#include "frm_frequence.h"
#include "key_filter.h"
#include "model/key_filters.h"
#include "model/number_text.h"
#include "object_names.h"
#include "texts/editor.h"
#include "texts/grid.h"
#include "texts/message.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRadioButton>

namespace velmor {
namespace {

// The dialog takes the cell's frequency as "0.00000".
constexpr NumberPicture kDialogPicture{1, 5, 5};

// The automatic-balance toggle's two pictures: a filled dot with a tick for a
// chosen channel, a hollow ring for one left out.
QIcon togglePicture(bool chosen)
{
    QPixmap picture(16, 16);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring(2, 2, 12, 12);
    if (chosen) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0x2e, 0x7d, 0x32));
        painter.drawEllipse(ring);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawPolyline(QPolygonF({QPointF(5, 8.5), QPointF(7, 10.5), QPointF(11, 5.5)}));
    } else {
        painter.setPen(QPen(QColor(0x75, 0x75, 0x75), 1.5));
        painter.drawEllipse(ring);
    }
    return QIcon(picture);
}

bool isPrompt(EditorKind kind) { return kind == EditorKind::WholeNumberPrompt || kind == EditorKind::NumberPrompt; }

}  // namespace

ChannelGridEditor::ChannelGridEditor(CellGrid* grid, SetupState& state, OperatorDialogs& dialogs)
    : GridEditor(grid, state, dialogs)
    , strip_(new QWidget)
    , caption_(new QLabel)
    , cmbGain_(new QComboBox(grid->viewport()))
    , txtOperate_(new QLineEdit(grid->viewport()))
    , listCell_(new CellBox(cmbGain_, grid, CellBox::Fit::WholeCell))
    , typedCell_(new CellBox(txtOperate_, grid, CellBox::Fit::WholeCell))
{
    cmbGain_->setObjectName(QStringLiteral("cmbGain"));
    txtOperate_->setObjectName(QStringLiteral("txtOperate"));
    caption_->setObjectName(QStringLiteral("lblOperateEditor"));
    caption_->setBuddy(cmbGain_);
    caption_->hide();
    auto* layout = new QHBoxLayout(strip_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption_);
    for (int i = 0; i < 2; ++i) {
        Option1_[i] = new QRadioButton;
        Option1_[i]->setObjectName(arrayName("Option1", i));
        // A click on a choice must not take the focus from txtOperate first.
        Option1_[i]->setFocusPolicy(Qt::NoFocus);
        Option1_[i]->hide();
        layout->addWidget(Option1_[i]);
        connect(Option1_[i], &QRadioButton::clicked, this, [this, i] { Option1_Click(i); });
    }
    layout->addStretch(1);
    Option1_[0]->setChecked(true);

    // Whole numbers for the balance and the two adjusts, decimals elsewhere.
    KeyFilter::install(txtOperate_, [this](char16_t key, const QLineEdit& box) {
        const bool whole = column_ == kBalanceColumn || column_ == kZeroAdjustColumn || column_ == kGainAdjustColumn;
        return whole ? FilterDigitKey(key) : decimalKeyFor(key, box);
    });
    for (CellBox* box : {listCell_, typedCell_})
        connect(box, &CellBox::escaped, this, &ChannelGridEditor::close);
    grid_->installEventFilter(this);
    grid_->cellModel()->setPictures(kAutoBalanceColumn,
                                    {{pick(texts::grid::kAutoBalanceChosen, language()), togglePicture(true)},
                                     {pick(texts::grid::kAutoBalanceLeftOut, language()), togglePicture(false)}});
    connect(txtOperate_, &QLineEdit::textEdited, this, &ChannelGridEditor::txtOperate_Change);
    connect(txtOperate_, &QLineEdit::editingFinished, this, &ChannelGridEditor::txtOperate_LostFocus);
    connect(cmbGain_, &QComboBox::activated, this, &ChannelGridEditor::cmbGain_Click);
    connect(grid_, &CellGrid::cellReleased, this, &ChannelGridEditor::cellReleased);
}

ModuleRecord& ChannelGridEditor::module() { return state_.current(); }

void ChannelGridEditor::close()
{
    row_ = 0;
    typedCell_->close();
    listCell_->close();
    for (QRadioButton* option : Option1_)
        option->hide();
    // The caption shows only with an open editor: an empty one would read as a defect.
    caption_->clear();
    caption_->hide();
}

void ChannelGridEditor::cellReleased(int row, int column, RowSpan rows)
{
    close();
    // What a click opens; the choice, the answer or the dialog's OK stores later.
    struct Click {
        ChannelGridEditor& grid;
        int row, column;
        RowSpan rows;
        void list(const ChannelEditor& editor) { grid.openList(editor, row, column, rows); }
        void prompt(const ChannelEditor& editor) { grid.askNumber(editor, column, rows); }
        void toggle(const ChannelEditor&)
        {
            grid.showEdit(toggleAutoBalance(grid.state_.currentMask(), row, grid.language()));
        }
        void frequencyDialog(const ChannelEditor&) { grid.openFrequencyDialog(row, rows); }
        void none(const ChannelEditor&) {}  // refused: nothing opens
    };
    withEditor(channelEditor(module(), column, language()), Click{*this, row, column, rows});
}

void ChannelGridEditor::openList(const ChannelEditor& editor, int row, int column, RowSpan rows)
{
    openingList(module(), column, row);
    caption_->setText(editor.caption);
    caption_->show();
    cmbGain_->clear();
    cmbGain_->addItems(editor.items);
    cmbGain_->setCurrentIndex(-1);
    column_ = column;
    listRows_ = rows;
    listCell_->open(row, column);
    cmbGain_->showPopup();
}

void ChannelGridEditor::cmbGain_Click(int item)
{
    listCell_->close();
    showEdit(chooseListItem(module(), column_, item, listRows_, language()));
}

void ChannelGridEditor::askNumber(const ChannelEditor& editor, int column, RowSpan rows)
{
    const QString answer = dialogs_.askText(editor.promptTitle, editor.promptText);
    if (answer.trimmed().isEmpty())
        return;
    const EditResult result = answerPrompt(module(), column, answer, rows, language());
    // An answer that is not a number (or a negative one) changes nothing.
    if (result.cells.isEmpty())
        message();
    showEdit(result);
}

void ChannelGridEditor::openFrequencyDialog(int row, RowSpan rows)
{
    const QString cell = grid_->cellModel()->cellText(row, kCutoffColumn);
    frmFrequence dialog(module(), formatNumber(leadingNumber(cell), kDialogPicture), language(), grid_->window());
    if (dialog.exec() == QDialog::Accepted)
        showEdit(acceptFrequencyDialog(dialog.state(), module(), rows));
}

bool ChannelGridEditor::startTyping(const QKeyEvent& key)
{
    const QModelIndex current = grid_->currentIndex();
    if (!current.isValid() || key.text().isEmpty() || !key.text().at(0).isPrint())
        return false;
    const int column = current.column();
    // Typing goes to the number columns and to the cut-off where the dialog would open.
    const EditorKind kind = channelEditor(module(), column, language()).kind;
    if (!isPrompt(kind) && !(column == kCutoffColumn && kind == EditorKind::FrequencyDialog))
        return false;
    close();
    row_ = current.row() + 1;
    column_ = column;
    if (column == kCutoffColumn) {
        caption_->setText(pick(texts::editor::kFrequencyCaption, language()));
        caption_->show();
        Option1_[0]->setChecked(true);
        for (QRadioButton* option : Option1_)
            option->show();
    }
    txtOperate_->setText(grid_->cellModel()->cellText(row_, column_));
    // The cell's own text is not typed: it is not checked ("Unknown" is no
    // number), only the choices are worked out from it.
    showChoices(txtOperate_->text());
    txtOperate_->selectAll();
    typedCell_->open(row_, column_);
    // The key that opened the box is its first key, through its filter.
    QKeyEvent typed(QEvent::KeyPress, key.key(), key.modifiers(), key.text());
    QCoreApplication::sendEvent(txtOperate_, &typed);
    return true;
}

void ChannelGridEditor::txtOperate_Change(const QString& text)
{
    if (column_ != kCutoffColumn)
        return;
    if (!showChoices(text) && !text.trimmed().isEmpty())
        message();
}

bool ChannelGridEditor::showChoices(const QString& text)
{
    if (column_ != kCutoffColumn)
        return true;
    entry_ = frequencyEntry(module(), text, language());
    if (!entry_.isNumber)
        return false;
    for (int i = 0; i < 2; ++i)
        Option1_[i]->setText(entry_.captions[static_cast<size_t>(i)]);
    return true;
}

void ChannelGridEditor::txtOperate_LostFocus()
{
    if (row_ == 0)
        return;
    const int row = row_;
    row_ = 0;
    if (column_ == kCutoffColumn) {
        showEdit(takeCutoff(module(), row, entry_, Option1_[1]->isChecked() ? 1 : 0));
    } else {
        const QString cell = grid_->cellModel()->cellText(row, column_);
        showEdit(typeIntoCell(module(), row, column_, cell, txtOperate_->text(), language()));
    }
    close();
}

void ChannelGridEditor::Option1_Click(int option)
{
    if (row_ == 0 || column_ != kCutoffColumn)
        return;
    const int row = row_;
    row_ = 0;
    showEdit(takeCutoff(module(), row, entry_, option));
    close();
}

bool ChannelGridEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (watched == grid_ && !txtOperate_->isVisible())
        return startTyping(*key);
    return false;
}

void ChannelGridEditor::message()
{
    dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::message::kInputDataError, language()));
}

}  // namespace velmor
