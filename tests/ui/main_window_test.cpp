// The main window against simulated lines on pseudo-terminals: the real
// widgets clicked as an operator would, the message boxes answered through
// the operator-dialog interface.

#include "texts/locale_language.h"
#include "ui/operation_panels.h"
#include "ui/port_search_bar.h"
#include "window_rig.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <cmath>

using namespace velmor;
using namespace velmor::testing;

namespace {

QAction* action(QWidget& window, const char* name)
{
    return child<QAction>(window, name);
}


}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void searchOfTwoLinesGivesOneTabPerModuleInOrder();
    void emptySearchReportsNoModule();
    void theWindowIsLockedWhileTheSearchRuns();
    void aModuleTabMakesItsModuleCurrent();
    void captionsFollowTheLanguage_data();
    void captionsFollowTheLanguage();
    void portChooserStartsOnTheFirstPort_data();
    void portChooserStartsOnTheFirstPort();
    void theFirstPortIsTheCurrentModulesAtStart();
    void portChooserFollowsPortsThatComeAndGo();
    void portsWaitWhileAFlowRuns();
    void everyCommandIsReachableByKeyboard_data();
    void everyCommandIsReachableByKeyboard();
    void widthsFollowTheWindowInTwips_data();
    void widthsFollowTheWindowInTwips();
};

