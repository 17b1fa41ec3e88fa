// File > Open, Save, Save As and Exit of the main window, and closing it: the
// current module's record to and from configuration files on disk.

#include "config/config_file.h"
#include "config/config_image.h"
#include "sim/sim_values.h"
#include "support/file_bytes.h"
#include "window_rig.h"

#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

QByteArray storedImage(const ModuleRecord& record) { return configImage(record).first(kStoredBytes); }

void trigger(frmMain& window, const char* entry) { child<QAction>(window, entry)->trigger(); }

}  // namespace

class FileMenuTest : public QObject {
    Q_OBJECT
private slots:
    void saveWritesTheCurrentModuleToTheDefaultFile();
    void openTakesTheFileButThePortSelectedNow();
    void openOfAFileThatCannotBeReadStillTakesThePort();
    void cancelChangesNothing();
    void saveAsWritesTheChosenFile();
    void closingTheWindowSavesAsExitDoes();
    void aFailedSaveOnExitIsToldAndTheWindowStillCloses();
    void closeDuringAFlowWaitsForItThenSaves();
};

void FileMenuTest::saveWritesTheCurrentModuleToTheDefaultFile()
{
    SimLine line({{5, 3}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    rig.window.state().current().busAddress = 5;
    rig.window.state().current().portNumber = static_cast<qint16>(child<QComboBox>(rig.window, "cmbComPort")->itemData(
        child<QComboBox>(rig.window, "cmbComPort")->findText(line.portName())).toInt());
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    trigger(rig.window, "MnuFile_Save");
    const QByteArray saved = fileBytes(rig.window.configPath());
    QCOMPARE(saved.size(), 8679);
    QCOMPARE(saved, storedImage(rig.window.state().current()));
    VELMOR_VERIFY_SAME(wholeReadDifference(rig.window.state().current(), line.module(5).memory()));
}

void FileMenuTest::openTakesTheFileButThePortSelectedNow()
{
    WindowRig rig;
    ModuleRecord fromElsewhere = sim::simulatedModule(7, 6, 3);
    fromElsewhere.portNumber = 42;
    const QString path = rig.folder.filePath(QStringLiteral("c8.cfg"));
    QVERIFY(saveConfigFile(path, fromElsewhere));
    rig.files.openAnswer = path;
    trigger(rig.window, "MnuFile_Open");

    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    ModuleRecord expected = fromElsewhere;
    expected.portNumber = static_cast<qint16>(ports->count() > 0 ? ports->itemData(0).toInt() : 42);
    QCOMPARE(ports->currentIndex(), ports->count() > 0 ? 0 : -1);
    QCOMPARE(storedImage(rig.window.state().current()), storedImage(expected));
    QCOMPARE(child<QComboBox>(rig.window, "cmbModuleIndex")->currentText(), QStringLiteral("7"));
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
}

void FileMenuTest::openOfAFileThatCannotBeReadStillTakesThePort()
{
    SimLine line({{1, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    rig.window.state().current().portNumber = 99;
    const QByteArray before = storedImage(rig.window.state().current());
    rig.files.openAnswer = rig.folder.filePath(QStringLiteral("missing.cfg"));
    trigger(rig.window, "MnuFile_Open");
    // No message, the record as it was, but the port is the first listed.
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    QCOMPARE(int(rig.window.state().current().portNumber), ports->itemData(0).toInt());
    ModuleRecord expected = rig.window.state().current();
    expected.portNumber = 99;
    QCOMPARE(storedImage(expected), before);
}

void FileMenuTest::cancelChangesNothing()
{
    WindowRig rig;
    const QByteArray before = storedImage(rig.window.state().current());
    trigger(rig.window, "MnuFile_Open");
    trigger(rig.window, "MnuFile_SaveAs");
    QCOMPARE(storedImage(rig.window.state().current()), before);
    QVERIFY(QDir(rig.folder.path()).isEmpty());
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
}

void FileMenuTest::saveAsWritesTheChosenFile()
{
    WindowRig rig;
    rig.files.saveAnswer = rig.folder.filePath(QStringLiteral("chosen.cfg"));
    trigger(rig.window, "MnuFile_SaveAs");
    QCOMPARE(fileBytes(rig.files.saveAnswer), storedImage(rig.window.state().current()));
    QVERIFY(!QFile::exists(rig.window.configPath()));
}

void FileMenuTest::closingTheWindowSavesAsExitDoes()
{
    WindowRig closed;
    QVERIFY(closed.window.close());
    WindowRig exited;
    trigger(exited.window, "MnuFile_Exit");
    QVERIFY(!exited.window.isVisible());
    for (WindowRig* rig : {&closed, &exited})
        QCOMPARE(fileBytes(rig->window.configPath()), storedImage(rig->window.state().current()));
}

void FileMenuTest::aFailedSaveOnExitIsToldAndTheWindowStillCloses()
{
    WindowRig rig;
    rig.window.setConfigPath(rig.folder.filePath(QStringLiteral("no/such/folder/TestConfig.cfg")));
    trigger(rig.window, "MnuFile_Exit");
    QVERIFY(!rig.window.isVisible());
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Open configure file fail!")});
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("Module Setup"));
}

void FileMenuTest::closeDuringAFlowWaitsForItThenSaves()
{
    SimLine line({{2, 2}}, Pacing::Paced, QStringLiteral("SIM1"));
    WindowRig rig;
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    rig.window.state().current().portNumber = static_cast<qint16>(ports->itemData(ports->findText(line.portName())).toInt());
    rig.window.state().current().busAddress = 2;
    bool closedDuringFlow = true;
    int requestsAtClose = 0;
    QTimer::singleShot(300, [&] {
        requestsAtClose = static_cast<int>(line.requests().size());
        rig.window.close();
        closedDuringFlow = !rig.window.isVisible();
    });
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    QVERIFY(requestsAtClose > 0);
    QVERIFY(!closedDuringFlow);
    QVERIFY(!rig.window.isVisible());
    // The exchange in flight at the close ran to its end and nothing went out
    // after it (its request may not have reached the line's log at the
    // moment of the close), then the window saved what it had read so far.
    QVERIFY(line.requests().size() <= requestsAtClose + 1);
    QVERIFY(line.requests().size() < 17);
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    QCOMPARE(fileBytes(rig.window.configPath()), storedImage(rig.window.state().current()));
}

QTEST_MAIN(FileMenuTest)
#include "file_menu_test.moc"
