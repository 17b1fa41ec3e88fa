// velmor-sim as scripts see it: its help, its ready line, its published link,
// its log, and a clean end on SIGTERM, SIGINT or a vanished line.

#include "support/pty_peer.h"
#include "support/sim_process.h"

#include "protocol/replies.h"
#include "protocol/requests.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using velmor::testing::PtyPeer;
using velmor::testing::SimProcess;

class SimExecutableTest : public QObject {
    Q_OBJECT

private slots:
    void helpExplainsEveryOption();
    void readyLineAndLinkExistWhileRunningAndTheLinkGoesOnSigterm();
    void sigintEndsAsCleanly();
    void defaultModuleAnswersAndFramesAreLoggedToStandardError();
    void logOptionWritesTheFrameLogToAFile();
    void vanishingLineEndsTheProcessAndRemovesTheLink();
    void faultOptionReachesTheLine();
    void senselessOptionsAreRefused_data();
    void senselessOptionsAreRefused();
};

void SimExecutableTest::helpExplainsEveryOption()
{
    QProcess help;
    help.start(SimProcess::executable(), {QStringLiteral("--help")});
    QVERIFY(help.waitForFinished(5000));
    QCOMPARE(help.exitCode(), 0);
    const QString text = QString::fromLocal8Bit(help.readAllStandardOutput());
    for (const char* option : {"--help", "--name", "--module", "--seed", "--state", "--fast", "--turnaround",
                               "--balance-delay", "--fault", "--vanish-after", "--log", "--ports-dir"})
        QVERIFY2(text.contains(QLatin1String(option)), option);
    for (const char* kind : {"noise", "checksum", "echo", "truncate", "silence", "late", "split", "dropoff", "tail"})
        QVERIFY2(text.contains(QLatin1String(kind)), kind);
}

void SimExecutableTest::readyLineAndLinkExistWhileRunningAndTheLinkGoesOnSigterm()
{
    SimProcess sim;
    QVERIFY2(sim.start({QStringLiteral("--name"), QStringLiteral("BENCH2"), QStringLiteral("--fast")}),
             qPrintable(sim.error()));
    QCOMPARE(sim.portName(), QStringLiteral("BENCH2"));
    QVERIFY(sim.devicePath().startsWith(QStringLiteral("/dev/pts/")));
    const QFileInfo link(sim.linkPath());
    QVERIFY(link.isSymLink());
    QCOMPARE(link.symLinkTarget(), sim.devicePath());
    QVERIFY(sim.stop());
    QVERIFY(!QFileInfo(sim.linkPath()).isSymLink());
}

void SimExecutableTest::sigintEndsAsCleanly()
{
    SimProcess sim;
    QVERIFY2(sim.start({}), qPrintable(sim.error()));
    QCOMPARE(sim.portName(), QStringLiteral("SIM1"));
    QVERIFY(sim.interrupt());
    QVERIFY(!QFileInfo(sim.linkPath()).isSymLink());
}

void SimExecutableTest::defaultModuleAnswersAndFramesAreLoggedToStandardError()
{
    SimProcess sim;
    QVERIFY2(sim.start({QStringLiteral("--fast")}), qPrintable(sim.error()));
    PtyPeer peer(sim.devicePath());
    const QByteArray reply = peer.exchange(readInfoRequest(1).frame(), kFullFrameLength);
    ModuleRecord program = defaultModule();
    int status = 0;
    QVERIFY(parseParameterReply(reply, kCmdRead, program, status));
    QCOMPARE(trimmedText(program.modelName), QStringLiteral("TM-C16"));
    QVERIFY(sim.stop());
    const QString log = QString::fromLocal8Bit(sim.process().readAllStandardError());
    QVERIFY2(log.contains(QStringLiteral(" > AA  AA  03  01  11  00  12\n")), qPrintable(log));
    QVERIFY(log.contains(QStringLiteral(" < AA  AA  33  01  41  00  01")));
}

void SimExecutableTest::logOptionWritesTheFrameLogToAFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("frames.log"));
    SimProcess sim;
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--module"), QStringLiteral("7:TM-B8"),
                        QStringLiteral("--log"), path}),
             qPrintable(sim.error()));
    PtyPeer peer(sim.devicePath());
    QCOMPARE(peer.exchange(readInfoRequest(7).frame(), kFullFrameLength).size(), kFullFrameLength);
    QVERIFY(sim.stop());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    QVERIFY(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} > AA  AA  03  07  11  00  18$"))
                .match(lines[0])
                .hasMatch());
    QVERIFY(lines[1].contains(QStringLiteral(" < AA  AA  33  07  41  00  07")));
}

void SimExecutableTest::vanishingLineEndsTheProcessAndRemovesTheLink()
{
    SimProcess sim;
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--vanish-after"), QStringLiteral("1")}),
             qPrintable(sim.error()));
    PtyPeer peer(sim.devicePath());
    QCOMPARE(peer.exchange(readInfoRequest(1).frame(), kFullFrameLength).size(), kFullFrameLength);
    QVERIFY(QTest::qWaitFor([&] { return peer.hungUp(); }, 3000));
    QVERIFY(QTest::qWaitFor([&] { return sim.process().state() == QProcess::NotRunning; }, 3000));
    QCOMPARE(sim.process().exitCode(), 0);
    QVERIFY(!QFileInfo(sim.linkPath()).isSymLink());
}

void SimExecutableTest::faultOptionReachesTheLine()
{
    SimProcess sim;
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--fault"), QStringLiteral("1:echo:2")}),
             qPrintable(sim.error()));
    PtyPeer peer(sim.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    QCOMPARE(quint8(peer.exchange(read, kFullFrameLength)[kCommandOffset]), quint8(0x41));
    QCOMPARE(quint8(peer.exchange(read, kFullFrameLength)[kCommandOffset]), quint8(0x11));
    QVERIFY(sim.stop());
}

void SimExecutableTest::senselessOptionsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown model") << QStringList{"--module", "1:TM-Z9"} << "MODEL";
    QTest::newRow("broadcast address") << QStringList{"--module", "255:2"} << "ADDR";
    QTest::newRow("unknown fault") << QStringList{"--fault", "1:fizz"} << "unknown kind";
    QTest::newRow("negative turnaround") << QStringList{"--turnaround", "-1"} << "--turnaround";
    QTest::newRow("name with a slash") << QStringList{"--name", "a/b"} << "--name";
    QTest::newRow("unknown option") << QStringList{"--colour"} << "colour";
}

void SimExecutableTest::senselessOptionsAreRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    QProcess sim;
    sim.start(SimProcess::executable(), arguments);
    QVERIFY(sim.waitForFinished(5000));
    QVERIFY(sim.exitCode() != 0);
    QVERIFY(sim.readAllStandardOutput().isEmpty());
    const QString error = QString::fromLocal8Bit(sim.readAllStandardError());
    QVERIFY2(error.contains(message), qPrintable(error));
}

QTEST_GUILESS_MAIN(SimExecutableTest)
#include "sim_executable_test.moc"
