// The three operation frames of the main window: their buttons run the flows
// of the link layer on simulated lines, their labels show the frames sent, and
// every command is locked while an exchange runs.

#include "edit/grid_cells.h"
#include "model/reference.h"
#include "protocol/frame.h"
#include "protocol/frame_text.h"
#include "protocol/rebuilt_frames.h"
#include "protocol/requests.h"
#include "ui/cell_grid.h"
#include "ui/operation_panels.h"
#include "window_rig.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

QPushButton* button(QWidget& window, const char* name) { return child<QPushButton>(window, name); }

struct Counts {
    int channels = 0;
    int adjust = 0;
    int calibration = 0;
};

// The write requests the line took, by block kind.
Counts writes(const SimLine& line)
{
    Counts counts;
    for (const QByteArray& request : line.requests()) {
        if (static_cast<quint8>(request[kCommandOffset]) != kCmdWrite)
            continue;
        const int selector = request[kGroupOffset];
        (selector >= kGroupCalibrationFirst ? counts.calibration
         : selector >= kGroupAdjustFirst    ? counts.adjust
                                            : counts.channels)++;
    }
    return counts;
}

QList<QWidget*> commandControls(frmMain& window)
{
    QList<QWidget*> controls;
    // The frame log's Export and Clear start no exchange: the log stays at
    // hand while a flow runs.
    const QWidget* log = window.findChild<QWidget*>(QStringLiteral("FrameLogPane"));
    for (QPushButton* b : window.findChildren<QPushButton*>())
        if (!log || !log->isAncestorOf(b))
            controls << b;
    for (QComboBox* list : window.findChildren<QComboBox*>())
        controls << list;
    for (const char* name : {"TabStrip1", "TabStripCom", "MSHGridOperate", "MSHGridCalibration", "MSHGridNoOperate",
                             "txtModuleNumber", "txtVer"})
        controls << child<QWidget>(window, name);
    return controls;
}

}  // namespace

class OperationFramesTest : public QObject {
    Q_OBJECT
private slots:
    void chosenGroupTabShowsOnlyItsLabels();
    void writeChainsSendOneRequestPerGroupAndTwoPerPair_data();
    void writeChainsSendOneRequestPerGroupAndTwoPerPair();
    void aGroupButtonShowsTheFrameItSends();
    void tabStrip1ShowsOneFrameAtATime();
    void everyCommandIsLockedUntilTheExchangeEnds_data();
    void everyCommandIsLockedUntilTheExchangeEnds();
    void anEmptySearchTurnsTheFramesOff();
    void aFailedOpenIsToldAndLeavesTheFramesAsTheOriginalDid_data();
    void aFailedOpenIsToldAndLeavesTheFramesAsTheOriginalDid();
    void cancelOnOnlyOneModuleSendsNothing();
    void twoClicksOnCmdShowRestoreBothGridsAndTheCaption();
    void theGridsShowWhatAWholeReadBrought_data();
    void theGridsShowWhatAWholeReadBrought();
};

void OperationFramesTest::chosenGroupTabShowsOnlyItsLabels()
{
    RecordingDialogs dialogs;
    frmMain window(kEnglish, &dialogs);
    window.show();
    auto* tabs = child<QTabBar>(window, QStringLiteral("TabStripOperate"));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
    QCOMPARE(child<QLabel>(window, QStringLiteral("Label1"))->text(), QStringLiteral("9-12通道发送字符串"));
    QCOMPARE(child<QLabel>(window, QStringLiteral("Label2"))->text(), QStringLiteral("9-12通道返回字符串"));
    for (int g = 0; g < 4; ++g) {
        for (const char* array : {"lblModuleOperateString", "lblModuleOperateReturnString"}) {
            const QString name = QStringLiteral("%1[%2]").arg(QLatin1String(array)).arg(g);
            QCOMPARE(child<QLabel>(window, name)->isVisibleTo(&window), g == 2);
        }
    }
    // The adjust frame's own strip is untouched.
    QCOMPARE(child<QTabBar>(window, QStringLiteral("TabStripNoOperate"))->currentIndex(), 0);
}

void OperationFramesTest::writeChainsSendOneRequestPerGroupAndTwoPerPair_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("groups");
    QTest::newRow("4 channels") << 0 << 1;
    QTest::newRow("16 channels") << 2 << 4;
}

