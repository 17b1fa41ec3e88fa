#include "pty_pair.h"
#include "serial/com_port.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <QFile>

using namespace velmor;

namespace {

// Waits in the event loop until the port has gathered `count` bytes.
bool waitForBytes(ComPort& port, int count, int ms = 2000)
{
    return QTest::qWaitFor([&] { return port.BytesWaiting() >= count; }, ms);
}

QList<PortEntry> singlePort(const PtyPair& pty, int number)
{
    return {PortEntry{QStringLiteral("SIM1"), number, pty.slavePath()}};
}

}  // namespace

class ComPortTest : public QObject {
    Q_OBJECT
private slots:
    void comNameGivesItsNumber_data();
    void comNameGivesItsNumber();
    void otherNamesAreNumberedByPosition();
    void numbersNameOnePortEach();
    void publishedLinksAreListedAfterSystemPorts();
    void deadLinksAreNotListed();
    void openUsesTheEntryWithThatNumber();
    void unknownNumberFailsAndLeavesMinusOne();
    void readBelowMinimumReturnsNothingAndKeepsBytes();
    void readAtOrAboveMinimumReturnsEverythingWaiting();
    void operationsAfterFailedOpenActAsClosed();
    void closingTwiceIsHarmless();
    void bytesQueuedBeforeOpenArePurged();
    void writeReachesTheFarEnd();
    void farEndGoingAwayClosesThePortOnce();
};

void ComPortTest::comNameGivesItsNumber_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::newRow("COM1") << "COM1" << 1;
    QTest::newRow("COM10") << "COM10" << 10;
    QTest::newRow("COM12") << "COM12" << 12;
}

void ComPortTest::comNameGivesItsNumber()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QTemporaryDir empty;
    const QList<PortEntry> ports = listPorts({PortEntry{name, 0, QStringLiteral("/dev/x")}}, empty.path());
    QCOMPARE(ports.size(), 1);
    QCOMPARE(ports[0].name, name);
    QCOMPARE(ports[0].number, number);
}

void ComPortTest::otherNamesAreNumberedByPosition()
{
    QTemporaryDir empty;
    const QList<PortEntry> ports = listPorts({PortEntry{QStringLiteral("ttyUSB1"), 0, QStringLiteral("/dev/ttyUSB1")},
                                              PortEntry{QStringLiteral("ttyUSB0"), 0, QStringLiteral("/dev/ttyUSB0")}},
                                             empty.path());
    QCOMPARE(ports.size(), 2);
    QCOMPARE(ports[0].name, QStringLiteral("ttyUSB0"));  // a stable order, by name
    QCOMPARE(ports[0].number, 1);
    QCOMPARE(ports[1].name, QStringLiteral("ttyUSB1"));
    QCOMPARE(ports[1].number, 2);
}

void ComPortTest::numbersNameOnePortEach()
{
    QTemporaryDir empty;
    const auto port = [](const char* name) { return PortEntry{QString::fromLatin1(name), 0, QStringLiteral("/dev/x")}; };
    const QList<PortEntry> ports = listPorts({port("ttyUSB1"), port("COM3"), port("ttyUSB0"), port("COM1")}, empty.path());
    QCOMPARE(ports.size(), 4);
    QCOMPARE(ports[0].name, QStringLiteral("COM1"));
    QCOMPARE(ports[0].number, 1);
    QCOMPARE(ports[1].number, 3);
    QCOMPARE(ports[2].name, QStringLiteral("ttyUSB0"));
    QCOMPARE(ports[2].number, 4);  // its position, 3, belongs to COM3
    QCOMPARE(ports[3].number, 5);
}

void ComPortTest::publishedLinksAreListedAfterSystemPorts()
{
    PtyPair pty;
    QVERIFY(pty.isValid());
    QTemporaryDir dir;
    QVERIFY(QFile::link(pty.slavePath(), dir.filePath(QStringLiteral("SIM1"))));
    const QList<PortEntry> ports = listPorts({PortEntry{QStringLiteral("ttyS0"), 0, QStringLiteral("/dev/ttyS0")}}, dir.path());
    QCOMPARE(ports.size(), 2);
    QCOMPARE(ports[1].name, QStringLiteral("SIM1"));
    QCOMPARE(ports[1].number, 2);
    QCOMPARE(ports[1].device, dir.filePath(QStringLiteral("SIM1")));
}

void ComPortTest::deadLinksAreNotListed()
{
    QTemporaryDir dir;
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("gone")), dir.filePath(QStringLiteral("SIM9"))));
    QVERIFY(listPorts({}, dir.path()).isEmpty());
}

