#include "operation_panels.h"

#include "command_buttons.h"
#include "model/window_texts.h"
#include "protocol/frame_text.h"

#include <QFontDatabase>
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

QPushButton* OperationPanel::add(QPushButton* button)
{
    commands_.append(button);
    return button;
}

ChannelSetupPanel::ChannelSetupPanel(Language language)
    : OperationPanel("Frame1", win::kFrame1, language), pane_(new FrameTextPane(kOperateNames, language))
{
    auto* caption = new QLabel(pick(win::kCaption, language));
    caption->setObjectName(QStringLiteral("lblCaption"));
    const auto reads = groupButtons("cmdReceive", win::kReadGroup, language, [this](int g) { emit readGroup(g); });
    const auto sends = groupButtons("cmdSend", win::kSendGroup, language, [this](int g) { emit sendGroup(g); });
    for (QPushButton* button : reads + sends)
        add(button);
    QPushButton* receive = add(commandButton(QStringLiteral("cmdFrame1Receive"), win::kFrame1Receive, language));
    QPushButton* send = add(commandButton(QStringLiteral("cmdFrame1Send"), win::kFrame1Send, language));
    QPushButton* bridge = add(commandButton(QStringLiteral("cmdBalance"), win::kBalance, language));
    connect(receive, &QPushButton::clicked, this, &OperationPanel::readAll);
    connect(send, &QPushButton::clicked, this, &OperationPanel::sendAll);
    connect(bridge, &QPushButton::clicked, this, &OperationPanel::balance);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(pane_);
    layout->addLayout(groupRows(reads, sends));
    layout->addLayout(row({receive, send, bridge}));
}

AdjustPanel::AdjustPanel(Language language)
    : OperationPanel("Frame2", win::kFrame2, language), pane_(new FrameTextPane(kNoOperateNames, language))
{
    const auto reads = groupButtons("cmdNoOperateReceive", win::kReadGroup, language, [this](int g) { emit readGroup(g); });
    const auto sends = groupButtons("cmdNoOperateSend", win::kSendGroup, language, [this](int g) { emit sendGroup(g); });
    for (QPushButton* button : reads + sends)
        add(button);
    QPushButton* receive = add(commandButton(QStringLiteral("cmdFrame2Receive"), win::kFrame2Receive, language));
    QPushButton* send = add(commandButton(QStringLiteral("cmdFrame2Send"), win::kFrame2Send, language));
    connect(receive, &QPushButton::clicked, this, &OperationPanel::readAll);
    connect(send, &QPushButton::clicked, this, &OperationPanel::sendAll);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pane_);
    layout->addLayout(groupRows(reads, sends));
    layout->addLayout(row({receive, send}));
}

ModuleInfoPanel::ModuleInfoPanel(Language language)
    : OperationPanel("Frame3", win::kFrame3, language), lblModuleString_(new QLabel)
{
    lblModuleString_->setObjectName(QStringLiteral("lblModuleString"));
    lblModuleString_->setAccessibleName(pick(win::kSentFrameName, language));
    lblModuleString_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lblModuleString_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* caption = new QLabel(pick(win::kSentCaption, language));
    caption->setObjectName(QStringLiteral("Label6"));
    caption->setBuddy(lblModuleString_);

    QPushButton* readInfoButton = add(commandButton(QStringLiteral("cmdModuleInfoReceive"), win::kModuleInfoReceive, language));
    QPushButton* sendInfoButton = add(commandButton(QStringLiteral("cmdModuleInfoSend"), win::kModuleInfoSend, language));
    QPushButton* beckonButton = add(commandButton(QStringLiteral("cmdBeckon"), win::kBeckon, language));
    QPushButton* receive = add(commandButton(QStringLiteral("cmdFrame3Receive"), win::kFrame3Receive, language));
    QPushButton* send = add(commandButton(QStringLiteral("cmdFrame3Send"), win::kFrame3Send, language));
    connect(readInfoButton, &QPushButton::clicked, this, &OperationPanel::readInfo);
    connect(sendInfoButton, &QPushButton::clicked, this, &OperationPanel::sendInfo);
    connect(beckonButton, &QPushButton::clicked, this, &OperationPanel::beckon);
    connect(receive, &QPushButton::clicked, this, &OperationPanel::readAll);
    connect(send, &QPushButton::clicked, this, &OperationPanel::sendAll);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(lblModuleString_);
    layout->addLayout(row({readInfoButton, sendInfoButton, beckonButton}));
    layout->addLayout(row({receive, send}));
    layout->addStretch(1);
}

void ModuleInfoPanel::showSent(QByteArrayView frame) { lblModuleString_->setText(frameToText(frame)); }

}  // namespace velmor
