#pragma once

#include "frame_text_pane.h"
#include "link/operator_dialogs.h"
#include "model/language.h"
#include "model/module_table.h"

#include <QGroupBox>
#include <QList>

class QLabel;
class QLayout;
class QPushButton;

namespace velmor {

class ModuleInfoFields;

// One of the three frames that TabStrip1 shows in turn. Each holds command
// buttons, which the window locks together, and reports clicks as signals.
class OperationPanel : public QGroupBox {
    Q_OBJECT
public:
    const QList<QPushButton*>& commands() const { return commands_; }

signals:
    void readGroup(int g);   // cmdReceive(g), cmdNoOperateReceive(g)
    void sendGroup(int g);   // cmdSend(g), cmdNoOperateSend(g)
    void readAll();          // cmdFrame1Receive, cmdFrame2Receive, cmdFrame3Receive
    void sendAll();          // cmdFrame1Send, cmdFrame2Send, cmdFrame3Send
    void balance();          // cmdBalance
    void readInfo();         // cmdModuleInfoReceive
    void sendInfo();         // cmdModuleInfoSend
    void beckon();           // cmdBeckon

protected:
    OperationPanel(const char* name, const Text& title, Language language);
    // A command button whose click emits `clicked`, locked with the others.
    QPushButton* command(const char* name, const Text& caption, void (OperationPanel::*clicked)());
    // The arrays readName[g] and sendName[g], emitting readGroup(g) and
    // sendGroup(g), as two rows of four.
    QLayout* groupCommands(const char* readName, const char* sendName);

    Language language_;

private:
    QList<QPushButton*> commands_;
};

// Frame1: the channel parameters of the four groups, the whole-module
// parameter read and send, and the bridge balance.
class ChannelSetupPanel : public OperationPanel {
    Q_OBJECT
public:
    explicit ChannelSetupPanel(Language language);
    FrameTextPane* pane() const { return pane_; }

private:
    FrameTextPane* pane_;
};

// Frame2: the adjust blocks of the four groups.
class AdjustPanel : public OperationPanel {
    Q_OBJECT
public:
    explicit AdjustPanel(Language language);
    FrameTextPane* pane() const { return pane_; }

private:
    FrameTextPane* pane_;
};

// Frame3: the module information, its read and write, and the beckon.
class ModuleInfoPanel : public OperationPanel {
    Q_OBJECT
public:
    ModuleInfoPanel(SetupState& state, OperatorDialogs& dialogs, Language language);
    ModuleInfoFields* fields() const { return fields_; }
    void showSent(QByteArrayView frame);
    void showReturned(QByteArrayView frame);

private:
    ModuleInfoFields* fields_;
    QLabel* lblModuleString_;
    QLabel* lblModuleReturnString_;
};

}  // namespace velmor
