#include "serial/port_list.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;

class PortListTest : public QObject {
    Q_OBJECT
private slots:
    void comNameGivesItsNumber_data();
    void comNameGivesItsNumber();
    void otherNamesAreNumberedByPosition();
    void numbersNameOnePortEach();
    void publishedLinksAreListedAfterSystemPorts();
    void deadLinksAreNotListed();
};

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
    QTemporaryDir devices;
    QFile device(devices.filePath(QStringLiteral("pts7")));
    QVERIFY(device.open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(device.fileName(), dir.filePath(QStringLiteral("SIM1"))));
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


QTEST_GUILESS_MAIN(PortListTest)
#include "port_list_test.moc"
