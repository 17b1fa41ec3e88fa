#include "serial_transport.h"

#include <QFileInfo>

namespace velmor {

SerialTransport::SerialTransport(QObject* parent) : LineTransport(parent)
{
    connect(&port_, &QSerialPort::readyRead, this, &LineTransport::dataArrived);
    connect(&port_, &QSerialPort::errorOccurred, this, &SerialTransport::onError);
}

bool SerialTransport::open(const QString& device, QString& reason)
{
    // The port's lock is named after the device it opens: open the real
    // device, so that a link and its target share one lock and never talk on
    // one line at once.
    const QString real = QFileInfo(device).canonicalFilePath();
    port_.setPortName(real.isEmpty() ? device : real);
    if (!port_.open(QIODevice::ReadWrite)) {
        reason = port_.errorString();
        return false;
    }
    // The line settings are not checked: a port that refuses them still counts
    // as open, and a wrong setting shows up as a missing reply.
    port_.setBaudRate(kBaudRate);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setReadBufferSize(kQueueBytes);
    // Bytes queued before the open (a late reply, noise) must not be taken as
    // the answer to what we are about to send.
    port_.clear();
    return true;
}

void SerialTransport::close()
{
    if (port_.isOpen())
        port_.close();
}

void SerialTransport::write(QByteArrayView bytes)
{
    port_.write(bytes.data(), bytes.size());
    // QSerialPort only queues what is written; hand the request to the line
    // now instead of after whatever the event loop has waiting.
    port_.flush();
}

void SerialTransport::onError(QSerialPort::SerialPortError error)
{
    // When the far end goes away the driver reports a read error over and over;
    // close on the first one and say so once.
    if (!port_.isOpen())
        return;
    if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError && error != QSerialPort::WriteError)
        return;
    port_.close();
    emit lost();
}

}  // namespace velmor
