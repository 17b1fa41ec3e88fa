#include "serial/com_port.h"
#include "serial/network_transport.h"
#include "serial/telnet_codec.h"
#include "support/event_drain.h"
#include "support/ser2net_process.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace velmor;
using velmor::testing::drainEvents;
using velmor::testing::unusedLocalPort;

namespace {

// The far end of a network line: a server on 127.0.0.1 that counts the
// connections it is given and keeps what the latest one sent.
class Peer : public QObject {
public:
    // `greeting` goes to every new connection; `hangUp` ends it right after.
    explicit Peer(const QByteArray& greeting = {}, bool hangUp = false)
    {
        server_.listen(QHostAddress::LocalHost, 0);
        connect(&server_, &QTcpServer::newConnection, this, [this, greeting, hangUp] {
            while (QTcpSocket* socket = server_.nextPendingConnection()) {
                ++accepted;
                received.clear();
                connection = socket;
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { received += socket->readAll(); });
                socket->write(greeting);
                if (hangUp)
                    socket->disconnectFromHost();
            }
        });
    }
    QString url(const char* scheme) const { return QStringLiteral("%1://127.0.0.1:%2").arg(QLatin1String(scheme)).arg(server_.serverPort()); }
    bool connected() const { return connection && connection->state() == QAbstractSocket::ConnectedState; }
    void send(const QByteArray& bytes)
    {
        connection->write(bytes);
        connection->flush();
    }

    int accepted = 0;
    QByteArray received;
    QPointer<QTcpSocket> connection;

private:
    QTcpServer server_;
};

// A serial server's notice of the modem lines, which shows that it has the line.
const QByteArray kModemState = QByteArray::fromHex("fffa2c6b00fff0");

// A listening socket whose queue of connections is full (a backlog of 0 holds
// one): a further connection is neither taken nor refused, it waits.
class FullListener {
public:
    FullListener()
    {
        fd_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        ::bind(fd_, reinterpret_cast<sockaddr*>(&address), length);
        ::listen(fd_, 0);
        ::getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &length);
        port_ = ntohs(address.sin_port);
        filler_.connectToHost(QHostAddress::LocalHost, port_);
        ready_ = QTest::qWaitFor([this] { return filler_.state() == QAbstractSocket::ConnectedState; }, 2000);
    }
    bool isReady() const { return ready_; }
    ~FullListener() { ::close(fd_); }
    QString url() const { return QStringLiteral("tcp://127.0.0.1:%1").arg(port_); }

private:
    int fd_ = -1;
    quint16 port_ = 0;
    QTcpSocket filler_;  // takes the one place in the queue
    bool ready_ = false;
};

}  // namespace

class NetworkTransportTest : public QObject {
    Q_OBJECT
private slots:
    void connectionIsKeptAcrossOpens();
    void closedLineGivesUpItsConnectionWhenIdle();
    void refusedConnectionFailsWithTheSystemsWords();
    void connectionThatIsNotTakenTimesOutWhileEventsRun();
    void connectionEndingWhileOpenIsLostOnce();
    void connectionEndingWhileClosedIsForgotten();
    void bytesThatCameWhileClosedArePurged();
    void telnetLineIsSetUpOnEveryOpenAndNegotiatedOnce();
    void telnetDataIsEscapedBothWays();
    void telnetServerRefusingTheLineFailsTheOpenWithItsWords();
    void telnetServerWithoutComPortOptionStillCarriesData();
};

void NetworkTransportTest::connectionIsKeptAcrossOpens()
{
    Peer peer;
    ComPort port;
    for (int i = 0; i < 3; ++i) {
        QVERIFY2(port.openDevice(peer.url("tcp")), qPrintable(port.openFailureReason()));
        QVERIFY(port.WriteComPort(QByteArray("abc")));
        QVERIFY(port.CloseComPort());
    }
    QTRY_COMPARE(peer.received, QByteArray("abcabcabc"));
    QCOMPARE(peer.accepted, 1);
}

void NetworkTransportTest::closedLineGivesUpItsConnectionWhenIdle()
{
    Peer peer;
    ComPort port;
    QVERIFY(port.openDevice(peer.url("tcp")));
    QTRY_VERIFY(peer.connected());
    port.CloseComPort();
    QElapsedTimer idle;
    idle.start();
    QTRY_VERIFY_WITH_TIMEOUT(!peer.connected(), NetworkTransport::kIdleDisconnectMs + 2000);
    // A coarse timer may fire up to 5 % early.
    QVERIFY(idle.elapsed() >= NetworkTransport::kIdleDisconnectMs * 95 / 100);
    QVERIFY(port.openDevice(peer.url("tcp")));
    QCOMPARE(peer.accepted, 2);
}

void NetworkTransportTest::refusedConnectionFailsWithTheSystemsWords()
{
    ComPort port;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!port.openDevice(QStringLiteral("tcp://127.0.0.1:%1").arg(unusedLocalPort())));
    qInfo("refused after %lld ms", clock.elapsed());
    QCOMPARE(port.openFailure(), OpenFailure::System);
    QCOMPARE(port.openFailureReason(), QStringLiteral("Connection refused"));
    QCOMPARE(port.portHandle(), -1);
    QVERIFY(!port.WriteComPort(QByteArray("x")));
}

void NetworkTransportTest::connectionThatIsNotTakenTimesOutWhileEventsRun()
{
    FullListener listener;
    QVERIFY(listener.isReady());
    ComPort port;
    int ticks = 0;
    QTimer painter;  // stands for a window that must keep painting
    connect(&painter, &QTimer::timeout, this, [&] { ++ticks; });
    painter.start(100);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!port.openDevice(listener.url()));
    const qint64 elapsed = clock.elapsed();
    QCOMPARE(port.openFailureReason(), QStringLiteral("Socket operation timed out"));
    // The whole time allowed was waited (the clock started before the wait's
    // own timer, whole milliseconds apart), and events ran meanwhile; how many
    // depends on the machine's load.
    QVERIFY2(elapsed >= NetworkTransport::kConnectTimeoutMs - 1, qPrintable(QString::number(elapsed)));
    QVERIFY2(ticks > 0, qPrintable(QString::number(ticks)));
}

