// velmor-cli on network lines: ser2net on 127.0.0.1 in front of velmor-sim's
// pseudo-terminal, named tcp://... and rfc2217://... wherever a port goes.

#include "cli_runner.h"
#include "support/ser2net_process.h"
#include "support/sim_process.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

const QString kAddress = QStringLiteral("1");

// velmor-sim with one TM-C16, and ser2net in front of it, raw and telnet.
struct RemoteRig {
    bool start()
    {
        if (!sim.start({QStringLiteral("--fast"), QStringLiteral("--module"), kAddress + QStringLiteral(":TM-C16")})) {
            error = sim.error();
            return false;
        }
        raw = server.addConnection(Ser2netProcess::Accepter::Raw, sim.devicePath());
        telnet = server.addConnection(Ser2netProcess::Accepter::Rfc2217, sim.devicePath());
        if (!server.start()) {
            error = server.error();
            return false;
        }
        return true;
    }
    // The local device first, then the two network names of the same line.
    QStringList ports() const { return {sim.devicePath(), server.url(raw), server.url(telnet)}; }
    CliResult run(const QStringList& arguments) const
    {
        return runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("en")} + arguments, sim.portsDir());
    }

    SimProcess sim;
    Ser2netProcess server;
    int raw = -1;
    int telnet = -1;
    QString error;
};

}  // namespace

class CliRemoteTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void readAndWriteOverTheNetworkDoWhatTheyDoLocally();
    void searchFindsTheModuleBehindTheServer();
    void portsListsTheNetworkPortsGiven();
    void refusedConnectionGivesThePortOpenMessageWithTheSocketsWords();
};

void CliRemoteTest::init() { VELMOR_REQUIRE_SER2NET(); }

void CliRemoteTest::readAndWriteOverTheNetworkDoWhatTheyDoLocally()
{
    RemoteRig rig;
    QVERIFY2(rig.start(), qPrintable(rig.error));
    QTemporaryDir dir;
    QList<CliResult> reads;
    QList<QByteArray> files;
    QList<CliResult> writes;
    for (const QString& port : rig.ports()) {
        const QString file = dir.filePath(QString::number(files.size()) + QStringLiteral(".cfg"));
        reads << rig.run({QStringLiteral("--json"), QStringLiteral("read"), QStringLiteral("--port"), port,
                          QStringLiteral("--address"), kAddress, QStringLiteral("--save"), file});
        files << fileBytes(file);
        // The module gets its own values back, so every route meets the same module.
        writes << rig.run({QStringLiteral("--json"), QStringLiteral("write"), QStringLiteral("--port"), port, QStringLiteral("--address"), kAddress,
                           QStringLiteral("--config"), file});
    }
    QCOMPARE(reads.first().exitCode, 0);
    QVERIFY(!reads.first().json().isEmpty());
    QCOMPARE(writes.first().exitCode, 0);
    QVERIFY(!writes.first().json().isEmpty());
    QVERIFY(!files.first().isEmpty());
    for (qsizetype i = 1; i < reads.size(); ++i) {
        const QByteArray port = rig.ports().at(i).toUtf8();
        QVERIFY2(reads[i].exitCode == 0 && reads[i].err.isEmpty(), reads[i].err.constData());
        QVERIFY2(reads[i].json() == reads.first().json(), port.constData());
        QVERIFY2(files[i] == files.first(), port.constData());
        QCOMPARE(writes[i].exitCode, 0);
        QVERIFY2(writes[i].json() == writes.first().json(), port.constData());
    }
}

void CliRemoteTest::searchFindsTheModuleBehindTheServer()
{
    RemoteRig rig;
    QVERIFY2(rig.start(), qPrintable(rig.error));
    for (const QString& port : {rig.server.url(rig.raw), rig.server.url(rig.telnet)}) {
        const CliResult result = rig.run({QStringLiteral("search"), QStringLiteral("--port"), port});
        QCOMPARE(result.exitCode, 0);
        const QList<QByteArray> lines = result.out.trimmed().split('\n');
        QCOMPARE(lines.size(), 2);
        // The network port is named by its address.
        QVERIFY2(lines[0].startsWith("1\t" + port.toUtf8() + "\t1\tTM-C16\t"), lines[0].constData());
        QCOMPARE(lines[1], QByteArray("Found 1 modules."));
    }
}

void CliRemoteTest::portsListsTheNetworkPortsGiven()
{
    const QString raw = QStringLiteral("tcp://127.0.0.1:%1").arg(unusedLocalPort());
    const QString telnet = QStringLiteral("rfc2217://[::1]:4001");
    const CliResult plain = runCli({QStringLiteral("ports")});
    QCOMPARE(plain.exitCode, 0);
    QVERIFY(!plain.out.contains("://"));

    const CliResult text = runCli({QStringLiteral("ports"), QStringLiteral("--port"), raw, QStringLiteral("--port"), telnet});
    QCOMPARE(text.exitCode, 0);
    QVERIFY(text.out.startsWith(plain.out));  // after the machine's own ports
    const QList<QByteArray> added = text.out.mid(plain.out.size()).trimmed().split('\n');
    QCOMPARE(added.size(), 2);
    QVERIFY(added[0].startsWith(raw.toUtf8() + '\t') && added[0].endsWith('\t' + raw.toUtf8()));
    QVERIFY(added[1].startsWith(telnet.toUtf8() + '\t') && added[1].endsWith('\t' + telnet.toUtf8()));

    const CliResult json = runCli({QStringLiteral("--json"), QStringLiteral("ports"), QStringLiteral("--port"), telnet});
    const QJsonArray list = QJsonDocument::fromJson(json.out).array();
    QVERIFY(!list.isEmpty());
    QCOMPARE(list.last()[QStringLiteral("name")].toString(), telnet);
    QCOMPARE(list.last()[QStringLiteral("device")].toString(), telnet);

    const CliResult unknown = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("ports"),
                                      QStringLiteral("--port"), QStringLiteral("udp://127.0.0.1:5")});
    QCOMPARE(unknown.exitCode, 3);
    QCOMPARE(unknown.errText(), QStringLiteral("Open COM port fail.\nudp://127.0.0.1:5: no such port"));
}

void CliRemoteTest::refusedConnectionGivesThePortOpenMessageWithTheSocketsWords()
{
    for (const char* scheme : {"tcp", "rfc2217"}) {
        const QString port = QStringLiteral("%1://127.0.0.1:%2").arg(QLatin1String(scheme)).arg(unusedLocalPort());
        const CliResult read = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("read"),
                                       QStringLiteral("--port"), port, QStringLiteral("--address"), kAddress});
        QCOMPARE(read.exitCode, 3);
        // As for a local port: the window's message, then the port and the reason.
        QCOMPARE(read.errText(), QStringLiteral("Open COM port fail.\n%1: Connection refused").arg(port));
        QVERIFY(read.out.isEmpty());
        const CliResult search = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("search"),
                                         QStringLiteral("--port"), port});
        QCOMPARE(search.exitCode, 3);
        QVERIFY2(search.errText().contains(QStringLiteral("%1: Connection refused").arg(port)), search.err.constData());
    }
}

QTEST_GUILESS_MAIN(CliRemoteTest)
#include "cli_remote_test.moc"
