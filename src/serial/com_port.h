#pragma once

#include "line_transport.h"
#include "port_list.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QObject>

#include <memory>

namespace velmor {

// Why the last open failed.
enum class OpenFailure {
    None,
    NoSuchPort,     // no port has that number
    PublisherGone,  // a published port whose simulator no longer runs
    System,         // the system refused; openFailureReason() says why
};

// The five port operations on one line at 4800 baud 8N1, local or on a
// serial server. At most one port is open at a time; every operation is safe
// on a closed or failed port.
class ComPort : public QObject {
    Q_OBJECT
public:
    explicit ComPort(QObject* parent = nullptr);
    ~ComPort() override;

    // The ports that OpenComPort(n) chooses from.
    void setPorts(const QList<PortEntry>& ports) { ports_ = ports; }
    const QList<PortEntry>& ports() const { return ports_; }

    // Opens the port numbered n in the list, purging whatever was queued.
    bool OpenComPort(int n);
    bool openDevice(const QString& device);
    bool CloseComPort();
    // True when a port was open, whatever the write itself did.
    bool WriteComPort(QByteArrayView bytes);
    // Everything waiting once at least `minimum` bytes wait; otherwise empty,
    // and the bytes stay queued. Never blocks.
    QByteArray ReadComPort(qint32 minimum);
    // What a reply check looks at without taking it from the queue.
    QByteArray peekWaiting();
    qint32 BytesWaiting() const;

    OpenFailure openFailure() const { return openFailure_; }
    // The system's words for an OpenFailure::System.
    QString openFailureReason() const { return openFailureReason_; }

    // 0 closed, -1 after a failed open, positive while open.
    qint32 portHandle() const { return portHandle_; }
    bool isOpen() const { return portHandle_ > 0; }

signals:
    void dataArrived();
    // The device went away or failed while open; the port has been closed once.
    void lost();

private:
    LineTransport& transportFor(const QString& device);
    void onLost();
    bool refuseOpen(OpenFailure why, const QString& reason = {});

    std::unique_ptr<LineTransport> transport_;
    QString transportDevice_;
    QList<PortEntry> ports_;
    qint32 portHandle_ = 0;
    OpenFailure openFailure_ = OpenFailure::None;
    QString openFailureReason_;
};

}  // namespace velmor