void ComPortTest::openUsesTheEntryWithThatNumber()
{
    PtyPair pty;
    ComPort port;
    port.setPorts({PortEntry{QStringLiteral("COM1"), 1, QStringLiteral("/nonexistent/COM1")},
                   PortEntry{QStringLiteral("COM10"), 10, pty.slavePath()}});
    QVERIFY(port.OpenComPort(10));
    QVERIFY(port.portHandle() > 0);
    port.CloseComPort();
    QVERIFY(!port.OpenComPort(1));
    QCOMPARE(port.portHandle(), -1);
}

void ComPortTest::unknownNumberFailsAndLeavesMinusOne()
{
    ComPort port;
    QVERIFY(!port.OpenComPort(7));
    QCOMPARE(port.portHandle(), -1);
}

void ComPortTest::readBelowMinimumReturnsNothingAndKeepsBytes()
{
    PtyPair pty;
    ComPort port;
    port.setPorts(singlePort(pty, 1));
    QVERIFY(port.OpenComPort(1));
    pty.send(QByteArray("\x01\x02\x03\x04", 4));
    QVERIFY(waitForBytes(port, 4));
    QVERIFY(port.ReadComPort(5).isEmpty());
    QCOMPARE(port.BytesWaiting(), 4);
    QCOMPARE(port.ReadComPort(4), QByteArray("\x01\x02\x03\x04", 4));
    port.CloseComPort();
}

void ComPortTest::readAtOrAboveMinimumReturnsEverythingWaiting()
{
    PtyPair pty;
    ComPort port;
    port.setPorts(singlePort(pty, 1));
    QVERIFY(port.OpenComPort(1));
    QByteArray sixty;
    for (int i = 0; i < 60; ++i)
        sixty.append(static_cast<char>(i));
    pty.send(sixty);
    QVERIFY(waitForBytes(port, 60));
    QCOMPARE(port.ReadComPort(5), sixty);
    QCOMPARE(port.BytesWaiting(), 0);
    port.CloseComPort();
}

void ComPortTest::operationsAfterFailedOpenActAsClosed()
{
    ComPort port;
    QVERIFY(!port.openDevice(QStringLiteral("/nonexistent/ttyNothing")));
    QCOMPARE(port.portHandle(), -1);
    QVERIFY(!port.WriteComPort(QByteArray("\xAA", 1)));
    QVERIFY(port.ReadComPort(0).isEmpty());
    QCOMPARE(port.BytesWaiting(), 0);
    QVERIFY(port.CloseComPort());
    QCOMPARE(port.portHandle(), 0);
}

void ComPortTest::closingTwiceIsHarmless()
{
    PtyPair pty;
    ComPort port;
    QVERIFY(port.openDevice(pty.slavePath()));
    QVERIFY(port.CloseComPort());
    QVERIFY(port.CloseComPort());
    QCOMPARE(port.portHandle(), 0);
}

void ComPortTest::bytesQueuedBeforeOpenArePurged()
{
    PtyPair pty;
    pty.send(QByteArray(20, '\x55'));
    QTest::qWait(50);
    ComPort port;
    QVERIFY(port.openDevice(pty.slavePath()));
    QTest::qWait(100);
    QCOMPARE(port.BytesWaiting(), 0);
    pty.send(QByteArray("\xAA\xAA", 2));
    QVERIFY(waitForBytes(port, 2));
    QCOMPARE(port.ReadComPort(2), QByteArray("\xAA\xAA", 2));
    port.CloseComPort();
}

void ComPortTest::writeReachesTheFarEnd()
{
    PtyPair pty;
    ComPort port;
    QVERIFY(port.openDevice(pty.slavePath()));
    const QByteArray beckon("\xAA\xAA\x03\xFF\x10\x00\x0F", 7);
    QVERIFY(port.WriteComPort(beckon));
    QByteArray received;
    QVERIFY(QTest::qWaitFor([&] { received += pty.receive(7, 10); return received.size() >= 7; }, 2000));
    QCOMPARE(received, beckon);
    port.CloseComPort();
}

void ComPortTest::farEndGoingAwayClosesThePortOnce()
{
    PtyPair pty;
    ComPort port;
    QSignalSpy lost(&port, &ComPort::lost);
    QVERIFY(port.openDevice(pty.slavePath()));
    pty.hangUp();
    QVERIFY(lost.wait(2000));
    QTest::qWait(300);  // a storm of driver errors would show here as more signals
    QCOMPARE(lost.count(), 1);
    QVERIFY(!port.isOpen());
    QCOMPARE(port.BytesWaiting(), 0);
}

QTEST_GUILESS_MAIN(ComPortTest)
#include "com_port_test.moc"
