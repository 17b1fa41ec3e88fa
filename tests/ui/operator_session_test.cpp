// A whole operator session through the window against two paced simulators
// in processes of their own: search, module tabs, read, send, Save, Open,
// Exit. At the end the modules hold what the window holds.
#include "config/image_layout.h"
#include "sim/state_file.h"
#include "support/sim_process.h"
#include "window_rig.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

void clickTab(frmMain& window, const char* strip, int index)
{
    auto* tabs = child<QTabBar>(window, strip);
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
}

void pick(frmMain& window, const char* entry) { child<QAction>(window, entry)->trigger(); }

QList<ModuleRecord> modulesIn(const QString& state)
{
    QList<ModuleRecord> modules;
    QString error;
    if (!sim::loadState(state, modules, &error))
        qWarning("%s", qPrintable(error));
    return modules;
}

}  // namespace

class OperatorSessionTest : public QObject {
    Q_OBJECT

private slots:
    void aWholeSessionLeavesModulesAndFileAlike();
};

void OperatorSessionTest::aWholeSessionLeavesModulesAndFileAlike()
{
    QTemporaryDir states;
    const QString state1 = states.filePath(QStringLiteral("sim1.json"));
    const QString state2 = states.filePath(QStringLiteral("sim2.json"));
    SimProcess sim1;
    SimProcess sim2;
    sim1.usePortsDir(simPortsDir());
    sim2.usePortsDir(simPortsDir());
    QVERIFY2(sim1.start({"--name", "SIM1", "--module", "1:TM-C16", "--module", "4:TM-A4", "--state", state1}),
             qPrintable(sim1.error()));
    QVERIFY2(sim2.start({"--name", "SIM2", "--module", "2:TM-B8", "--state", state2}), qPrintable(sim2.error()));

    auto rig = std::make_unique<WindowRig>(kEnglish);
    frmMain& window = rig->window;
    QTest::mouseClick(child<QPushButton>(window, "cmdSearch"), Qt::LeftButton);
    QCOMPARE(rig->dialogs.texts().last(), QStringLiteral("Found 3 modules."));
    QCOMPARE(child<QTabBar>(window, "TabStripCom")->tabText(2), QStringLiteral("3 TM-B8"));

    // The C16 sent back as read, the A4 looked at, then the B8, which is
    // alone on its line and takes a new module number.
    pick(window, "MnuOperate_Send");
    clickTab(window, "TabStripCom", 1);
    QCOMPARE(window.state().current().modelCode, quint8(0));
    clickTab(window, "TabStripCom", 2);
    QCOMPARE(window.state().current().busAddress, 2);
    pick(window, "MnuOperate_Read");
    clickTab(window, "TabStrip1", 2);
    auto* number = child<QLineEdit>(window, "txtModuleNumber");
    number->selectAll();
    QTest::keyClicks(number, "4321");
    QCOMPARE(window.state().current().moduleNumber, 4321);
    QTest::mouseClick(child<QPushButton>(window, "cmdFrame3Send"), Qt::LeftButton);
    pick(window, "MnuOperate_Send");
    VELMOR_COMPARE_SAID(rig->dialogs.texts(), {QStringLiteral("Found 3 modules.")});  // only the search's report

    pick(window, "MnuFile_Save");
    const QString file = window.configPath();
    QCOMPARE(QFileInfo(file).size(), qint64(kStoredBytes));
    const ModuleRecord saved = window.state().current();
    // Open the file again: the record comes back as it was saved, with the
    // port of this machine.
    rig->files.openAnswer = file;
    window.state().current().channels[0].gain = 99;
    pick(window, "MnuFile_Open");
    QCOMPARE(window.state().current().channels[0].gain, saved.channels[0].gain);
    VELMOR_VERIFY_SAME(wholeReadDifference(window.state().current(), saved));
    const QList<ModuleRecord> table(window.state().table.begin(), window.state().table.begin() + 3);
    pick(window, "MnuFile_Exit");
    QVERIFY(!window.isVisible());
    QCOMPARE(QFileInfo(file).size(), qint64(kStoredBytes));
    VELMOR_COMPARE_SAID(rig->dialogs.texts(), {QStringLiteral("Found 3 modules.")});

    QVERIFY(sim1.stop());
    QVERIFY(sim2.stop());
    const QList<ModuleRecord> line1 = modulesIn(state1);
    const QList<ModuleRecord> line2 = modulesIn(state2);
    QCOMPARE(line1.size(), 2);
    QCOMPARE(line2.size(), 1);
    VELMOR_VERIFY_SAME(wholeReadDifference(table[0], line1[0]));
    VELMOR_VERIFY_SAME(wholeReadDifference(table[1], line1[1]));
    VELMOR_VERIFY_SAME(wholeReadDifference(table[2], line2[0]));
    QCOMPARE(line2[0].moduleNumber, 4321);
}

QTEST_MAIN(OperatorSessionTest)
#include "operator_session_test.moc"
