#include "serial/network_port.h"

#include <QTest>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::NetworkPort)

class NetworkPortTest : public QObject {
    Q_OBJECT
private slots:
    void addressesAreTakenApart_data();
    void addressesAreTakenApart();
    void otherNamesAreNoNetworkPort_data();
    void otherNamesAreNoNetworkPort();
};

void NetworkPortTest::addressesAreTakenApart_data()
{
    using Kind = NetworkPort::Kind;
    QTest::addColumn<QString>("device");
    QTest::addColumn<NetworkPort>("expected");
    QTest::newRow("raw") << QStringLiteral("tcp://127.0.0.1:2001") << NetworkPort{Kind::Raw, QStringLiteral("127.0.0.1"), 2001};
    QTest::newRow("rfc2217") << QStringLiteral("rfc2217://serial-server:7000")
                             << NetworkPort{Kind::Rfc2217, QStringLiteral("serial-server"), 7000};
    QTest::newRow("ipv6") << QStringLiteral("rfc2217://[::1]:4001") << NetworkPort{Kind::Rfc2217, QStringLiteral("::1"), 4001};
    QTest::newRow("highest port") << QStringLiteral("tcp://h:65535") << NetworkPort{Kind::Raw, QStringLiteral("h"), 65535};
}

void NetworkPortTest::addressesAreTakenApart()
{
    QFETCH(QString, device);
    QFETCH(NetworkPort, expected);
    const std::optional<NetworkPort> port = networkPort(device);
    QVERIFY(port.has_value());
    QCOMPARE(port->kind, expected.kind);
    QCOMPARE(port->host, expected.host);
    QCOMPARE(port->port, expected.port);
    QVERIFY(isNetworkPort(device));
}

void NetworkPortTest::otherNamesAreNoNetworkPort_data()
{
    QTest::addColumn<QString>("device");
    for (const char* device : {"/dev/ttyUSB0", "SIM1", "3", "tcp://127.0.0.1", "tcp://:2000", "tcp://host:0",
                               "tcp://host:65536", "tcp://host:20a", "udp://host:2000", "telnet://host:23",
                               "tcp://host:2000/path", "tcp://host:2000?x=1", "tcp://user@host:2000", "tcp:/host:2000"})
        QTest::newRow(device) << QString::fromLatin1(device);
}

void NetworkPortTest::otherNamesAreNoNetworkPort()
{
    QFETCH(QString, device);
    QVERIFY(!networkPort(device).has_value());
    QVERIFY(!isNetworkPort(device));
}

QTEST_GUILESS_MAIN(NetworkPortTest)
#include "network_port_test.moc"
