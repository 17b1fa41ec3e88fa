#include "network_transport.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QRegularExpression>

#include <utility>

#if defined(Q_OS_LINUX)
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace velmor {

namespace {

// An RFC 2217 server answers the line settings and then sends the reply in a
// second small segment, which it holds back until the first is acknowledged;
// Linux delays that acknowledgement by up to 40 ms. Acknowledge at once (the
// kernel forgets the wish after a while, so it is asked for on every read).
void acknowledgeAtOnce(const QTcpSocket& socket)
{
#if defined(Q_OS_LINUX)
    const int on = 1;
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
#else
    Q_UNUSED(socket);
#endif
}

// What a server said when it refused the line, fit for a message: its first
// line, cut after kServerWordsMax characters. A server that sends a screenful
// of bytes instead must not flood the operator. (Control characters are
// escaped where the text is shown.)
constexpr int kServerWordsMax = 120;

QString serverWords(const QByteArray& bytes)
{
    const QString text = QString::fromLatin1(bytes).trimmed();
    const QString first = text.section(QRegularExpression(QStringLiteral("[\\r\\n]")), 0, 0);
    if (first.size() > kServerWordsMax)
        return first.left(kServerWordsMax) + QChar(0x2026);  // …
    return first.size() < text.size() ? first + QChar(0x2026) : first;
}

}  // namespace

NetworkTransport::NetworkTransport(const NetworkPort& address, QObject* parent)
    : LineTransport(parent), address_(address)
{
    idle_.setSingleShot(true);
    idle_.setInterval(kIdleDisconnectMs);
    connect(&idle_, &QTimer::timeout, &socket_, &QTcpSocket::disconnectFromHost);
    connect(&socket_, &QTcpSocket::readyRead, this, &NetworkTransport::takeIncoming);
    // Queued: a connection that fails inside write() is told after the write
    // has returned, when the exchange that wrote is waiting for its reply.
    connect(&socket_, &QTcpSocket::disconnected, this, &NetworkTransport::onConnectionEnded, Qt::QueuedConnection);
    connect(&socket_, &QTcpSocket::errorOccurred, this, &NetworkTransport::onConnectionEnded, Qt::QueuedConnection);
}

bool NetworkTransport::open(const QString&, QString& reason)
{
    idle_.stop();
    const bool fresh = !isConnected();
    // A new connection's first words may be the server's refusal of the line
    // ("Port already in use", then it hangs up): kept from the connect on, as
    // they may come before anything else is asked.
    settling_ = fresh && speaksTelnet();
    if (fresh && !connectToServer(reason)) {
        settling_ = false;
        return false;
    }
    if (!settling_) {
        // What came while the line was closed was never meant for this exchange.
        takeIncoming();
        queue_.clear();
    }
    if (speaksTelnet()) {
        socket_.write(TelnetCodec::lineSetup(kBaudRate));
        socket_.flush();
        if (fresh && !waitForTheLine(reason))
            return false;
    }
    open_ = true;
    return true;
}

bool NetworkTransport::connectToServer(QString& reason)
{
    socket_.abort();
    socket_.connectToHost(address_.host, address_.port);
    if (!waitUntil([this] { return isConnected(); })) {
        reason = socket_.state() == QAbstractSocket::UnconnectedState
                   ? socket_.errorString()
                   : QCoreApplication::translate("QAbstractSocket", "Socket operation timed out");
        socket_.abort();
        return false;
    }
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    if (speaksTelnet())
        socket_.write(telnet_.start());
    return true;
}

// A server may take the connection and then refuse the line, because another
// client holds it: it says why and hangs up. An answer to the line settings
// tells that the line is ours.
bool NetworkTransport::waitForTheLine(QString& reason)
{
    settling_ = true;
    const bool settled = waitUntil([this] { return telnet_.comPortSettled(); });
    takeIncoming();  // what came with the hang-up
    settling_ = false;
    const QString said = serverWords(std::exchange(queue_, {}));
    if (settled && isConnected())
        return true;
    if (!said.isEmpty())
        reason = said;
    else if (socket_.state() == QAbstractSocket::UnconnectedState)
        reason = socket_.errorString();
    else
        reason = QCoreApplication::translate("QAbstractSocket", "Socket operation timed out");
    socket_.abort();
    return false;
}

// The wait runs the event loop, so that a window keeps painting while a server
// far away makes up its mind. False when the time ran out first.
bool NetworkTransport::waitUntil(const std::function<bool()>& done)
{
    QEventLoop loop;
    QTimer timeout;
    timeout.setSingleShot(true);
    timeout.setTimerType(Qt::PreciseTimer);  // the time allowed, never less
    auto check = [&] {
        if (done() || socket_.state() == QAbstractSocket::UnconnectedState)
            loop.quit();
    };
    connect(&socket_, &QTcpSocket::stateChanged, &loop, check);
    connect(&socket_, &QTcpSocket::readyRead, &loop, check);
    connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    timeout.start(kConnectTimeoutMs);
    if (!done() && socket_.state() != QAbstractSocket::UnconnectedState)
        loop.exec();
    return done();
}

void NetworkTransport::close()
{
    if (!open_)
        return;
    open_ = false;
    queue_.clear();
    if (isConnected())
        idle_.start();
}

void NetworkTransport::write(QByteArrayView bytes)
{
    if (!open_)
        return;
    socket_.write(speaksTelnet() ? TelnetCodec::encodeData(bytes) : bytes.toByteArray());
    // QTcpSocket only queues what is written; hand the request over now.
    socket_.flush();
}

QByteArray NetworkTransport::readAll() { return std::exchange(queue_, {}); }

void NetworkTransport::takeIncoming()
{
    QByteArray data = socket_.readAll();
    acknowledgeAtOnce(socket_);
    if (data.isEmpty())
        return;
    if (speaksTelnet()) {
        TelnetCodec::Input in = telnet_.decode(data);
        if (!in.answer.isEmpty()) {
            socket_.write(in.answer);
            socket_.flush();
        }
        data = std::move(in.data);
    }
    // A closed line hears nothing, as a closed serial port; a full queue
    // loses what does not fit, as a driver's would.
    if ((!open_ && !settling_) || data.isEmpty())
        return;
    queue_.append(data.left(kQueueBytes - queue_.size()));
    if (open_)
        emit dataArrived();
}

void NetworkTransport::onConnectionEnded()
{
    // A connection that ends while the line is closed is simply forgotten:
    // the next open connects again.
    if (!open_ || isConnected())
        return;
    open_ = false;
    queue_.clear();
    socket_.abort();
    emit lost();
}

}  // namespace velmor
