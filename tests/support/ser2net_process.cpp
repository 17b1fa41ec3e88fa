#include "ser2net_process.h"

#include <QFile>
#include <QHostAddress>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTest>

#include <memory>
#include <vector>

namespace velmor::testing {
namespace {

// ser2net lives in sbin, which a user's PATH may leave out.
const QStringList kSbinFolders{QStringLiteral("/usr/sbin"), QStringLiteral("/usr/local/sbin"), QStringLiteral("/sbin")};

// The local ports on which something listens, from the kernel's own table
// (looking, unlike connecting, does not make ser2net open its device).
QList<quint16> listeningPorts()
{
    constexpr int kLocalAddress = 1;
    constexpr int kState = 3;
    const QByteArray kListen = "0A";
    QFile table(QStringLiteral("/proc/net/tcp"));
    if (!table.open(QIODevice::ReadOnly))
        return {};
    QList<quint16> ports;
    table.readLine();  // the heading
    while (!table.atEnd()) {
        const QList<QByteArray> fields = table.readLine().simplified().split(' ');
        if (fields.size() <= kState || fields[kState] != kListen)
            continue;
        const QByteArray address = fields[kLocalAddress];
        ports.append(static_cast<quint16>(address.mid(address.indexOf(':') + 1).toUInt(nullptr, 16)));
    }
    return ports;
}

}  // namespace

quint16 unusedLocalPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

QString Ser2netProcess::executable()
{
    const QString inPath = QStandardPaths::findExecutable(QStringLiteral("ser2net"));
    return inPath.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("ser2net"), kSbinFolders) : inPath;
}

int Ser2netProcess::addConnection(Accepter accepter, const QString& device, const QString& lineSettings)
{
    connections_.append({accepter, device, lineSettings});
    return static_cast<int>(connections_.size() - 1);
}

bool Ser2netProcess::start(int timeoutMs)
{
    if (executable().isEmpty()) {
        error_ = QStringLiteral("ser2net is not installed");
        return false;
    }
    const QString config = dir_.filePath(QStringLiteral("ser2net.yaml"));
    if (!dir_.isValid() || !pickPorts() || !writeConfiguration(config)) {
        error_ = QStringLiteral("cannot prepare the configuration in %1").arg(dir_.path());
        return false;
    }
    // -n: stay in the foreground; -u: no UUCP lock, so that the device's lock
    // stays the serial code's own; -P: the pid file in our folder.
    process_.start(executable(), {QStringLiteral("-n"), QStringLiteral("-u"), QStringLiteral("-P"),
                                  dir_.filePath(QStringLiteral("ser2net.pid")), QStringLiteral("-c"), config});
    if (!process_.waitForStarted()) {
        error_ = process_.errorString();
        return false;
    }
    if (QTest::qWaitFor([this] { return !isRunning() || allListening(); }, timeoutMs) && isRunning())
        return true;
    error_ = QStringLiteral("ser2net did not listen: ") + QString::fromLocal8Bit(process_.readAllStandardError());
    stop();
    return false;
}

QString Ser2netProcess::url(int index) const
{
    const Connection& c = connections_.at(index);
    const QString scheme = c.accepter == Accepter::Raw ? QStringLiteral("tcp") : QStringLiteral("rfc2217");
    return QStringLiteral("%1://127.0.0.1:%2").arg(scheme).arg(c.port);
}

void Ser2netProcess::stop(int timeoutMs)
{
    if (!isRunning())
        return;
    process_.terminate();
    if (!process_.waitForFinished(timeoutMs)) {
        process_.kill();
        process_.waitForFinished();
    }
}

bool Ser2netProcess::pickPorts()
{
    // Every server stays open until all ports are chosen, so that no two
    // connections get the same one.
    std::vector<std::unique_ptr<QTcpServer>> servers;
    for (Connection& c : connections_) {
        auto server = std::make_unique<QTcpServer>();
        if (!server->listen(QHostAddress::LocalHost, 0))
            return false;
        c.port = server->serverPort();
        servers.push_back(std::move(server));
    }
    return true;
}

bool Ser2netProcess::writeConfiguration(const QString& path) const
{
    QString text = QStringLiteral("%YAML 1.1\n---\n");
    for (qsizetype i = 0; i < connections_.size(); ++i) {
        const Connection& c = connections_[i];
        const QString accepter = c.accepter == Accepter::Raw ? QStringLiteral("tcp") : QStringLiteral("telnet(rfc2217),tcp");
        text += QStringLiteral("connection: &line%1\n  accepter: %2,127.0.0.1,%3\n  connector: serialdev,%4,%5,local\n")
                    .arg(i)
                    .arg(accepter)
                    .arg(c.port)
                    .arg(c.device, c.lineSettings);
    }
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) == text.toUtf8().size();
}

bool Ser2netProcess::allListening() const
{
    const QList<quint16> listening = listeningPorts();
    for (const Connection& c : connections_)
        if (!listening.contains(c.port))
            return false;
    return true;
}

}  // namespace velmor::testing
