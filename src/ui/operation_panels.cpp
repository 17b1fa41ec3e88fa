#include "operation_panels.h"

#include "cell_grid.h"
#include "command_buttons.h"
#include "module_info_fields.h"
#include "protocol/frame_text.h"
#include "texts/window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace velmor {
namespace {

// Read buttons above send buttons, one column per channel group.
QGridLayout* groupRows(const QList<QPushButton*>& reads, const QList<QPushButton*>& sends)
{
    auto* grid = new QGridLayout;
    for (int g = 0; g < reads.size(); ++g) {
        grid->addWidget(reads[g], 0, g);
        grid->addWidget(sends[g], 1, g);
    }
    return grid;
}

QHBoxLayout* row(const QList<QPushButton*>& buttons)
{
    auto* layout = new QHBoxLayout;
    for (QPushButton* button : buttons)
        layout->addWidget(button);
    layout->addStretch(1);
    return layout;
}

}  // namespace

OperationPanel::OperationPanel(const char* name, const Text& title, Language language)
    : language_(language), title_(new QLabel(pick(title, language))), body_(new QVBoxLayout)
{
    setObjectName(QLatin1String(name));
    setFrameShape(QFrame::StyledPanel);
    title_->setObjectName(QStringLiteral("%1Title").arg(QLatin1String(name)));
    title_->setWordWrap(true);
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_);
    layout->addLayout(body_, 1);
    setAccessibleName(title_->text());
}

QString OperationPanel::title() const { return title_->text(); }

void OperationPanel::setTitle(const QString& title)
{
    title_->setText(title);
    setAccessibleName(title);
}

QPushButton* OperationPanel::command(const char* name, const Text& caption, void (OperationPanel::*clicked)())
{
    QPushButton* button = commandButton(QLatin1String(name), caption, language_);
    connect(button, &QPushButton::clicked, this, clicked);
    lockDuringExchanges(button);
    return button;
}

QLayout* OperationPanel::groupCommands(const char* readName, const char* sendName)
{
    const auto reads = groupButtons(readName, texts::window::kReadGroup, language_, [this](int g) { emit readGroup(g); });
    const auto sends = groupButtons(sendName, texts::window::kSendGroup, language_, [this](int g) { emit sendGroup(g); });
    for (QPushButton* button : reads + sends)
        lockDuringExchanges(button);
    return groupRows(reads, sends);
}

ChannelSetupPanel::ChannelSetupPanel(Language language)
    : OperationPanel("Frame1", texts::reference::kFrameTitle, language)
    , pane_(new FrameTextPane(kOperateNames, language))
    , MSHGridOperate_(new CellGrid(QStringLiteral("MSHGridOperate"), pick(texts::window::kChannelGridName, language)))
    , MSHGridCalibration_(new CellGrid(QStringLiteral("MSHGridCalibration"), pick(texts::window::kCalibrationGridName, language)))
    , cmdShow_(new QPushButton(QString::fromUtf8(texts::window::kShowCoefficients)))
{
    auto* caption = new QLabel(pick(texts::window::kCaption, language));
    caption->setObjectName(QStringLiteral("lblCaption"));
    cmdShow_->setObjectName(QStringLiteral("cmdShow"));
    MSHGridCalibration_->hide();
    connect(cmdShow_, &QPushButton::clicked, this, &ChannelSetupPanel::cmdShow_Click);
    auto* top = new QHBoxLayout;
    top->addWidget(caption, 1);
    top->addWidget(cmdShow_);
    body()->addLayout(top);
    // One place for both grids.
    auto* place = new QGridLayout;
    place->addWidget(MSHGridOperate_, 0, 0);
    place->addWidget(MSHGridCalibration_, 0, 0);
    body()->addLayout(place, 1);
    body()->addWidget(pane_);
    for (QWidget* control : std::initializer_list<QWidget*>{cmdShow_, MSHGridOperate_, MSHGridCalibration_})
        lockDuringExchanges(control);
    body()->addLayout(groupCommands("cmdReceive", "cmdSend"));
    body()->addLayout(row({command("cmdFrame1Receive", texts::window::kReadOperation, &OperationPanel::readAll),
                           command("cmdFrame1Send", texts::window::kFrame1Send, &OperationPanel::sendAll),
                           command("cmdBalance", texts::window::kBalance, &OperationPanel::balance)}));
}

