// The modules' memory survives a restart through the state file, like a
// module's own memory across power cycles.

#include "support/pty_peer.h"
#include "support/sim_process.h"

#include "sim/sim_values.h"
#include "sim/state_file.h"

#include "protocol/replies.h"
#include "protocol/requests.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using velmor::testing::PtyPeer;
using velmor::testing::SimProcess;

namespace {

QStringList argumentsWith(const QString& stateFile, const QString& module)
{
    return {QStringLiteral("--fast"), QStringLiteral("--state"), stateFile, QStringLiteral("--module"), module,
            QStringLiteral("--balance-delay"), QStringLiteral("100")};
}

ModuleRecord readInformation(PtyPeer& peer, int address)
{
    ModuleRecord program = defaultModule();
    int status = 0;
    if (!parseParameterReply(peer.exchange(readInfoRequest(address).frame(), kFullFrameLength), kCmdRead, program,
                             status))
        program.busAddress = -1;
    return program;
}

}  // namespace

class SimStateTest : public QObject {
    Q_OBJECT

private slots:
    void savedModulesLoadBackEqual();
    void brokenStateFilesAreRefused_data();
    void brokenStateFilesAreRefused();
    void writtenValuesSurviveARestart();
    void newAddressSurvivesARestartWithoutTheOldOne();
    void balanceValuesAreSaved();
};

void SimStateTest::savedModulesLoadBackEqual()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("state.json"));
    const QList<ModuleRecord> modules{sim::simulatedModule(1, 2, 1), sim::simulatedModule(6, 3, 1)};
    QString error;
    QVERIFY2(sim::saveState(path, modules, &error), qPrintable(error));
    QList<ModuleRecord> loaded;
    QVERIFY2(sim::loadState(path, loaded, &error), qPrintable(error));
    QCOMPARE(loaded, modules);
}

void SimStateTest::brokenStateFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("not JSON") << QByteArray("{modules");
    QTest::newRow("no modules") << QByteArray("{\"records\": []}");
    QTest::newRow("array at the top") << QByteArray("[]");
    QTest::newRow("module not an object") << QByteArray("{\"modules\": [3]}");
    QTest::newRow("wrong field type") << QByteArray("{\"modules\": [{\"busAddress\": \"x\"}]}");
}

void SimStateTest::brokenStateFilesAreRefused()
{
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("state.json"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    QList<ModuleRecord> loaded{defaultModule()};
    QString error;
    QVERIFY(!sim::loadState(path, loaded, &error));
    QVERIFY2(error.contains(path), qPrintable(error));
    QCOMPARE(loaded.size(), 1);
}

void SimStateTest::writtenValuesSurviveARestart()
{
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("modules.json"));
    ModuleRecord written;
    {
        SimProcess sim;
        QVERIFY2(sim.start(argumentsWith(state, QStringLiteral("1:TM-C16"))), qPrintable(sim.error()));
        PtyPeer peer(sim.devicePath());
        written = readInformation(peer, 1);
        QCOMPARE(written.busAddress, qint16(1));
        written.channels[2].cutoff = 4321;
        written.channels[3].gain = 2;
        int status = 0;
        QVERIFY(parseInfoReply(peer.exchange(writeChannelGroupRequest(written, 0).frame(), kFullFrameLength),
                               kCmdWrite, written, status));
        QVERIFY(QFile::exists(state));
        QVERIFY(sim.stop());
    }
    SimProcess again;
    // The saved modules stand for the line; the command line's are not used.
    QVERIFY2(again.start(argumentsWith(state, QStringLiteral("1:TM-A4"))), qPrintable(again.error()));
    PtyPeer peer(again.devicePath());
    ModuleRecord program = readInformation(peer, 1);
    QCOMPARE(trimmedText(program.modelName), QStringLiteral("TM-C16"));
    int status = 0;
    QVERIFY(parseInfoReply(peer.exchange(readChannelGroupRequest(program, 0).frame(), kFullFrameLength), kCmdRead,
                           program, status));
    QCOMPARE(program.channels[2].cutoff, 4321);
    QCOMPARE(program.channels[3].gain, qint16(2));
    QVERIFY(again.stop());
}

void SimStateTest::newAddressSurvivesARestartWithoutTheOldOne()
{
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("modules.json"));
    {
        SimProcess sim;
        QVERIFY2(sim.start(argumentsWith(state, QStringLiteral("1:TM-C16"))), qPrintable(sim.error()));
        PtyPeer peer(sim.devicePath());
        ModuleRecord program = readInformation(peer, 1);
        program.busAddress = 7;
        QCOMPARE(peer.exchange(writeInfoRequest(program).frame(), kFullFrameLength).size(), kFullFrameLength);
        QVERIFY(sim.stop());
    }
    SimProcess again;
    QVERIFY2(again.start(argumentsWith(state, QStringLiteral("1:TM-C16"))), qPrintable(again.error()));
    PtyPeer peer(again.devicePath());
    QCOMPARE(readInformation(peer, 7).busAddress, qint16(7));
    QVERIFY(peer.exchange(readInfoRequest(1).frame(), kFullFrameLength, 500).isEmpty());
    QVERIFY(again.stop());
}

void SimStateTest::balanceValuesAreSaved()
{
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("modules.json"));
    SimProcess sim;
    QVERIFY2(sim.start(argumentsWith(state, QStringLiteral("2:TM-B8"))), qPrintable(sim.error()));
    PtyPeer peer(sim.devicePath());
    ModuleRecord program = readInformation(peer, 2);
    QCOMPARE(peer.exchange(balanceRequest(program, 0x0001).frame(), kAckLength).size(), kAckLength);
    QList<ModuleRecord> saved;
    QVERIFY(QTest::qWaitFor([&] { return sim::loadState(state, saved, nullptr); }, 3000));
    QCOMPARE(saved.size(), 1);
    const ModuleRecord factory = sim::simulatedModule(2, 3, 1);
    QCOMPARE(saved[0].channels[0].balanceValue, sim::balancedValue(1, 2, 0, factory.channels[0].balanceValue));
    QCOMPARE(saved[0].channels[1].balanceValue, factory.channels[1].balanceValue);
    QVERIFY(sim.stop());
}

QTEST_GUILESS_MAIN(SimStateTest)
#include "sim_state_test.moc"
