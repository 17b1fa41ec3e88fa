// The status bar: which line and address a search is asking, and after an
// operation what was done, how many frames went out and how long it took.

#include "model/models.h"
#include "ui/operator_settings.h"
#include "window_rig.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

class StatusBarTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void aSearchSaysWhatItAsksThenWhatItDid();
    void aReadSaysWhatItDidWithItsFramesAndTime_data();
    void aReadSaysWhatItDidWithItsFramesAndTime();
    void aNoticeOfTheFlowIsNotCoveredBySummary();
};

void StatusBarTest::init() { OperatorSettings().clear(); }

void StatusBarTest::aSearchSaysWhatItAsksThenWhatItDid()
{
    SimLine line({{2, kTmA4}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    QSignalSpy shown(rig.window.statusBar(), &QStatusBar::messageChanged);
    line.clearFrames();
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdSearch"), Qt::LeftButton);
    QStringList said;
    for (const QList<QVariant>& message : shown)
        said << message.first().toString();
    QVERIFY2(said.contains(QStringLiteral("SIM1: asking address 0 (1 of 17)")), qPrintable(said.join(QLatin1Char('|'))));
    QVERIFY(said.contains(QStringLiteral("SIM1: asking address 16 (17 of 17)")));
    // The requests the line heard are the frames the summary counts.
    const QString last = rig.window.statusBar()->currentMessage();
    QCOMPARE(last.section(QLatin1Char(':'), 0, 0), QStringLiteral("Searched 1 lines"));
    QVERIFY2(QRegularExpression(QStringLiteral("^Searched 1 lines: %1 frames, \\d+\\.\\d\\d s$").arg(line.requests().size()))
                 .match(last).hasMatch(),
             qPrintable(last));
}

void StatusBarTest::aReadSaysWhatItDidWithItsFramesAndTime_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("done");
    QTest::newRow("English") << kEnglish << "Read everything of 1 TM-C16 on SIM1 at 5: %1 frames, ";
    QTest::newRow("Chinese") << kChinese << "读取了SIM1 地址 5 上的 1 TM-C16的全部：%1 帧，";
}

void StatusBarTest::aReadSaysWhatItDidWithItsFramesAndTime()
{
    QFETCH(int, languageMode);
    QFETCH(QString, done);
    SimLine line({{5, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(languageMode);
    chooseModule(rig.window, line, 5);
    line.clearFrames();
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    const QString last = rig.window.statusBar()->currentMessage();
    QVERIFY(line.requests().size() > 10);
    QVERIFY2(last.startsWith(done.arg(line.requests().size())), qPrintable(last));
    QVERIFY2(QRegularExpression(QStringLiteral("\\d+\\.\\d\\d (s|秒)$")).match(last).hasMatch(), qPrintable(last));
}

void StatusBarTest::aNoticeOfTheFlowIsNotCoveredBySummary()
{
    SimLine line({{5, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    chooseModule(rig.window, line, 5);
    // Three channel groups go, then the line goes quiet: the write stops partway.
    line.addFault(5, sim::FaultKind::Silence, 3);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame1Send"), Qt::LeftButton);
    const QString last = rig.window.statusBar()->currentMessage();
    QVERIFY2(!last.isEmpty() && !last.startsWith(QStringLiteral("Sent every channel")), qPrintable(last));
}

QTEST_MAIN(StatusBarTest)
#include "status_bar_test.moc"
