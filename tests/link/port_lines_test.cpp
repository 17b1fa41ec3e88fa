#include "link/port_lines.h"

#include <QTest>

using namespace velmor;

// The lines both front ends offer: numbered by place, the modules kept on
// their line by its device when a new port shifts the numbers, and a line
// named on the command line joining the end.
class PortLinesTest : public QObject {
    Q_OBJECT
private slots:
    void networkLinesFollowTheMachinesPorts();
    void aModuleKeepsItsLineWhenANewPortShiftsTheNumbers();
    void aLineIsNamedByNumberNameDeviceOrAddress();
};

void PortLinesTest::networkLinesFollowTheMachinesPorts()
{
    PortLines lines;
    ModuleTable table{};
    lines.update({{"SIM1", 1, "/dev/pts/7"}}, {"tcp://rack:4001"}, table);
    QCOMPARE(lines.ports().size(), 2);
    QCOMPARE(lines.ports()[1].device, QStringLiteral("tcp://rack:4001"));
    QCOMPARE(lines.ports()[1].number, 2);
    QCOMPARE(lines.find(2)->name, QStringLiteral("tcp://rack:4001"));
    QVERIFY(!lines.find(3));
}

void PortLinesTest::aModuleKeepsItsLineWhenANewPortShiftsTheNumbers()
{
    PortLines lines;
    ModuleTable table{};
    lines.update({{"SIM1", 1, "/dev/pts/7"}, {"SIM2", 2, "/dev/pts/9"}}, {"tcp://rack:4001"}, table);
    table[0].portNumber = 2;  // found on SIM2
    table[1].portNumber = 3;  // found on the network line
    lines.update({{"SIM0", 1, "/dev/pts/3"}, {"SIM1", 2, "/dev/pts/7"}, {"SIM2", 3, "/dev/pts/9"}},
                 {"tcp://rack:4001"}, table);
    QCOMPARE(lines.find(table[0].portNumber)->device, QStringLiteral("/dev/pts/9"));
    QCOMPARE(lines.find(table[1].portNumber)->device, QStringLiteral("tcp://rack:4001"));
}

void PortLinesTest::aLineIsNamedByNumberNameDeviceOrAddress()
{
    PortLines lines;
    ModuleTable table{};
    lines.update({{"SIM1", 1, "/dev/pts/7"}}, {}, table);
    QCOMPARE(lines.resolve("1")->device, QStringLiteral("/dev/pts/7"));
    QCOMPARE(lines.resolve("SIM1")->number, 1);
    QCOMPARE(lines.resolve("/dev/pts/7")->name, QStringLiteral("SIM1"));
    QVERIFY(!lines.resolve("SIM9"));
    QCOMPARE(lines.ports().size(), 1);

    const std::optional<PortEntry> path = lines.resolve("/dev/ttyUSB3");
    QCOMPARE(path->name, QStringLiteral("ttyUSB3"));
    QCOMPARE(path->number, 2);
    const std::optional<PortEntry> network = lines.resolve("rfc2217://rack:4002");
    QCOMPARE(network->name, QStringLiteral("rfc2217://rack:4002"));
    QCOMPARE(network->number, 3);
    QCOMPARE(lines.ports().size(), 3);
    QCOMPARE(lines.resolve("/dev/ttyUSB3")->number, 2);  // listed now, not added twice
    QCOMPARE(lines.ports().size(), 3);
}

QTEST_GUILESS_MAIN(PortLinesTest)
#include "port_lines_test.moc"
