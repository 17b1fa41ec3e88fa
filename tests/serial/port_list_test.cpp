#include "serial/port_list.h"
#include "serial/published_port.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;

namespace {

// A file that stands for a pseudo-terminal: links to it lead somewhere.
class FakeDevice {
public:
    FakeDevice() { QFile(path()).open(QIODevice::WriteOnly); }
    QString path() const { return dir_.filePath(QStringLiteral("pts7")); }

private:
    QTemporaryDir dir_;
};

}  // namespace

class PortListTest : public QObject {
    Q_OBJECT
private slots:
    void comNameGivesItsNumber_data();
    void comNameGivesItsNumber();
    void otherNamesAreNumberedByPosition();
    void numbersNameOnePortEach();
    void publishedLinksAreListedAfterSystemPorts();
    void deadLinksAreNotListed();
    void linksWithoutARunningOwnerAreNotListed();
    void aRunningOwnersNameIsNotTakenOver();
    void networkPortsComeLastNumberedPastTheHighest();
    void systemPortsAreListedAsTheSettingSays_data();
    void systemPortsAreListedAsTheSettingSays();
};

void PortListTest::systemPortsAreListedAsTheSettingSays_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("listed");
    QTest::newRow("unset lists all") << QString() << "ttyS0" << true;
    QTest::newRow("blank lists all") << " " << "ttyS0" << true;
    QTest::newRow("none lists none") << "none" << "ttyUSB0" << false;
    QTest::newRow("a pattern that fits") << "ttyUSB*,ttyACM*" << "ttyACM1" << true;
    QTest::newRow("a pattern that does not") << "ttyUSB*,ttyACM*" << "ttyS0" << false;
    QTest::newRow("a name as it stands") << " ttyS3 " << "ttyS3" << true;
    QTest::newRow("a name is whole") << "ttyS3" << "ttyS31" << false;
}

void PortListTest::systemPortsAreListedAsTheSettingSays()
{
    QFETCH(QString, setting);
    QFETCH(QString, name);
    QFETCH(bool, listed);
    const QByteArray before = qgetenv("VELMOR_SYSTEM_PORTS");
    if (setting.isNull())
        qunsetenv("VELMOR_SYSTEM_PORTS");
    else
        qputenv("VELMOR_SYSTEM_PORTS", setting.toUtf8());
    const bool result = systemPortListed(name);
    qputenv("VELMOR_SYSTEM_PORTS", before);
    QCOMPARE(result, listed);
}

void PortListTest::comNameGivesItsNumber_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::newRow("COM1") << "COM1" << 1;
    QTest::newRow("COM10") << "COM10" << 10;
    QTest::newRow("COM12") << "COM12" << 12;
}

void PortListTest::comNameGivesItsNumber()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QTemporaryDir empty;
    const QList<PortEntry> ports = listPorts({PortEntry{name, 0, QStringLiteral("/dev/x")}}, empty.path());
    QCOMPARE(ports.size(), 1);
    QCOMPARE(ports[0].name, name);
    QCOMPARE(ports[0].number, number);
}

void PortListTest::otherNamesAreNumberedByPosition()
{
    QTemporaryDir empty;
    const QList<PortEntry> ports = listPorts({PortEntry{QStringLiteral("ttyUSB1"), 0, QStringLiteral("/dev/ttyUSB1")},
                                              PortEntry{QStringLiteral("ttyUSB0"), 0, QStringLiteral("/dev/ttyUSB0")}},
                                             empty.path());
    QCOMPARE(ports.size(), 2);
    QCOMPARE(ports[0].name, QStringLiteral("ttyUSB0"));  // a stable order, by name
    QCOMPARE(ports[0].number, 1);
    QCOMPARE(ports[1].name, QStringLiteral("ttyUSB1"));
    QCOMPARE(ports[1].number, 2);
}

void PortListTest::numbersNameOnePortEach()
{
    QTemporaryDir empty;
    const auto port = [](const char* name) { return PortEntry{QString::fromLatin1(name), 0, QStringLiteral("/dev/x")}; };
    const QList<PortEntry> ports = listPorts({port("ttyUSB1"), port("COM3"), port("ttyUSB0"), port("COM1")}, empty.path());
    QCOMPARE(ports.size(), 4);
    QCOMPARE(ports[0].name, QStringLiteral("COM1"));
    QCOMPARE(ports[0].number, 1);
    QCOMPARE(ports[1].number, 3);
    QCOMPARE(ports[2].name, QStringLiteral("ttyUSB0"));
    QCOMPARE(ports[2].number, 4);  // its position, 3, belongs to COM3
    QCOMPARE(ports[3].number, 5);
}

