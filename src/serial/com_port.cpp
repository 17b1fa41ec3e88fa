#include "com_port.h"

#include "network_port.h"
#include "network_transport.h"
#include "published_port.h"
#include "serial_transport.h"

namespace velmor {

ComPort::ComPort(QObject* parent) : QObject(parent) {}

ComPort::~ComPort() = default;

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
    QString reason;
    if (!transportFor(device).open(device, reason))
        return refuseOpen(OpenFailure::System, reason);
    portHandle_ = 1;
    openFailure_ = OpenFailure::None;
    openFailureReason_.clear();
    return true;
}

// One transport per kind of line, kept while the same device is opened again
// (a network line keeps its connection between exchanges).
LineTransport& ComPort::transportFor(const QString& device)
{
    if (!transport_ || transportDevice_ != device) {
        if (const std::optional<NetworkPort> address = networkPort(device))
            transport_ = std::make_unique<NetworkTransport>(*address);
        else
            transport_ = std::make_unique<SerialTransport>();
        transportDevice_ = device;
        connect(transport_.get(), &LineTransport::dataArrived, this, &ComPort::dataArrived);
        connect(transport_.get(), &LineTransport::lost, this, &ComPort::onLost);
    }
    return *transport_;
}

bool ComPort::CloseComPort()
{
    if (portHandle_ > 0)
        transport_->close();
    portHandle_ = 0;
    return true;
}

bool ComPort::WriteComPort(QByteArrayView bytes)
{
    if (portHandle_ <= 0)
        return false;
    transport_->write(bytes);
    return true;
}

QByteArray ComPort::ReadComPort(qint32 minimum)
{
    if (portHandle_ <= 0 || transport_->bytesAvailable() < minimum)
        return {};
    return transport_->readAll();
}

QByteArray ComPort::peekWaiting()
{
    if (portHandle_ <= 0)
        return {};
    return transport_->peek(transport_->bytesAvailable());
}

qint32 ComPort::BytesWaiting() const
{
    return portHandle_ > 0 ? static_cast<qint32>(transport_->bytesAvailable()) : 0;
}

bool ComPort::refuseOpen(OpenFailure why, const QString& reason)
{
    portHandle_ = -1;
    openFailure_ = why;
    openFailureReason_ = reason;
    return false;
}

void ComPort::onLost()
{
    if (portHandle_ <= 0)
        return;
    portHandle_ = 0;
    emit lost();
}

}  // namespace velmor
