// The window keeps what its flows did and the files it used in the
// history, after each flow; a store it cannot reach is told once in the
// status bar and never stops a command.
#include "grid_hands.h"
#include "history_reading.h"
#include "model/models.h"
#include "support/file_bytes.h"

#include <QFile>
#include <QSignalSpy>
#include <QStatusBar>

using namespace velmor;
using namespace velmor::testing;

class WindowHistoryTest : public QObject {
    Q_OBJECT
private slots:
    void flowsAndFilesAreKept();
    void aFailedFlowIsAnEventAndASearchKeepsItsReads();
    void anUnreachableStoreIsToldOnceInTheStatusBar();
};

void WindowHistoryTest::flowsAndFilesAreKept()
{
    SimLine line({{1, kTmB8}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    const QString store = rig.folder.filePath(QStringLiteral("history.sqlite"));
    rig.window.useHistory(*historyTargetNamed(store));
    chooseModule(rig.window, line, 1);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdSend[0]"), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdReceive[1]"), Qt::LeftButton);  // not a whole read
    rig.files.saveAnswer = rig.folder.filePath(QStringLiteral("bench.cfg"));
    rig.window.MnuFile_SaveAs_Click();
    rig.window.openConfigFile(rig.files.saveAnswer);
    rig.window.settleHistory();
    QCOMPARE(kindsOf(entriesIn(store)), (QStringList{"read", "write", "save", "open"}));

    HistoryStore opened;
    QString error;
    QVERIFY(opened.open(*historyTargetNamed(store), &error));
    const QList<HistoryEntry> entries = opened.find({}, &error);
    const HistoryEntry& read = entries.last();
    QCOMPARE(read.line, QStringLiteral("SIM1"));
    QCOMPARE(read.address, 1);
    QCOMPARE(read.model, QStringLiteral("TM-B8"));
    QCOMPARE(read.moduleNumber, line.memory(1).moduleNumber);
    QCOMPARE(entries.first().detail, rig.files.saveAnswer);  // the open
    QCOMPARE(entries.first().image, fileBytes(rig.files.saveAnswer));
}

void WindowHistoryTest::aFailedFlowIsAnEventAndASearchKeepsItsReads()
{
    SimLine line({{2, kTmC16}, {5, kTmA4}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    const QString store = rig.folder.filePath(QStringLiteral("history.sqlite"));
    rig.window.useHistory(*historyTargetNamed(store));
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdSearch"), Qt::LeftButton);
    rig.window.settleHistory();
    QCOMPARE(kindsOf(entriesIn(store)), (QStringList{"read", "read", "search"}));
    chooseModule(rig.window, line, 9);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    rig.window.settleHistory();
    HistoryStore opened;
    QString error;
    QVERIFY(opened.open(*historyTargetNamed(store), &error));
    const HistoryEntry failed = opened.find({}, &error).first();
    QCOMPARE(failed.kind, EntryKind::Failure);
    QCOMPARE(failed.outcome, QStringLiteral("no reply"));
    QCOMPARE(failed.address, 9);
    QVERIFY2(failed.detail.startsWith(QStringLiteral("Read everything of")), qPrintable(failed.detail));
}

void WindowHistoryTest::anUnreachableStoreIsToldOnceInTheStatusBar()
{
    SimLine line({{1, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    qputenv("XDG_DATA_HOME", rig.folder.path().toLocal8Bit());
    const QString blocker = rig.folder.filePath(QStringLiteral("away"));
    {
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    rig.window.useHistory(*historyTargetNamed(blocker + QStringLiteral("/history.sqlite")));
    chooseModule(rig.window, line, 1);
    QSignalSpy said(rig.window.statusBar(), &QStatusBar::messageChanged);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    // What the history's thread tells comes through the event loop.
    rig.window.settleHistory();
    QCoreApplication::sendPostedEvents();
    int told = 0;
    for (const QList<QVariant>& message : said)
        told += message.first().toString().startsWith(QStringLiteral("The history store cannot be written ("));
    QCOMPARE(told, 1);
    QCOMPARE(line.memory(1).moduleNumber, rig.window.state().current().moduleNumber);  // the reads went as asked
    qunsetenv("XDG_DATA_HOME");
}

QTEST_MAIN(WindowHistoryTest)
#include "window_history_test.moc"