void NetworkTransportTest::connectionEndingWhileOpenIsLostOnce()
{
    Peer peer;
    ComPort port;
    QSignalSpy lost(&port, &ComPort::lost);
    QVERIFY(port.openDevice(peer.url("tcp")));
    QTRY_VERIFY(peer.connected());
    peer.connection->abort();
    QTRY_COMPARE(lost.count(), 1);
    QVERIFY(!port.isOpen());  // the socket is gone, with all it could say
    drainEvents();
    QCOMPARE(lost.count(), 1);
    QVERIFY(port.openDevice(peer.url("tcp")));
    QCOMPARE(peer.accepted, 2);
}

void NetworkTransportTest::connectionEndingWhileClosedIsForgotten()
{
    Peer peer;
    ComPort port;
    QSignalSpy lost(&port, &ComPort::lost);
    QVERIFY(port.openDevice(peer.url("tcp")));
    QTRY_VERIFY(peer.connected());
    port.CloseComPort();
    peer.connection->disconnectFromHost();
    QTRY_VERIFY(!peer.connected());
    drainEvents();
    QCOMPARE(lost.count(), 0);
    QVERIFY(port.openDevice(peer.url("tcp")));
    QCOMPARE(peer.accepted, 2);
    QVERIFY(port.WriteComPort(QByteArray("x")));
    QTRY_COMPARE(peer.received, QByteArray("x"));
}

void NetworkTransportTest::bytesThatCameWhileClosedArePurged()
{
    Peer peer;
    ComPort port;
    QSignalSpy arrived(&port, &ComPort::dataArrived);
    QVERIFY(port.openDevice(peer.url("tcp")));
    QTRY_VERIFY(peer.connected());
    port.CloseComPort();
    peer.send("late");
    QTRY_VERIFY(!peer.connected());  // the far end has seen the old connection end
    QVERIFY(port.openDevice(peer.url("tcp")));
    QCOMPARE(port.BytesWaiting(), 0);
    peer.send("reply");
    QTRY_COMPARE(port.BytesWaiting(), 5);
    QCOMPARE(port.ReadComPort(5), QByteArray("reply"));
    QVERIFY(arrived.count() >= 1);
}

void NetworkTransportTest::telnetLineIsSetUpOnEveryOpenAndNegotiatedOnce()
{
    Peer peer(kModemState);
    ComPort port;
    TelnetCodec codec;
    const QByteArray offers = codec.start();
    const QByteArray setup = TelnetCodec::lineSetup(NetworkTransport::kBaudRate);
    QVERIFY(port.openDevice(peer.url("rfc2217")));
    QTRY_COMPARE(peer.received.toHex(' '), (offers + setup).toHex(' '));
    port.CloseComPort();
    QVERIFY(port.openDevice(peer.url("rfc2217")));
    QTRY_COMPARE(peer.received.toHex(' '), (offers + setup + setup).toHex(' '));
    QCOMPARE(peer.accepted, 1);
}

void NetworkTransportTest::telnetDataIsEscapedBothWays()
{
    Peer peer(kModemState);
    ComPort port;
    QVERIFY(port.openDevice(peer.url("rfc2217")));
    QTRY_VERIFY(peer.connected());
    QTRY_VERIFY(!peer.received.isEmpty());
    peer.received.clear();
    QVERIFY(port.WriteComPort(QByteArray::fromHex("aaff01")));
    QTRY_COMPARE(peer.received.toHex(' '), QByteArray::fromHex("aaffff01").toHex(' '));
    // A reply, an escaped 0xFF and a com-port answer cut in two.
    peer.send(QByteArray::fromHex("01ffff02fffa2c65"));
    QTRY_COMPARE(port.BytesWaiting(), 3);  // the first part taken before the rest is sent
    peer.send(QByteArray::fromHex("000012c0fff003"));
    QTRY_COMPARE(port.BytesWaiting(), 4);
    QCOMPARE(port.peekWaiting().toHex(' '), QByteArray::fromHex("01ff0203").toHex(' '));
}

void NetworkTransportTest::telnetServerRefusingTheLineFailsTheOpenWithItsWords()
{
    // As ser2net does it when another client has the line.
    Peer peer(QByteArray::fromHex("fffb03fffd2c") + "Port already in use\r\n", true);
    ComPort port;
    QVERIFY(!port.openDevice(peer.url("rfc2217")));
    QCOMPARE(port.openFailure(), OpenFailure::System);
    QCOMPARE(port.openFailureReason(), QStringLiteral("Port already in use"));
    // Silent and gone: the socket's words.
    Peer mute({}, true);
    QVERIFY(!port.openDevice(mute.url("rfc2217")));
    QCOMPARE(port.openFailureReason(), QStringLiteral("The remote host closed the connection"));
}

void NetworkTransportTest::telnetServerWithoutComPortOptionStillCarriesData()
{
    Peer peer(QByteArray::fromHex("fffe2c"));  // DONT COM-PORT-OPTION
    ComPort port;
    QVERIFY2(port.openDevice(peer.url("rfc2217")), qPrintable(port.openFailureReason()));
    QVERIFY(port.WriteComPort(QByteArray("ab")));
    QTRY_VERIFY(peer.received.endsWith("ab"));
}

QTEST_GUILESS_MAIN(NetworkTransportTest)
#include "network_transport_test.moc"
