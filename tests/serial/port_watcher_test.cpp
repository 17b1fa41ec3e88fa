// The port watcher hears of ports that come and go from the system, within
// two seconds, and keeps still while paused.
#include "serial/port_watcher.h"
#include "support/sim_process.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr int kWithinMs = 2000;

bool listed(const QList<PortEntry>& ports, const QString& name)
{
    return std::any_of(ports.begin(), ports.end(), [&](const PortEntry& p) { return p.name == name; });
}

}  // namespace

class PortWatcherTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void aSimulatorStartedAndEndedIsSeenWithinTwoSeconds();
    void aKilledSimulatorIsSeenGoneWithinTwoSeconds();
    void aPausedWatcherTellsOnResuming();
    void anIdleWatcherLooksAtNothingWithoutASignFromTheSystem();
private:
    QTemporaryDir dir_;
};

void PortWatcherTest::init()
{
    QVERIFY(dir_.isValid());
    // A folder that is not there yet: the simulator makes it.
    qputenv("VELMOR_PORTS_DIR", dir_.filePath(QStringLiteral("ports")).toUtf8());
}

void PortWatcherTest::aSimulatorStartedAndEndedIsSeenWithinTwoSeconds()
{
    PortWatcher watcher;
    watcher.setKnown(listPorts());
    QSignalSpy changes(&watcher, &PortWatcher::portsChanged);
    SimProcess sim;
    sim.usePortsDir(dir_.filePath(QStringLiteral("ports")));
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--name"), QStringLiteral("SIM4")}), qPrintable(sim.error()));
    QTRY_VERIFY_WITH_TIMEOUT(!changes.isEmpty() && listed(changes.last().first().value<QList<PortEntry>>(), QStringLiteral("SIM4")),
                             kWithinMs);
    QVERIFY(sim.stop());
    QTRY_VERIFY_WITH_TIMEOUT(!listed(changes.last().first().value<QList<PortEntry>>(), QStringLiteral("SIM4")), kWithinMs);
}

// Killed, a simulator takes nothing down: its line ends with it.
void PortWatcherTest::aKilledSimulatorIsSeenGoneWithinTwoSeconds()
{
    SimProcess sim;
    sim.usePortsDir(dir_.filePath(QStringLiteral("ports")));
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--name"), QStringLiteral("SIM6")}), qPrintable(sim.error()));
    PortWatcher watcher;
    watcher.setKnown(listPorts());
    QVERIFY(listed(listPorts(), QStringLiteral("SIM6")));
    QSignalSpy changes(&watcher, &PortWatcher::portsChanged);
    sim.process().kill();
    QVERIFY(sim.process().waitForFinished(5000));
    QTRY_VERIFY_WITH_TIMEOUT(!changes.isEmpty() && !listed(changes.last().first().value<QList<PortEntry>>(), QStringLiteral("SIM6")),
                             kWithinMs);
}

// Paused, nothing is told; what changed meanwhile is told on resuming.
void PortWatcherTest::aPausedWatcherTellsOnResuming()
{
    PortWatcher watcher;
    watcher.setKnown(listPorts());
    QSignalSpy changes(&watcher, &PortWatcher::portsChanged);
    watcher.pause();
    SimProcess sim;
    sim.usePortsDir(dir_.filePath(QStringLiteral("ports")));
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--name"), QStringLiteral("SIM8")}), qPrintable(sim.error()));
    QVERIFY(!changes.wait(PortWatcher::kSettleMs * 4));
    watcher.resume();
    QCOMPARE(changes.size(), 1);
    QVERIFY(listed(changes.first().first().value<QList<PortEntry>>(), QStringLiteral("SIM8")));
}

// Idle, the watcher costs nothing: it looks at the list only when the
// system signs a change in a folder it watches (here folders of the
// test's own, which other tests running meanwhile do not touch). The
// list changes without a sign (the published ports now come from a
// folder that already holds a line): a watcher that kept looking would
// find it.
void PortWatcherTest::anIdleWatcherLooksAtNothingWithoutASignFromTheSystem()
{
    QTemporaryDir other;
    QTemporaryDir devices;
    SimProcess sim;
    sim.usePortsDir(other.path());
    QVERIFY2(sim.start({QStringLiteral("--fast"), QStringLiteral("--name"), QStringLiteral("SIM3")}), qPrintable(sim.error()));
    PortWatcher watcher({devices.path()});
    watcher.setKnown(listPorts());
    QSignalSpy changes(&watcher, &PortWatcher::portsChanged);
    qputenv("VELMOR_PORTS_DIR", other.path().toUtf8());
    QVERIFY(listed(listPorts(), QStringLiteral("SIM3")));
    QVERIFY(!changes.wait(kWithinMs + 500));
    // A sign in a watched folder: the watcher looks, and finds the line.
    QVERIFY(QFile(devices.filePath(QStringLiteral("ttyUSB9"))).open(QIODevice::WriteOnly));
    QTRY_VERIFY_WITH_TIMEOUT(!changes.isEmpty() && listed(changes.last().first().value<QList<PortEntry>>(), QStringLiteral("SIM3")),
                             kWithinMs);
}

QTEST_GUILESS_MAIN(PortWatcherTest)
#include "port_watcher_test.moc"
