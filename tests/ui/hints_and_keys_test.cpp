// Tool tips on every command button, list and column heading, in both
// languages; the platform's keys for Open, Save, Save As and Quit, and F5 for
// Search.

#include "config/config_file.h"
#include "model/models.h"
#include "sim/sim_values.h"
#include "ui/operator_settings.h"
#include "window_rig.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

// The headings' tool tips of a grid, column by column.
QStringList headingHints(const QTableView& grid)
{
    QStringList hints;
    for (int c = 0; c < grid.model()->columnCount(); ++c)
        hints << grid.model()->headerData(c, Qt::Horizontal, Qt::ToolTipRole).toString();
    return hints;
}

bool oneLine(const QString& text) { return !text.trimmed().isEmpty() && !text.contains(QLatin1Char('\n')); }

// Presses the first keys an entry is bound to, after checking that they are
// the platform's for its standard command, where the platform has any.
void press(frmMain& window, const char* entry, QKeySequence::StandardKey key)
{
    const QAction* action = child<QAction>(window, entry);
    QVERIFY(!action->shortcut().isEmpty());
    const QList<QKeySequence> platform = QKeySequence::keyBindings(key);
    if (!platform.isEmpty())
        QCOMPARE(action->shortcuts(), platform);
    QTest::keySequence(&window, action->shortcut());
}

}  // namespace

class HintsAndKeysTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void everyCommandButtonAndListHasAHint_data();
    void everyCommandButtonAndListHasAHint();
    void everyColumnHeadingHasAHint_data();
    void everyColumnHeadingHasAHint();
    void standardKeysOpenSaveSaveAsAndQuit();
    void f5Searches();
};

void HintsAndKeysTest::init() { OperatorSettings().clear(); }

void HintsAndKeysTest::everyCommandButtonAndListHasAHint_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("searchHint");
    QTest::newRow("English") << kEnglish << "Search the chosen line for modules (F5)";
    QTest::newRow("Chinese") << kChinese << "在所选线路上搜索模块（F5）";
}

void HintsAndKeysTest::everyCommandButtonAndListHasAHint()
{
    QFETCH(int, languageMode);
    QFETCH(QString, searchHint);
    WindowRig rig(languageMode);
    int controls = 0;
    for (const QPushButton* button : rig.window.findChildren<QPushButton*>()) {
        QVERIFY2(oneLine(button->toolTip()), qPrintable(button->objectName()));
        ++controls;
    }
    for (const QComboBox* list : rig.window.findChildren<QComboBox*>()) {
        QVERIFY2(oneLine(list->toolTip()), qPrintable(list->objectName()));
        ++controls;
    }
    QVERIFY(controls >= 30);
    QCOMPARE(child<QAbstractButton>(rig.window, "cmdSearch")->toolTip(), searchHint);
    // The group buttons share their kind's hint.
    QCOMPARE(child<QAbstractButton>(rig.window, "cmdReceive[3]")->toolTip(),
             child<QAbstractButton>(rig.window, "cmdReceive[0]")->toolTip());
}

void HintsAndKeysTest::everyColumnHeadingHasAHint_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<QString>("sshHint");
    QTest::newRow("English, TM-C16") << kEnglish << int(kTmC16) << "SSH: synchronous sample-and-hold";
    QTest::newRow("English, TM-B8 with reference columns") << kEnglish << int(kTmB8) << "SSH: synchronous sample-and-hold";
    QTest::newRow("Chinese, TM-B8 with reference columns") << kChinese << int(kTmB8) << "SSH：同步采样保持";
}

void HintsAndKeysTest::everyColumnHeadingHasAHint()
{
    QFETCH(int, languageMode);
    QFETCH(int, modelCode);
    QFETCH(QString, sshHint);
    WindowRig rig(languageMode);
    const QString path = rig.folder.filePath(QStringLiteral("module.cfg"));
    QVERIFY(saveConfigFile(path, sim::simulatedModule(3, modelCode, 2)));
    rig.window.openConfigFile(path);
    for (const char* name : {"MSHGridOperate", "MSHGridNoOperate", "MSHGridCalibration", "FrameLogTable"}) {
        const QStringList hints = headingHints(*child<QTableView>(rig.window, name));
        QVERIFY2(hints.size() >= 5, name);
        for (const QString& hint : hints)
            QVERIFY2(oneLine(hint), qPrintable(QStringLiteral("%1: %2").arg(QLatin1String(name), hints.join(QLatin1Char('|')))));
    }
    const QStringList channel = headingHints(*child<QTableView>(rig.window, "MSHGridOperate"));
    QCOMPARE(channel.size(), modelCode == kTmB8 ? 17 : 11);
    QCOMPARE(channel.at(7), sshHint);
}

void HintsAndKeysTest::standardKeysOpenSaveSaveAsAndQuit()
{
    WindowRig rig;
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    const QString opened = rig.folder.filePath(QStringLiteral("opened.cfg"));
    QVERIFY(saveConfigFile(opened, sim::simulatedModule(9, kTmA4, 4)));
    rig.files.openAnswer = opened;
    press(rig.window, "MnuFile_Open", QKeySequence::Open);
    QCOMPARE(rig.window.documentPath(), opened);
    QCOMPARE(rig.window.state().current().busAddress, 9);

    press(rig.window, "MnuFile_Save", QKeySequence::Save);
    QVERIFY(QFile::exists(rig.window.configPath()));

    const QString copy = rig.folder.filePath(QStringLiteral("copy.cfg"));
    rig.files.saveAnswer = copy;
    press(rig.window, "MnuFile_SaveAs", QKeySequence::SaveAs);
    QVERIFY(QFile::exists(copy));

    QVERIFY(rig.window.isVisible());
    press(rig.window, "MnuFile_Exit", QKeySequence::Quit);
    QTRY_VERIFY(!rig.window.isVisible());
}

void HintsAndKeysTest::f5Searches()
{
    SimLine line({{2, kTmA8}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    QTest::keyClick(&rig.window, Qt::Key_F5);
    auto* tabs = child<QTabBar>(rig.window, "TabStripCom");
    QCOMPARE(tabs->count(), 1);
    QCOMPARE(tabs->tabText(0), QStringLiteral("1 TM-A8"));
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("Found 1 modules."));
}

QTEST_MAIN(HintsAndKeysTest)
#include "hints_and_keys_test.moc"