void OperationFramesTest::writeChainsSendOneRequestPerGroupAndTwoPerPair()
{
    QFETCH(int, modelCode);
    QFETCH(int, groups);
    SimLine line({{3, modelCode}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    frmMain& window = rig.window;
    chooseModule(window, line, 3);
    QTest::mouseClick(button(window, "cmdFrame3Receive"), Qt::LeftButton);
    QCOMPARE(window.state().current().channelCount, qint16(groups * 4));

    line.clearFrames();
    QTest::mouseClick(button(window, "cmdFrame1Send"), Qt::LeftButton);
    Counts sent = writes(line);
    QCOMPARE(sent.channels, groups);
    QCOMPARE(sent.adjust, groups);
    QCOMPARE(sent.calibration, 2 * groups);

    line.clearFrames();
    QTest::mouseClick(button(window, "cmdFrame2Send"), Qt::LeftButton);
    sent = writes(line);
    QCOMPARE(sent.adjust, groups);
    QCOMPARE(sent.channels + sent.calibration, 0);
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
}

void OperationFramesTest::aGroupButtonShowsTheFrameItSends()
{
    SimLine line({{2, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    frmMain& window = rig.window;
    chooseModule(window, line, 2);
    QTest::mouseClick(button(window, "cmdReceive[1]"), Qt::LeftButton);
    QCOMPARE(child<QTabBar>(window, QStringLiteral("TabStripOperate"))->currentIndex(), 1);
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleOperateString[1]"))->text(), QStringLiteral("AA  AA  03  02  11  02  15  "));
    QCOMPARE(line.requests(), QList<QByteArray>{readChannelGroupRequest(window.state().current(), 1).frame()});
    // The return label shows the group rebuilt from what was stored, under
    // the reply code: the module's own reply again.
    QCOMPARE(line.replies().size(), 1);
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleOperateReturnString[1]"))->text(), frameToText(line.replies().first()));
    QCOMPARE(line.replies().first().at(4), char(0x41));
    // The beckon goes to 255 whatever module is chosen, and shows in Frame3
    // until its answer comes: the information rebuilt under code 16, which
    // puts FF in byte 4, on the send label.
    line.clearFrames();
    QTest::mouseClick(button(window, "cmdBeckon"), Qt::LeftButton);
    QCOMPARE(line.requests(), QList<QByteArray>{QByteArray::fromHex("AAAA03FF10000F")});
    const QByteArray rebuilt = rebuiltFrame(window.state().current(), {Block::Kind::Information}, kCmdBeckon);
    QCOMPARE(rebuilt.first(6), QByteArray::fromHex("AAAA33FFFF00"));
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleString"))->text(), frameToText(rebuilt));
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleReturnString"))->text(), QString());
    // A read of the information shows its answer on the return label.
    QTest::mouseClick(button(window, "cmdModuleInfoReceive"), Qt::LeftButton);
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleString"))->text(), QStringLiteral("AA  AA  03  02  11  00  13  "));
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleReturnString"))->text(),
             frameToText(rebuiltFrame(window.state().current(), {Block::Kind::Information}, kCmdRead + kReplyOffset)));
    // Sending everything ends with eight calibration writes, which are not
    // shown: the adjust frame still shows the last adjust block sent.
    QTest::mouseClick(button(window, "cmdFrame1Send"), Qt::LeftButton);
    QCOMPARE(child<QTabBar>(window, QStringLiteral("TabStripNoOperate"))->currentIndex(), 3);
    QCOMPARE(child<QLabel>(window, QStringLiteral("lblModuleNoOperateString[3]"))->text(),
             frameToText(writeAdjustBlockRequest(window.state().current(), 3).frame()));
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
}

void OperationFramesTest::tabStrip1ShowsOneFrameAtATime()
{
    RecordingDialogs dialogs;
    frmMain window(kEnglish, &dialogs);
    window.show();
    auto* tabs = child<QTabBar>(window, QStringLiteral("TabStrip1"));
    for (int tab : {1, 2, 0}) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
        for (int frame = 0; frame < 3; ++frame)
            QCOMPARE(child<QWidget>(window, QStringLiteral("Frame%1").arg(frame + 1))->isVisible(), frame == tab);
    }
}

void OperationFramesTest::everyCommandIsLockedUntilTheExchangeEnds_data()
{
    QTest::addColumn<int>("fault");  // -1 none
    QTest::addColumn<QString>("message");
    QTest::newRow("reply") << -1 << QString();
    QTest::newRow("time-out") << int(sim::FaultKind::Silence) << QStringLiteral("No respond.");
    QTest::newRow("refused reply") << int(sim::FaultKind::Checksum) << QStringLiteral("Return data fail.");
}

void OperationFramesTest::everyCommandIsLockedUntilTheExchangeEnds()
{
    QFETCH(int, fault);
    QFETCH(QString, message);
    SimLine line({{6, 0}}, Pacing::Paced, QStringLiteral("SIM1"));
    if (fault >= 0)
        line.addFault(6, static_cast<sim::FaultKind>(fault));
    WindowRig rig;
    frmMain& window = rig.window;
    chooseModule(window, line, 6);
    QList<bool> anyEnabled;
    QTimer probe;
    connect(&probe, &QTimer::timeout, [&] {
        const QList<QWidget*> controls = commandControls(window);
        anyEnabled << std::any_of(controls.begin(), controls.end(), [](QWidget* w) { return w->isEnabled(); });
    });
    probe.start(20);
    QTest::mouseClick(button(window, "cmdModuleInfoReceive"), Qt::LeftButton);
    probe.stop();
    QVERIFY(anyEnabled.size() >= 3);
    QVERIFY(!anyEnabled.contains(true));
    for (QWidget* control : commandControls(window))
        QVERIFY2(control->isEnabled(), qPrintable(control->objectName()));
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), message.isEmpty() ? QStringList() : QStringList{message});
}

void OperationFramesTest::anEmptySearchTurnsTheFramesOff()
{
    SimLine line({{40, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    frmMain& window = rig.window;
    QTest::mouseClick(button(window, "cmdSearch"), Qt::LeftButton);
    for (const char* frame : {"Frame1", "Frame2", "Frame3"})
        QVERIFY2(!child<QWidget>(window, QLatin1String(frame))->isEnabled(), frame);
    for (const char* entry : {"MnuOperate_Read", "MnuOperate_Send", "MnuOperate_Balance"})
        QVERIFY2(!child<QAction>(window, QLatin1String(entry))->isEnabled(), entry);
    QVERIFY(child<QAction>(window, QStringLiteral("MnuOperate_Search"))->isEnabled());
}

void OperationFramesTest::aFailedOpenIsToldAndLeavesTheFramesAsTheOriginalDid_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("read, English") << kEnglish << "cmdModuleInfoReceive" << "Error" << "Open COM port fail.";
    QTest::newRow("group send, English") << kEnglish << "cmdNoOperateSend[2]" << "Error" << "Open COM port fail.";
    QTest::newRow("balance, English") << kEnglish << "cmdBalance" << "Module setup" << "Open COM port fail.";
    QTest::newRow("read, Chinese") << kChinese << "cmdReceive[0]" << "模块参数设置" << "打开串口失败。";
    QTest::newRow("balance, Chinese") << kChinese << "cmdBalance" << "模块参数设置" << "打开串口失败。";
}

void OperationFramesTest::aFailedOpenIsToldAndLeavesTheFramesAsTheOriginalDid()
{
    QFETCH(int, languageMode);
    QFETCH(QString, command);
    QFETCH(QString, title);
    QFETCH(QString, text);
    WindowRig rig(languageMode);
    // A port number that no listed port has.
    rig.window.state().current().portNumber = 99;
    QTest::mouseClick(child<QPushButton>(rig.window, command), Qt::LeftButton);
    QVERIFY2(rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(rig.dialogs.messages.first().first, title);
    QCOMPARE(rig.dialogs.messages.first().second, text);
    QVERIFY(child<QWidget>(rig.window, "Frame1")->isEnabled());
    QVERIFY(child<QWidget>(rig.window, "Frame2")->isEnabled());
    QVERIFY(!child<QWidget>(rig.window, "Frame3")->isEnabled());
    QVERIFY(child<QWidget>(rig.window, "TabStrip1")->isEnabled());
    // Every command is unlocked again; those in Frame3 stay greyed with it.
    auto* frame3 = child<QWidget>(rig.window, "Frame3");
    for (QWidget* control : commandControls(rig.window))
        QVERIFY2(control->isEnabled() != frame3->isAncestorOf(control), qPrintable(control->objectName()));
    // The request was shown before the port was tried.
    if (command == QStringLiteral("cmdModuleInfoReceive"))
        QCOMPARE(child<QLabel>(rig.window, "lblModuleString")->text(), QStringLiteral("AA  AA  03  00  11  00  11  "));
}

void OperationFramesTest::cancelOnOnlyOneModuleSendsNothing()
{
    SimLine line({{2, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    chooseModule(rig.window, line, 2);
    rig.dialogs.answer = false;
    QTest::mouseClick(button(rig.window, "cmdFrame3Send"), Qt::LeftButton);
    QCOMPARE(rig.dialogs.questions.size(), 1);
    QCOMPARE(rig.dialogs.questions.first().first, QStringLiteral("Module Setup"));
    QCOMPARE(rig.dialogs.questions.first().second, QStringLiteral("Only one module."));
    QCOMPARE(child<QLabel>(rig.window, "lblModuleString")->text(), QString());
    rig.dialogs.answer = true;
    QTest::mouseClick(button(rig.window, "cmdFrame3Send"), Qt::LeftButton);
    // The write was answered, so the line has taken all that came before it:
    // the cancelled click sent nothing.
    QCOMPARE(line.requests().size(), 1);
    QCOMPARE(line.requests().first().first(6), QByteArray::fromHex("AAAA33FF1200"));
}

void OperationFramesTest::twoClicksOnCmdShowRestoreBothGridsAndTheCaption()
{
    WindowRig rig(kEnglish);
    auto* show = button(rig.window, "cmdShow");
    auto* channels = child<QWidget>(rig.window, "MSHGridOperate");
    auto* coefficients = child<QWidget>(rig.window, "MSHGridCalibration");
    QVERIFY(channels->isVisible());
    QVERIFY(!coefficients->isVisible());
    QCOMPARE(show->text(), QStringLiteral("显示校正系数"));
    QTest::mouseClick(show, Qt::LeftButton);
    QVERIFY(!channels->isVisible());
    QVERIFY(coefficients->isVisible());
    QCOMPARE(coefficients->geometry(), channels->geometry());  // the same place
    QCOMPARE(show->text(), QStringLiteral("隐藏校正系数"));
    QTest::mouseClick(show, Qt::LeftButton);
    QVERIFY(channels->isVisible());
    QVERIFY(!coefficients->isVisible());
    QCOMPARE(show->text(), QStringLiteral("显示校正系数"));
}

void OperationFramesTest::theGridsShowWhatAWholeReadBrought_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<int>("modelCode");
    QTest::newRow("TM-B8, English") << kEnglish << 3;
    QTest::newRow("TM-B8, Chinese") << kChinese << 3;
    QTest::newRow("TM-C16, Chinese") << kChinese << 2;
    QTest::newRow("TM-A4, English") << kEnglish << 0;
}

void OperationFramesTest::theGridsShowWhatAWholeReadBrought()
{
    QFETCH(int, languageMode);
    QFETCH(int, modelCode);
    SimLine line({{7, modelCode}});
    WindowRig rig(languageMode);
    chooseModule(rig.window, line, 7);
    QTest::mouseClick(button(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    const ModuleRecord& record = rig.window.state().current();
    VELMOR_VERIFY_SAME(wholeReadDifference(record, line.memory(7)));
    const Language language = languageOf(languageMode);
    const auto shows = [&](const char* name) { return child<CellGrid>(rig.window, name)->cellModel()->cells(); };
    QCOMPARE(shows("MSHGridOperate"), channelGridCells(record, language, -1));
    QCOMPARE(shows("MSHGridCalibration"), calibrationGridCells(record, language));
    QCOMPARE(shows("MSHGridNoOperate"), adjustGridCells(record, language));
    QCOMPARE(shows("MSHGridOperate").rows.size(), record.channelCount);
    // The grey reference columns, and the title that explains them, only
    // on the TM-B models.
    QCOMPARE(shows("MSHGridOperate").headings.size(), modelCode == 3 ? 17 : 11);
    QCOMPARE(child<OperationPanel>(rig.window, "Frame1")->title(), channelFrameTitle(modelCode, language));
    if (modelCode == 3)
        QCOMPARE(child<OperationPanel>(rig.window, "Frame1")->title(),
                 language == Language::Chinese
                     ? QStringLiteral("参数设置 - 灰色区域的数据为参考值，提供量程等参数与放大倍数的关系，不保存在模块中。")
                     : QStringLiteral("Channel setup"));
}

QTEST_MAIN(OperationFramesTest)
#include "operation_frames_test.moc"
