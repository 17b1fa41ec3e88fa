#pragma once

#include "frame_text_pane.h"
#include "link/operator_dialogs.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QFrame>
#include <QList>

class QLabel;
class QLayout;
class QPushButton;
class QVBoxLayout;

namespace velmor {

class CellGrid;
class ModuleInfoFields;

// One of the three frames that TabStrip1 shows in turn. Each holds command
// buttons, which the window locks together, and reports clicks as signals.
// Its title wraps: the channel frame's can run to a sentence.
class OperationPanel : public QFrame {
    Q_OBJECT
public:
    // The command buttons, and the grids and switches that an exchange in
    // flight locks with them.
    const QList<QWidget*>& lockedDuringExchanges() const { return locked_; }
    QString title() const;
    void setTitle(const QString& title);

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
    // The frame's layout, below its title.
    QVBoxLayout* body() const { return body_; }
    void lockDuringExchanges(QWidget* control) { locked_.append(control); }

    Language language_;

private:
    QLabel* title_;
    QVBoxLayout* body_;
    QList<QWidget*> locked_;
};

// Frame1: the channel grid and the coefficient grid taking turns in one
// place (cmdShow), the channel parameters of the four groups, the
// whole-module parameter read and send, and the bridge balance.
class ChannelSetupPanel : public OperationPanel {
    Q_OBJECT
public:
    explicit ChannelSetupPanel(Language language);
    FrameTextPane* pane() const { return pane_; }
    CellGrid* channelGrid() const { return MSHGridOperate_; }
    CellGrid* calibrationGrid() const { return MSHGridCalibration_; }
    void cmdShow_Click();
    // The grid editor's caption and choices, under the grids and locked with them.
    void addEditorStrip(QWidget* strip);

private:
    FrameTextPane* pane_;
    CellGrid* MSHGridOperate_;
    CellGrid* MSHGridCalibration_;
    QPushButton* cmdShow_;
};

// Frame2: the adjust grid and the adjust blocks of the four groups.
class AdjustPanel : public OperationPanel {
    Q_OBJECT
public:
    explicit AdjustPanel(Language language);
    FrameTextPane* pane() const { return pane_; }
    CellGrid* adjustGrid() const { return MSHGridNoOperate_; }

private:
    FrameTextPane* pane_;
    CellGrid* MSHGridNoOperate_;
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