void PortListTest::publishedLinksAreListedAfterSystemPorts()
{
    QTemporaryDir dir;
    const FakeDevice device;
    PublishedPort published;
    QString error;
    QVERIFY2(published.publish(dir.path(), QStringLiteral("SIM1"), device.path(), &error), qPrintable(error));
    const QList<PortEntry> ports = listPorts({PortEntry{QStringLiteral("ttyS0"), 0, QStringLiteral("/dev/ttyS0")}}, dir.path());
    QCOMPARE(ports.size(), 2);
    QCOMPARE(ports[1].name, QStringLiteral("SIM1"));
    QCOMPARE(ports[1].number, 2);
    QCOMPARE(ports[1].device, dir.filePath(QStringLiteral("SIM1")));
}

void PortListTest::deadLinksAreNotListed()
{
    QTemporaryDir dir;
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("gone")), dir.filePath(QStringLiteral("SIM9"))));
    QVERIFY(listPorts({}, dir.path()).isEmpty());
}

void PortListTest::linksWithoutARunningOwnerAreNotListed()
{
    QTemporaryDir dir;
    const FakeDevice device;
    // A link whose device is there but that no running line holds.
    QVERIFY(QFile::link(device.path(), dir.filePath(QStringLiteral("SIM2"))));
    QVERIFY(listPorts({}, dir.path()).isEmpty());
    // A lock left by a process that has ended: its number names no process
    // that runs (or one of another program), so the lock is stale.
    QFile lock(publishedPortLockPath(dir.filePath(QStringLiteral("SIM2"))));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.write("2147483646\nvelmor-sim\n\n");
    lock.close();
    QVERIFY(listPorts({}, dir.path()).isEmpty());
    // The dead owner's name is cleared on the way, and a new line may take it.
    QVERIFY(!QFileInfo(dir.filePath(QStringLiteral("SIM2"))).isSymLink());
    PublishedPort published;
    QString error;
    QVERIFY2(published.publish(dir.path(), QStringLiteral("SIM2"), device.path(), &error), qPrintable(error));
    QCOMPARE(listPorts({}, dir.path()).size(), 1);
    // The lock file itself is never listed as a port.
    QVERIFY(QFileInfo::exists(publishedPortLockPath(dir.filePath(QStringLiteral("SIM2")))));
    published.remove();
    QVERIFY(listPorts({}, dir.path()).isEmpty());
}

void PortListTest::aRunningOwnersNameIsNotTakenOver()
{
    QTemporaryDir dir;
    const FakeDevice device;
    PublishedPort first;
    PublishedPort second;
    QString error;
    QVERIFY(first.publish(dir.path(), QStringLiteral("SIM3"), device.path(), &error));
    QVERIFY(!second.publish(dir.path(), QStringLiteral("SIM3"), device.path(), &error));
    QVERIFY2(error.contains(QStringLiteral("already published")), qPrintable(error));
    QCOMPARE(listPorts({}, dir.path()).size(), 1);
}


void PortListTest::networkPortsComeLastNumberedPastTheHighest()
{
    const QList<PortEntry> system{{QStringLiteral("COM7"), 7, QStringLiteral("COM7")},
                                  {QStringLiteral("COM2"), 2, QStringLiteral("COM2")}};
    const QString raw = QStringLiteral("tcp://10.0.0.5:3001");
    const QString telnet = QStringLiteral("rfc2217://rack:2001");
    const QList<PortEntry> ports = withNetworkPorts(system, {raw, telnet, raw});
    QCOMPARE(ports.size(), 4);
    QCOMPARE(ports.mid(0, 2), system);
    QCOMPARE(ports[2], (PortEntry{raw, 8, raw}));
    QCOMPARE(ports[3], (PortEntry{telnet, 9, telnet}));
    // Already listed (a line given on the command line too): not again.
    QCOMPARE(withNetworkPorts(ports, {telnet}), ports);
    QCOMPARE(nextPortNumber({}), 1);
    QCOMPARE(withNetworkPorts({}, {raw}).first().number, 1);
}

QTEST_GUILESS_MAIN(PortListTest)
#include "port_list_test.moc"
