#include "operation_panels.h"

#include "command_buttons.h"
#include "model/window_texts.h"
#include "module_info_fields.h"
#include "protocol/frame_text.h"

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
    : QGroupBox(pick(title, language)), language_(language)
{
    setObjectName(QLatin1String(name));
}

QPushButton* OperationPanel::command(const char* name, const Text& caption, void (OperationPanel::*clicked)())
{
    QPushButton* button = commandButton(QLatin1String(name), caption, language_);
    connect(button, &QPushButton::clicked, this, clicked);
    commands_.append(button);
    return button;
}

QLayout* OperationPanel::groupCommands(const char* readName, const char* sendName)
{
    const auto reads = groupButtons(readName, win::kReadGroup, language_, [this](int g) { emit readGroup(g); });
    const auto sends = groupButtons(sendName, win::kSendGroup, language_, [this](int g) { emit sendGroup(g); });
    commands_ += reads + sends;
    return groupRows(reads, sends);
}

ChannelSetupPanel::ChannelSetupPanel(Language language)
    : OperationPanel("Frame1", win::kFrame1, language), pane_(new FrameTextPane(kOperateNames, language))
{
    auto* caption = new QLabel(pick(win::kCaption, language));
    caption->setObjectName(QStringLiteral("lblCaption"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(pane_);
    layout->addLayout(groupCommands("cmdReceive", "cmdSend"));
    layout->addLayout(row({command("cmdFrame1Receive", win::kFrame1Receive, &OperationPanel::readAll),
                           command("cmdFrame1Send", win::kFrame1Send, &OperationPanel::sendAll),
                           command("cmdBalance", win::kBalance, &OperationPanel::balance)}));
}

AdjustPanel::AdjustPanel(Language language)
    : OperationPanel("Frame2", win::kFrame2, language), pane_(new FrameTextPane(kNoOperateNames, language))
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pane_);
    layout->addLayout(groupCommands("cmdNoOperateReceive", "cmdNoOperateSend"));
    layout->addLayout(row({command("cmdFrame2Receive", win::kFrame2Receive, &OperationPanel::readAll),
                           command("cmdFrame2Send", win::kFrame2Send, &OperationPanel::sendAll)}));
}

ModuleInfoPanel::ModuleInfoPanel(SetupState& state, OperatorDialogs& dialogs, Language language)
    : OperationPanel("Frame3", win::kFrame3, language)
    , fields_(new ModuleInfoFields(state, dialogs, language))
    , lblModuleString_(frameLabel(QStringLiteral("lblModuleString"), win::kSentFrameName, language))
    , lblModuleReturnString_(frameLabel(QStringLiteral("lblModuleReturnString"), win::kReturnedFrameName, language))
{
    auto* sentCaption = new QLabel(pick(win::kSentCaption, language));
    sentCaption->setObjectName(QStringLiteral("Label6"));
    sentCaption->setBuddy(lblModuleString_);
    auto* returnedCaption = new QLabel(pick(win::kReceivedCaption, language));
    returnedCaption->setObjectName(QStringLiteral("Label7"));
    returnedCaption->setBuddy(lblModuleReturnString_);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fields_);
    layout->addWidget(sentCaption);
    layout->addWidget(lblModuleString_);
    layout->addWidget(returnedCaption);
    layout->addWidget(lblModuleReturnString_);
    layout->addLayout(row({command("cmdModuleInfoReceive", win::kModuleInfoReceive, &OperationPanel::readInfo),
                           command("cmdModuleInfoSend", win::kModuleInfoSend, &OperationPanel::sendInfo),
                           command("cmdBeckon", win::kBeckon, &OperationPanel::beckon)}));
    layout->addLayout(row({command("cmdFrame3Receive", win::kFrame3Receive, &OperationPanel::readAll),
                           command("cmdFrame3Send", win::kFrame3Send, &OperationPanel::sendAll)}));
    layout->addStretch(1);
}

void ModuleInfoPanel::showSent(QByteArrayView frame) { lblModuleString_->setText(frameToText(frame)); }

void ModuleInfoPanel::showReturned(QByteArrayView frame) { lblModuleReturnString_->setText(frameToText(frame)); }

}  // namespace velmor