void ChannelSetupPanel::addEditorStrip(QWidget* strip)
{
    body()->insertWidget(body()->indexOf(pane_), strip);
    lockDuringExchanges(strip);
}

void ChannelSetupPanel::cmdShow_Click()
{
    // The two grids take turns in one place; the caption is Chinese in both
    // languages: deliberate.
    MSHGridCalibration_->setVisible(MSHGridCalibration_->isHidden());
    MSHGridOperate_->setVisible(MSHGridCalibration_->isHidden());
    cmdShow_->setText(QString::fromUtf8(MSHGridCalibration_->isHidden() ? texts::window::kShowCoefficients : texts::window::kHideCoefficients));
}

AdjustPanel::AdjustPanel(Language language)
    : OperationPanel("Frame2", texts::window::kFrame2, language)
    , pane_(new FrameTextPane(kNoOperateNames, language))
    , MSHGridNoOperate_(new CellGrid(QStringLiteral("MSHGridNoOperate"), pick(texts::window::kAdjustGridName, language)))
{
    body()->addWidget(MSHGridNoOperate_, 1);
    body()->addWidget(pane_);
    lockDuringExchanges(MSHGridNoOperate_);
    body()->addLayout(groupCommands("cmdNoOperateReceive", "cmdNoOperateSend"));
    body()->addLayout(row({command("cmdFrame2Receive", texts::window::kReadOperation, &OperationPanel::readAll),
                           command("cmdFrame2Send", texts::window::kFrame2Send, &OperationPanel::sendAll)}));
}

ModuleInfoPanel::ModuleInfoPanel(SetupState& state, OperatorDialogs& dialogs, Language language)
    : OperationPanel("Frame3", texts::window::kFrame3, language)
    , fields_(new ModuleInfoFields(state, dialogs))
    , lblModuleString_(frameLabel(QStringLiteral("lblModuleString"), texts::window::kSentFrameName, language))
    , lblModuleReturnString_(frameLabel(QStringLiteral("lblModuleReturnString"), texts::window::kReturnedFrameName, language))
{
    auto* sentCaption = new QLabel(pick(texts::window::kSentCaption, language));
    sentCaption->setObjectName(QStringLiteral("Label6"));
    sentCaption->setBuddy(lblModuleString_);
    auto* returnedCaption = new QLabel(pick(texts::window::kReceivedCaption, language));
    returnedCaption->setObjectName(QStringLiteral("Label7"));
    returnedCaption->setBuddy(lblModuleReturnString_);

    QVBoxLayout* layout = body();
    layout->addWidget(fields_);
    lockDuringExchanges(fields_);
    layout->addWidget(sentCaption);
    layout->addWidget(lblModuleString_);
    layout->addWidget(returnedCaption);
    layout->addWidget(lblModuleReturnString_);
    layout->addLayout(row({command("cmdModuleInfoReceive", texts::window::kModuleInfoReceive, &OperationPanel::readInfo),
                           command("cmdModuleInfoSend", texts::window::kModuleInfoSend, &OperationPanel::sendInfo),
                           command("cmdBeckon", texts::window::kBeckon, &OperationPanel::beckon)}));
    layout->addLayout(row({command("cmdFrame3Receive", texts::window::kFrame3Receive, &OperationPanel::readAll),
                           command("cmdFrame3Send", texts::window::kFrame3Send, &OperationPanel::sendAll)}));
    layout->addStretch(1);
}

void ModuleInfoPanel::showSent(QByteArrayView frame) { lblModuleString_->setText(frameToText(frame)); }

void ModuleInfoPanel::showReturned(QByteArrayView frame) { lblModuleReturnString_->setText(frameToText(frame)); }

}  // namespace velmor
