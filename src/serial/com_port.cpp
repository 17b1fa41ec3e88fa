#include "com_port.h"

#include "published_port.h"

#include <QFileInfo>

namespace velmor {

ComPort::ComPort(QObject* parent) : QObject(parent)
{
    connect(&port_, &QSerialPort::readyRead, this, &ComPort::dataArrived);
    connect(&port_, &QSerialPort::errorOccurred, this, &ComPort::onError);
}

bool ComPort::OpenComPort(int n)
{
    const PortEntry* entry = findPort(ports_, n);
    if (!entry) {
        CloseComPort();
        return refuseOpen(OpenFailure::NoSuchPort);
    }
    return openDevice(entry->device);
}

bool ComPort::openDevice(const QString& device)
{
    CloseComPort();  // at most one port is open at a time
    if (isPublishedPort(device) && !publishedPortAlive(device))
        return refuseOpen(OpenFailure::PublisherGone);
    // The port's lock is named after the device it opens: open the real
    // device, so that a link and its target share one lock and never talk on
    // one line at once.
    const QString real = QFileInfo(device).canonicalFilePath();
    port_.setPortName(real.isEmpty() ? device : real);
    if (!port_.open(QIODevice::ReadWrite))
        return refuseOpen(OpenFailure::System, port_.errorString());
    portHandle_ = 1;
    openFailure_ = OpenFailure::None;
    openFailureReason_.clear();
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

bool ComPort::CloseComPort()
{
    if (portHandle_ > 0)
        port_.close();
    portHandle_ = 0;
    return true;
}

bool ComPort::WriteComPort(QByteArrayView bytes)
{
    if (portHandle_ <= 0)
        return false;
    port_.write(bytes.data(), bytes.size());
    // QSerialPort only queues what is written; hand the request to the line
    // now instead of after whatever the event loop has waiting.
    port_.flush();
    return true;
}

QByteArray ComPort::ReadComPort(qint32 minimum)
{
    if (portHandle_ <= 0 || port_.bytesAvailable() < minimum)
        return {};
    return port_.readAll();
}

QByteArray ComPort::peekWaiting()
{
    if (portHandle_ <= 0)
        return {};
    return port_.peek(port_.bytesAvailable());
}

qint32 ComPort::BytesWaiting() const
{
    return portHandle_ > 0 ? static_cast<qint32>(port_.bytesAvailable()) : 0;
}

bool ComPort::refuseOpen(OpenFailure why, const QString& reason)
{
    portHandle_ = -1;
    openFailure_ = why;
    openFailureReason_ = reason;
    return false;
}

void ComPort::onError(QSerialPort::SerialPortError error)
{
    // When the far end goes away the driver reports a read error over and over;
    // close on the first one and say so once.
    if (portHandle_ <= 0)
        return;
    if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError && error != QSerialPort::WriteError)
        return;
    port_.close();
    portHandle_ = 0;
    emit lost();
}

}  // namespace velmor
