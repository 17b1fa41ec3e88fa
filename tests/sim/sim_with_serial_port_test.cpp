// The in-process line with the program's own serial code, as the tests of the
// other layers use it: found in the port list, opened and closed per exchange,
// and lost once when it vanishes.

#include "support/event_drain.h"
#include "support/sim_line.h"

#include "protocol/replies.h"
#include "protocol/requests.h"
#include "serial/com_port.h"
#include "serial/port_list.h"

#include <QSignalSpy>
#include <QTest>

using namespace velmor;
using velmor::testing::drainEvents;
using velmor::testing::Pacing;
using velmor::testing::SimLine;

namespace {

// One exchange as the program makes it: open, purge, write, wait, read, close.
QByteArray exchange(ComPort& port, int number, const Request& request)
{
    if (!port.OpenComPort(number))
        return {};
    port.WriteComPort(request.frame());
    const bool complete =
        QTest::qWaitFor([&] { return replyComplete(port.peekWaiting(), request.replyLength()); }, 3000);
    const QByteArray reply = complete ? port.ReadComPort(request.replyLength()) : QByteArray();
    port.CloseComPort();
    return reply;
}

}  // namespace

class SimWithSerialPortTest : public QObject {
    Q_OBJECT

private slots:
    void portListFindsTheLineAndRepeatedExchangesWork_data();
    void portListFindsTheLineAndRepeatedExchangesWork();
    void vanishingLineIsLostOnce();
};

void SimWithSerialPortTest::portListFindsTheLineAndRepeatedExchangesWork_data()
{
    QTest::addColumn<bool>("paced");
    QTest::newRow("fast") << false;
    QTest::newRow("paced") << true;
}

void SimWithSerialPortTest::portListFindsTheLineAndRepeatedExchangesWork()
{
    QFETCH(bool, paced);
    SimLine line({{1, 2}}, paced ? Pacing::Paced : Pacing::Fast);
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    const QList<PortEntry> ports = listPorts({}, virtualPortsDirectory());
    QCOMPARE(ports.size(), 1);
    QCOMPARE(ports[0].name, line.portName());

    ComPort port;
    port.setPorts(ports);
    for (int g = 0; g < kChannelGroups; ++g) {
        ModuleRecord program = defaultModule();
        program.busAddress = 1;
        const QByteArray reply = exchange(port, ports[0].number, readChannelGroupRequest(program, g));
        int status = 0;
        QVERIFY2(parseInfoReply(reply, kCmdRead, program, status), qPrintable(QString::number(status)));
        QCOMPARE(program.channels[static_cast<size_t>(4 * g)].cutoff,
                 line.memory(1).channels[static_cast<size_t>(4 * g)].cutoff);
    }
}

void SimWithSerialPortTest::vanishingLineIsLostOnce()
{
    SimLine line;
    ComPort port;
    QSignalSpy lost(&port, &ComPort::lost);
    QVERIFY(port.openDevice(line.devicePath()));
    line.vanish();
    QVERIFY(QTest::qWaitFor([&] { return lost.size() > 0; }, 2000));
    QVERIFY(!port.isOpen());  // the descriptor is gone, with all it could say
    drainEvents();
    QCOMPARE(lost.size(), 1);
}

QTEST_GUILESS_MAIN(SimWithSerialPortTest)
#include "sim_with_serial_port_test.moc"