void MainWindowTest::searchOfTwoLinesGivesOneTabPerModuleInOrder()
{
    SimLine first({{2, 2}, {5, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({{1, 3}}, Pacing::Fast, QStringLiteral("SIM2"));
    WindowRig rig(kEnglish);
    frmMain& window = rig.window;
    VELMOR_COMPARE_SAID(rig.dialogs.texts());

    QTest::mouseClick(child<QPushButton>(window, "cmdSearch"), Qt::LeftButton);
    auto* tabs = child<QTabBar>(window, "TabStripCom");
    QCOMPARE(moduleTabTexts(window), (QStringList{QStringLiteral("1 TM-C16"), QStringLiteral("2 TM-A4"), QStringLiteral("3 TM-B8")}));
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("Found 3 modules."));
    QCOMPARE(rig.dialogs.messages.last().first, QStringLiteral("Module Setup"));
    // The first module is current, and its address shows.
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(window.state().currentModule, 0);
    QCOMPARE(child<QComboBox>(window, "cmbModuleIndex")->currentText(), QStringLiteral("2"));
    QCOMPARE(child<QProgressBar>(window, "ProgressBarModule")->value(), 0);
    // Each module was read wholly: the B8's eight channels came in.
    VELMOR_VERIFY_SAME(wholeReadDifference(window.state().table[2], second.module(1).memory()));
    // A tab shows its module's own line and address in the choosers.
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
    QCOMPARE(child<QComboBox>(window, "cmbComPort")->currentText(), QStringLiteral("SIM2"));
    QCOMPARE(child<QComboBox>(window, "cmbModuleIndex")->currentText(), QStringLiteral("1"));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(child<QComboBox>(window, "cmbComPort")->currentText(), QStringLiteral("SIM1"));
    QCOMPARE(child<QComboBox>(window, "cmbModuleIndex")->currentText(), QStringLiteral("5"));
}

void MainWindowTest::emptySearchReportsNoModule()
{
    SimLine line({{40, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kChinese);
    frmMain& window = rig.window;
    action(window, "MnuOperate_Search")->trigger();
    QCOMPARE(child<QTabBar>(window, "TabStripCom")->count(), 0);
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("没有发现模块。"));
    QCOMPARE(rig.dialogs.messages.last().first, QStringLiteral("模块参数设置"));
}

void MainWindowTest::theWindowIsLockedWhileTheSearchRuns()
{
    SimLine line({{3, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kEnglish);
    frmMain& window = rig.window;
    auto* search = child<QPushButton>(window, "cmdSearch");
    QList<bool> seenEnabled;
    QStringList seenCaptions;
    // Looked at from inside the search's own waits.
    QTimer probe;
    connect(&probe, &QTimer::timeout, [&] {
        seenEnabled << (child<QComboBox>(window, "cmbComPort")->isEnabled() || child<QComboBox>(window, "cmbModuleIndex")->isEnabled()
                        || action(window, "MnuOperate_Search")->isEnabled()
                        || action(window, "MnuOperate_SearchAll")->isEnabled()
                        || child<QTabBar>(window, "TabStripCom")->isEnabled());
        // The search button stays, as the way to stop the search.
        seenCaptions << (search->isEnabled() ? search->text() : QString());
        // An impatient operator presses F5 again: the entry is locked.
        if (seenEnabled.size() == 2)
            action(window, "MnuOperate_Search")->trigger();
    });
    probe.start(50);
    QTest::mouseClick(search, Qt::LeftButton);
    probe.stop();
    QVERIFY(seenEnabled.size() > 5);
    QVERIFY(!seenEnabled.contains(true));
    QCOMPARE(seenCaptions.count(QStringLiteral("&Stop")), seenCaptions.size());
    QVERIFY(search->isEnabled());
    QCOMPARE(search->text(), QStringLiteral("&Search"));
    QVERIFY(action(window, "MnuOperate_Search")->isEnabled());
    // The locked entry started nothing: one search, one report.
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Found 1 modules.")});
}

void MainWindowTest::aModuleTabMakesItsModuleCurrent()
{
    SimLine line({{2, 2}, {5, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kEnglish);
    frmMain& window = rig.window;
    QTest::mouseClick(child<QPushButton>(window, "cmdSearch"), Qt::LeftButton);
    auto* tabs = child<QTabBar>(window, "TabStripCom");
    QCOMPARE(tabs->count(), 2);
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(window.state().currentModule, 1);
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(child<QComboBox>(window, "cmbModuleIndex")->currentText(), QStringLiteral("5"));
}

void MainWindowTest::captionsFollowTheLanguage_data()
{
    QTest::addColumn<int>("localeId");
    QTest::addColumn<bool>("chinese");
    QTest::newRow("2052 Chinese, PRC") << 2052 << true;
    QTest::newRow("1033 English, US") << 1033 << false;
    QTest::newRow("1028 Chinese, Taiwan: English, deliberately") << 1028 << false;
    QTest::newRow("1041 Japanese, not listed: Chinese") << 1041 << true;
}

void MainWindowTest::captionsFollowTheLanguage()
{
    QFETCH(int, localeId);
    QFETCH(bool, chinese);
    RecordingDialogs dialogs;
    frmMain window(languageModeForLocaleId(localeId), &dialogs);
    const auto either = [&](const char* zh, const char* en) { return QString::fromUtf8(chinese ? zh : en); };
    QCOMPARE(child<QPushButton>(window, "cmdSearch")->text(), either("搜索模块(&S)", "&Search"));
    QCOMPARE(child<QMenu>(window, "MnuFile")->title(), either("文件(&F)", "&File"));
    QCOMPARE(child<QMenu>(window, "MnuOperate")->title(), either("操作(&O)", "&Operate"));
    QCOMPARE(child<QMenu>(window, "MnuHelp")->title(), either("帮助(&H)", "&Help"));
    QCOMPARE(action(window, "MnuOperate_Search")->text(), either("搜索(&S)", "&Search"));
    QCOMPARE(action(window, "MnuOperate_Send")->text(), either("发送(&T)", "Send(&T)"));
    QCOMPARE(action(window, "MnuHelp_Content")->text(), either("内容(&C)", "&Content"));
    QCOMPARE(action(window, "MnuHelp_About")->text(), either("关于...(&A)", "&About..."));
    QCOMPARE(child<QPushButton>(window, "cmdBalance")->text(), either("桥路平衡", "Balance"));
    QCOMPARE(child<QPushButton>(window, "cmdReceive[1]")->text(), either("读取5-8通道", "Read"));
    QCOMPARE(child<OperationPanel>(window, "Frame3")->title(), either("模块信息", "Module Information"));
    QCOMPARE(child<QPushButton>(window, "cmdShow")->text(), QStringLiteral("显示校正系数"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Velmor"));
}

void MainWindowTest::portChooserStartsOnTheFirstPort_data()
{
    QTest::addColumn<QList<PortEntry>>("ports");
    const PortEntry system{QStringLiteral("ttyS0"), 1, QStringLiteral("/dev/ttyS0")};
    const PortEntry published{QStringLiteral("SIM1"), 2, QStringLiteral("/tmp/velmor-ports/SIM1")};
    const PortEntry network{QStringLiteral("tcp://127.0.0.1:7000"), 3, QStringLiteral("tcp://127.0.0.1:7000")};
    QTest::newRow("system") << QList<PortEntry>{system};
    QTest::newRow("published") << QList<PortEntry>{PortEntry{published.name, 1, published.device}};
    QTest::newRow("network") << QList<PortEntry>{PortEntry{network.name, 1, network.device}};
    QTest::newRow("system, published") << QList<PortEntry>{system, published};
    QTest::newRow("published, network") << QList<PortEntry>{PortEntry{published.name, 1, published.device},
                                                            PortEntry{network.name, 2, network.device}};
    QTest::newRow("all three") << QList<PortEntry>{system, published, network};
}

// Started empty, the chooser shows the first port once there are ports, never
// the separator before "Add network port..." nor that entry.
void MainWindowTest::portChooserStartsOnTheFirstPort()
{
    QFETCH(QList<PortEntry>, ports);
    PortSearchBar bar(Language::English);
    bar.setPorts(ports);
    auto* chooser = bar.findChild<QComboBox*>(QStringLiteral("cmbComPort"));
    QCOMPARE(chooser->currentIndex(), 0);
    QCOMPARE(chooser->currentText(), ports.first().name);
    QCOMPARE(bar.selectedPortNumber(), ports.first().number);
    // The same list again keeps the port chosen.
    bar.setPorts(ports);
    QCOMPARE(chooser->currentText(), ports.first().name);
}

// No port to pick first: the first listed is the current module's, so that a
// read goes out at once.
void MainWindowTest::theFirstPortIsTheCurrentModulesAtStart()
{
    SimLine line({sim::ModuleAt{0, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kEnglish);
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    QCOMPARE(ports->currentText(), QStringLiteral("SIM1"));
    QCOMPARE(int(rig.window.state().current().portNumber), ports->currentData().toInt());
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdModuleInfoReceive"), Qt::LeftButton);
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    QCOMPARE(rig.window.state().current().moduleNumber, line.memory(0).moduleNumber);
}

void MainWindowTest::portChooserFollowsPortsThatComeAndGo()
{
    SimLine line({{4, 0}}, Pacing::Fast, QStringLiteral("SIM5"));
    WindowRig rig(kEnglish);
    frmMain& window = rig.window;
    auto* ports = child<QComboBox>(window, "cmbComPort");
    ports->setCurrentIndex(ports->findText(QStringLiteral("SIM5")));
    QTest::mouseClick(child<QPushButton>(window, "cmdSearch"), Qt::LeftButton);
    QCOMPARE(window.state().moduleCount, 1);
    {
        // A line that sorts first takes SIM5's place, and so its number.
        SimLine newcomer({{1, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
        QTRY_VERIFY_WITH_TIMEOUT(ports->findText(QStringLiteral("SIM1")) >= 0, 2000);
        QCOMPARE(ports->currentText(), QStringLiteral("SIM5"));
        // The module found on SIM5 still talks to SIM5.
        QCOMPARE(int(window.state().table[0].portNumber), ports->itemData(ports->findText(QStringLiteral("SIM5"))).toInt());
    }
    QTRY_VERIFY_WITH_TIMEOUT(ports->findText(QStringLiteral("SIM1")) < 0, 2000);
    QCOMPARE(ports->currentText(), QStringLiteral("SIM5"));
    QCOMPARE(int(window.state().table[0].portNumber), ports->currentData().toInt());
}

void MainWindowTest::portsWaitWhileAFlowRuns()
{
    SimLine line({{40, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kEnglish);
    frmMain& window = rig.window;
    auto* ports = child<QComboBox>(window, "cmbComPort");
    const int before = ports->count();
    std::unique_ptr<SimLine> newcomer;
    QList<int> countsDuringSearch;
    // 17 silent addresses take four seconds; the line comes after 0.2 s.
    QTimer::singleShot(200, [&] { newcomer = std::make_unique<SimLine>(QList<sim::ModuleAt>{{1, 0}}, Pacing::Fast, QStringLiteral("SIM2")); });
    QTimer::singleShot(2500, [&] { countsDuringSearch << ports->count(); });
    QTest::mouseClick(child<QPushButton>(window, "cmdSearch"), Qt::LeftButton);
    QCOMPARE(countsDuringSearch, QList<int>{before});
    QCOMPARE(ports->count(), before + 1);  // applied as soon as the search was over
}

void MainWindowTest::widthsFollowTheWindowInTwips_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<int>("width");  // asked for, in pixels
    QTest::newRow("narrower than the minimum, English") << kEnglish << 300;
    QTest::newRow("narrower than the minimum, Chinese") << kChinese << 300;
    QTest::newRow("wide") << kEnglish << 1100;
    QTest::newRow("wider") << kChinese << 1500;
}

void MainWindowTest::widthsFollowTheWindowInTwips()
{
    QFETCH(int, languageMode);
    QFETCH(int, width);
    WindowRig rig(languageMode);
    frmMain& window = rig.window;
    const auto px = [&](int twips) { return int(std::lround(twips * window.logicalDpiX() / 1440.0)); };
    window.resize(width, 700);
    QTRY_COMPARE(window.width(), std::max(width, px(8000)));
    const int inner = window.centralWidget()->width();
    QCOMPARE(inner, window.width());
    QCOMPARE(child<QWidget>(window, "Frame1")->width(), inner - px(455));
    QCOMPARE(child<QWidget>(window, "TabStripCom")->width(), inner - px(210));
    QCOMPARE(child<QWidget>(window, "Frame1")->mapTo(&window, QPoint(0, 0)).x(), px(240));
}

void MainWindowTest::everyCommandIsReachableByKeyboard_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::newRow("English") << kEnglish;
    QTest::newRow("Chinese") << kChinese;
}

void MainWindowTest::everyCommandIsReachableByKeyboard()
{
    QFETCH(int, languageMode);
    WindowRig rig(languageMode);
    frmMain& window = rig.window;
    // Every menu and menu entry has an access key.
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->isSeparator() || action->text().isEmpty())
            continue;
        QVERIFY2(action->text().contains(QRegularExpression(QStringLiteral("&[^&]"))), qPrintable(action->text()));
    }
    // Tab reaches every button, list, box, grid and tab strip on each page.
    for (int page = 0; page < 3; ++page) {
        window.TabStrip1_Click(page);
        QApplication::processEvents();
        QSet<QWidget*> reached;
        QWidget* start = window.nextInFocusChain();
        for (QWidget* w = start; w && !reached.contains(w); w = w->nextInFocusChain())
            if (w->isVisible() && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus))
                reached.insert(w);
        for (QWidget* w : window.findChildren<QWidget*>()) {
            const bool control = qobject_cast<QAbstractButton*>(w) || qobject_cast<QComboBox*>(w) ||
                                 qobject_cast<QAbstractItemView*>(w) || qobject_cast<QTabBar*>(w) ||
                                 (qobject_cast<QLineEdit*>(w) && !static_cast<QLineEdit*>(w)->isReadOnly() &&
                                  !qobject_cast<QComboBox*>(w->parentWidget()));
            // Our controls carry names; the views' own scroll and corner
            // buttons do not, and are reached through their view.
            const bool ours = !w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_"));
            if (control && ours && w->isVisible() && w->isEnabled())
                QVERIFY2(reached.contains(w), qPrintable(QStringLiteral("page %1: %2").arg(page + 1).arg(w->objectName())));
        }
    }
}

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
