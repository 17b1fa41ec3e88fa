#include "frm_frequence.h"

#include "model/cutoff_frequency.h"
#include "object_names.h"
#include "texts/editor.h"
#include "texts/message.h"

#include <QButtonGroup>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace velmor {

namespace {

// Every caption an option can show: the two out-of-range words and the widest
// number the "#####.00000" picture gives.
QStringList possibleCaptions(Language language)
{
    CutoffChoice widest;
    widest.candidates = {88888.88888, 88888.88888};
    return {optionCaption(widest, 0, FrequencyFit::Within, language),
            optionCaption(widest, 0, FrequencyFit::Overflow, language),
            optionCaption(widest, 0, FrequencyFit::TooLow, language)};
}

// Room for any of them (Chinese glyphs stand taller), so that typing never
// resizes the dialog.
void reserveRoom(QRadioButton* button, const QStringList& captions)
{
    button->ensurePolished();
    QSize room;
    for (const QString& caption : captions) {
        button->setText(caption);
        room = room.expandedTo(button->sizeHint());
    }
    button->setMinimumSize(room);
}

QString withoutTrailingBlanks(QString text)
{
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text;
}

}  // namespace

frmFrequence::frmFrequence(const ModuleRecord& module, const QString& cellText, Language language,
                           QWidget* parent)
    : QDialog(parent)
    , module_(module)
    , language_(language)
    , state_(startFrequencyDialog(module, cellText))
    , txtEdit_(new QLineEdit(state_.text))
    , options_(new QButtonGroup(this))
{
    setObjectName(QStringLiteral("frmFrequence"));
    setWindowTitle(pick(texts::message::kTitle, language));
    const FrequencyDialogCaptions captions = frequencyDialogCaptions(language);

    auto* lblCaption = new QLabel(captions.label);
    lblCaption->setObjectName(QStringLiteral("lblCaption"));
    lblCaption->setBuddy(txtEdit_);
    // No validator and no key filter: the box takes any key, and the rules read
    // whatever number leads the text.
    txtEdit_->setObjectName(QStringLiteral("txtEdit"));
    txtEdit_->setAccessibleName(captions.label);
    txtEdit_->installEventFilter(this);

    auto* group = new QGroupBox;
    group->setObjectName(QStringLiteral("Option1"));
    group->setAccessibleName(withoutTrailingBlanks(pick(texts::editor::kCutoffCaption, language)));
    auto* optionLayout = new QVBoxLayout(group);
    const QStringList possible = possibleCaptions(language);
    for (int i = 0; i < static_cast<int>(option1_.size()); ++i) {
        auto* button = new QRadioButton;
        button->setObjectName(arrayName("Option1", i));
        reserveRoom(button, possible);
        options_->addButton(button, i);
        optionLayout->addWidget(button);
        option1_[static_cast<size_t>(i)] = button;
    }
    // Tab stops once in the group, on the chosen option (the arrow keys move
    // within it), as option groups do.
    connect(options_, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        option1_[static_cast<size_t>(id)]->setFocusPolicy(checked ? Qt::StrongFocus : Qt::ClickFocus);
    });
    for (QRadioButton* button : option1_)
        button->setFocusPolicy(Qt::ClickFocus);
    option1_[static_cast<size_t>(state_.selectedOption)]->setChecked(true);
    showCaptions();

    auto* cmdOK = new QPushButton(captions.ok);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    auto* cmdCancel = new QPushButton(captions.cancel);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* entry = new QHBoxLayout;
    entry->addWidget(lblCaption);
    entry->addWidget(txtEdit_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(entry);
    layout->addWidget(group);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    setTabOrder(txtEdit_, option1_[0]);
    setTabOrder(option1_[0], option1_[1]);
    setTabOrder(option1_[1], cmdOK);
    setTabOrder(cmdOK, cmdCancel);
    txtEdit_->setFocus();

    // textEdited, not textChanged: the texts the dialog sets itself have steps
    // of their own.
    connect(txtEdit_, &QLineEdit::textEdited, this, &frmFrequence::txtEdit_Change);
    connect(options_, &QButtonGroup::idClicked, this, &frmFrequence::Option1_Click);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFrequence::txtEdit_Change(const QString& text)
{
    frequencyTextChanged(state_, module_, text, language_);
    showCaptions();
}

void frmFrequence::txtEdit_LostFocus()
{
    frequencyFocusLost(state_, module_, language_);
    showText();
    showCaptions();
}

void frmFrequence::Option1_Click(int index)
{
    frequencyOptionClicked(state_, index);
    showText();
}

bool frmFrequence::eventFilter(QObject* watched, QEvent* event)
{
    // Only focus that moves within the open dialog counts: switching to another
    // window, a context menu, or the dialog closing after OK must not reformat
    // the text that OK takes.
    if (watched == txtEdit_ && event->type() == QEvent::FocusOut && isVisible()) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            txtEdit_LostFocus();
    }
    return QDialog::eventFilter(watched, event);
}

void frmFrequence::showCaptions()
{
    for (size_t i = 0; i < option1_.size(); ++i)
        option1_[i]->setText(state_.captions[i]);
}

void frmFrequence::showText()
{
    if (txtEdit_->text() != state_.text)
        txtEdit_->setText(state_.text);
}

}  // namespace velmor
