#include "protocol/requests.h"
#include "pty_pair.h"
#include "serial/com_port.h"
#include "support/event_drain.h"
#include "support/sim_line.h"

#include <QSignalSpy>
#include <QTest>

#include <termios.h>

using namespace velmor;
using namespace velmor::testing;

namespace {

// Waits in the event loop until the port has gathered `count` bytes.
bool waitForBytes(ComPort& port, int count, int ms = 2000)
{
    return QTest::qWaitFor([&] { return port.BytesWaiting() >= count; }, ms);
}

QList<PortEntry> listed()
{
    return listPorts({}, simPortsDir());
}

const QByteArray kBeckon("\xAA\xAA\x03\xFF\x10\x00\x0F", 7);

}  // namespace

class ComPortTest : public QObject {
    Q_OBJECT
private slots:
    void portNumber1OpensCom1AndNumber10OpensCom10();
    void unknownNumberFailsAndLeavesMinusOne();
    void lineIsSetTo4800Baud8N1();
    void readWithMinimumFiveWhenFourWaitReturnsNothingAndKeepsThem();
    void readWithSixtyWaitingReturnsAllSixty();
    void operationsAfterFailedOpenActAsClosed();
    void closingTwiceIsHarmless();
    void bytesQueuedBeforeOpenArePurged();
    void farEndGoingAwayClosesThePortOnce();
};

void ComPortTest::portNumber1OpensCom1AndNumber10OpensCom10()
{
    SimLine com1({sim::ModuleAt{1, 2}}, Pacing::Fast, QStringLiteral("COM1"));
    SimLine com10({sim::ModuleAt{2, 0}}, Pacing::Fast, QStringLiteral("COM10"));
    QVERIFY(com1.isReady() && com10.isReady());
    ComPort port;
    port.setPorts(listed());
    QVERIFY(port.OpenComPort(10));
    QVERIFY(port.portHandle() > 0);
    QVERIFY(port.WriteComPort(kBeckon));
    QVERIFY(waitForBytes(port, kFullFrameLength));
    QCOMPARE(com10.requests(), QList<QByteArray>{kBeckon});
    QVERIFY(com1.requests().isEmpty());
    port.CloseComPort();
    QVERIFY(port.OpenComPort(1));
    QVERIFY(port.WriteComPort(kBeckon));
    QVERIFY(com1.waitForReplies(1));
    port.CloseComPort();
}

void ComPortTest::unknownNumberFailsAndLeavesMinusOne()
{
    ComPort port;
    QVERIFY(!port.OpenComPort(7));
    QCOMPARE(port.portHandle(), -1);
}

void ComPortTest::lineIsSetTo4800Baud8N1()
{
    PtyPair pty;
    QVERIFY(pty.isValid());
    ComPort port;
    QVERIFY(port.openDevice(pty.slavePath()));
    const termios settings = pty.lineSettings();
    QCOMPARE(cfgetospeed(&settings), speed_t(B4800));
    QCOMPARE(cfgetispeed(&settings), speed_t(B4800));
    QCOMPARE(settings.c_cflag & CSIZE, tcflag_t(CS8));
    QCOMPARE(settings.c_cflag & PARENB, tcflag_t(0));
    QCOMPARE(settings.c_cflag & CSTOPB, tcflag_t(0));
    port.CloseComPort();
}

void ComPortTest::readWithMinimumFiveWhenFourWaitReturnsNothingAndKeepsThem()
{
    SimLine line({sim::ModuleAt{1, 2}});
    QVERIFY(line.isReady());
    line.addFault(1, sim::FaultKind::Truncate, 0, kFullFrameLength - 4);
    ComPort port;
    port.setPorts(listed());
    QVERIFY(port.OpenComPort(port.ports().first().number));
    QVERIFY(port.WriteComPort(readInfoRequest(1).frame()));
    QVERIFY(line.waitForReplies(1));  // the line has sent all it will send
    QVERIFY(waitForBytes(port, 4));
    QCOMPARE(port.BytesWaiting(), 4);
    QVERIFY(port.ReadComPort(5).isEmpty());
    QCOMPARE(port.BytesWaiting(), 4);
    QCOMPARE(port.ReadComPort(4), QByteArray("\xAA\xAA\x33\x01", 4));
    port.CloseComPort();
}

