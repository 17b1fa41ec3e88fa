#pragma once

#include "line_transport.h"
#include "network_port.h"
#include "telnet_codec.h"

#include <QTcpSocket>
#include <QTimer>

#include <functional>

namespace velmor {

// A line behind a serial server: raw TCP, or telnet with the com-port option.
// The port operations open and close the line around every exchange; the
// connection outlives those closes and is given up only after a while without
// an open, so that a chained read costs one connection and the server's line
// is soon free for others.
class NetworkTransport : public LineTransport {
    Q_OBJECT
public:
    static constexpr quint32 kBaudRate = 4800;
    static constexpr qint64 kQueueBytes = 4096;
    // How long an open waits for the server to take the connection, and on
    // telnet for its answer to the line settings.
    static constexpr int kConnectTimeoutMs = 2000;
    // How long a closed line keeps its connection.
    static constexpr int kIdleDisconnectMs = 3000;

    explicit NetworkTransport(const NetworkPort& address, QObject* parent = nullptr);

    // `device` is the name of the address given at construction.
    bool open(const QString& device, QString& reason) override;
    void close() override;
    void write(QByteArrayView bytes) override;
    qint64 bytesAvailable() const override { return queue_.size(); }
    QByteArray peek(qint64 count) override { return queue_.left(count); }
    QByteArray readAll() override;

    bool isConnected() const { return socket_.state() == QAbstractSocket::ConnectedState; }

private:
    bool connectToServer(QString& reason);
    bool waitForTheLine(QString& reason);
    bool waitUntil(const std::function<bool()>& done);
    void takeIncoming();
    void onConnectionEnded();
    bool speaksTelnet() const { return address_.kind == NetworkPort::Kind::Rfc2217; }

    NetworkPort address_;
    QTcpSocket socket_;
    QTimer idle_;
    TelnetCodec telnet_;
    QByteArray queue_;
    bool open_ = false;
    bool settling_ = false;  // keeps what the server says before the line is ours
};

}  // namespace velmor
