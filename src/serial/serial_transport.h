#pragma once

#include "line_transport.h"

#include <QSerialPort>

namespace velmor {

// A local serial port: a device path, or a symbolic link to one.
class SerialTransport : public LineTransport {
    Q_OBJECT
public:
    static constexpr qint32 kBaudRate = 4800;
    static constexpr qint64 kQueueBytes = 4096;

    explicit SerialTransport(QObject* parent = nullptr);

    bool open(const QString& device, QString& reason) override;
    void close() override;
    void write(QByteArrayView bytes) override;
    qint64 bytesAvailable() const override { return port_.bytesAvailable(); }
    QByteArray peek(qint64 count) override { return port_.peek(count); }
    QByteArray readAll() override { return port_.readAll(); }

private:
    void onError(QSerialPort::SerialPortError error);

    QSerialPort port_;
};

}  // namespace velmor