void ComPortTest::readWithSixtyWaitingReturnsAllSixty()
{
    SimLine line({sim::ModuleAt{1, 2}});
    QVERIFY(line.isReady());
    line.addFault(1, sim::FaultKind::Truncate, 2, kFullFrameLength - 5);  // the second reply: 5 bytes
    ComPort port;
    port.setPorts(listed());
    QVERIFY(port.OpenComPort(port.ports().first().number));
    QVERIFY(port.WriteComPort(readInfoRequest(1).frame()));
    QVERIFY(line.waitForReplies(1));
    QVERIFY(port.WriteComPort(readInfoRequest(1).frame()));
    QVERIFY(line.waitForReplies(2));
    QVERIFY(waitForBytes(port, 60));
    const QByteArray all = port.ReadComPort(5);
    QCOMPARE(all.size(), 60);
    QCOMPARE(all.left(55), line.replies().first());
    QCOMPARE(port.BytesWaiting(), 0);
    port.CloseComPort();
}

void ComPortTest::operationsAfterFailedOpenActAsClosed()
{
    ComPort port;
    QVERIFY(!port.openDevice(QStringLiteral("/nonexistent/ttyNothing")));
    QCOMPARE(port.portHandle(), -1);
    QVERIFY(!port.WriteComPort(kBeckon));
    QVERIFY(port.ReadComPort(0).isEmpty());
    QCOMPARE(port.BytesWaiting(), 0);
    QVERIFY(port.CloseComPort());
    QCOMPARE(port.portHandle(), 0);
}

void ComPortTest::closingTwiceIsHarmless()
{
    SimLine line;
    QVERIFY(line.isReady());
    ComPort port;
    QVERIFY(port.openDevice(line.devicePath()));
    QVERIFY(port.CloseComPort());
    QVERIFY(port.CloseComPort());
    QCOMPARE(port.portHandle(), 0);
}

void ComPortTest::bytesQueuedBeforeOpenArePurged()
{
    SimLine line({sim::ModuleAt{1, 2}});
    QVERIFY(line.isReady());
    line.addFault(1, sim::FaultKind::Late, 1, 200);
    ComPort port;
    QVERIFY(port.openDevice(line.devicePath()));
    QVERIFY(port.WriteComPort(readInfoRequest(1).frame()));
    QVERIFY(QTest::qWaitFor([&] { return line.requests().size() == 1; }, 2000));  // heard, answer held back
    port.CloseComPort();
    QVERIFY(line.waitForReplies(1));  // the reply reaches a closed port
    QVERIFY(port.openDevice(line.devicePath()));
    QCOMPARE(port.BytesWaiting(), 0);
    // Had the late reply survived the open, it would come before the beckon's.
    QVERIFY(port.WriteComPort(kBeckon));
    QVERIFY(waitForBytes(port, kFullFrameLength));
    QCOMPARE(port.ReadComPort(kFullFrameLength), line.replies().last());
    port.CloseComPort();
}

void ComPortTest::farEndGoingAwayClosesThePortOnce()
{
    SimLine line;
    QVERIFY(line.isReady());
    ComPort port;
    QSignalSpy lost(&port, &ComPort::lost);
    QVERIFY(port.openDevice(line.devicePath()));
    line.vanish();
    QVERIFY(lost.wait(2000));
    // Driver errors arrive through the descriptor's notifier; the port has let
    // both go, so whatever was queued before is all there can be.
    QVERIFY(!port.isOpen());
    drainEvents();
    QCOMPARE(lost.count(), 1);
    QCOMPARE(port.BytesWaiting(), 0);
}

QTEST_GUILESS_MAIN(ComPortTest)
#include "com_port_test.moc"
