#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QObject>
#include <QString>

namespace velmor {

// What carries the bytes of one line at 4800 baud 8N1: a local serial port,
// or a connection to a serial server on the network. The port operations
// above it never know which.
class LineTransport : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~LineTransport() override;

    // Opens the line with its settings and purges whatever was queued on it.
    // On failure, `reason` holds the system's words.
    virtual bool open(const QString& device, QString& reason) = 0;
    virtual void close() = 0;
    // Hands the bytes to the line at once.
    virtual void write(QByteArrayView bytes) = 0;
    virtual qint64 bytesAvailable() const = 0;
    virtual QByteArray peek(qint64 count) = 0;
    virtual QByteArray readAll() = 0;

signals:
    void dataArrived();
    // The line went away or failed while open; the transport has closed it.
    void lost();
};

}  // namespace velmor
