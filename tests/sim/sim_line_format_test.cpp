// The line settings the simulated line reads back from its pseudo-terminal:
// what a program, or a serial server in front of the line, has set.

#include "sim/line_format.h"
#include "sim/virtual_line.h"

#include <QSerialPort>
#include <QTest>

#include <termios.h>

using namespace velmor;
using namespace velmor::sim;

Q_DECLARE_METATYPE(velmor::sim::LineFormat)

class SimLineFormatTest : public QObject {
    Q_OBJECT
private slots:
    void settingsAreReadFromTheTerminalFlags_data();
    void settingsAreReadFromTheTerminalFlags();
    void lineReadsWhatTheProgramSet_data();
    void lineReadsWhatTheProgramSet();
    void closedLineHasNoSettings();
};

void SimLineFormatTest::settingsAreReadFromTheTerminalFlags_data()
{
    QTest::addColumn<speed_t>("speed");
    QTest::addColumn<uint>("flags");
    QTest::addColumn<QString>("text");
    QTest::newRow("4800 8N1") << speed_t(B4800) << uint(CS8) << QStringLiteral("4800 8N1");
    QTest::newRow("9600 7E1") << speed_t(B9600) << uint(CS7 | PARENB) << QStringLiteral("9600 7E1");
    QTest::newRow("19200 8O2") << speed_t(B19200) << uint(CS8 | PARENB | PARODD | CSTOPB) << QStringLiteral("19200 8O2");
    QTest::newRow("300 5N2") << speed_t(B300) << uint(CS5 | CSTOPB) << QStringLiteral("300 5N2");
    QTest::newRow("rate without a number") << speed_t(B134) << uint(CS6) << QStringLiteral("0 6N1");
}

void SimLineFormatTest::settingsAreReadFromTheTerminalFlags()
{
    QFETCH(speed_t, speed);
    QFETCH(uint, flags);
    QFETCH(QString, text);
    termios settings{};
    settings.c_cflag = static_cast<tcflag_t>(flags);
    QCOMPARE(::cfsetospeed(&settings, speed), 0);
    QCOMPARE(lineFormatOf(settings).text(), text);
}

void SimLineFormatTest::lineReadsWhatTheProgramSet_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<QSerialPort::StopBits>("stopBits");
    QTest::addColumn<QString>("text");
    QTest::newRow("4800 one stop bit") << 4800 << QSerialPort::OneStop << QStringLiteral("4800 8N1");
    QTest::newRow("9600 two stop bits") << 9600 << QSerialPort::TwoStop << QStringLiteral("9600 8N2");
}

void SimLineFormatTest::lineReadsWhatTheProgramSet()
{
    QFETCH(int, baud);
    QFETCH(QSerialPort::StopBits, stopBits);
    QFETCH(QString, text);
    VirtualLine line(LineSettings{});
    QString error;
    QVERIFY2(line.open(&error), qPrintable(error));
    QSerialPort port(line.devicePath());
    QVERIFY2(port.open(QIODevice::ReadWrite), qPrintable(port.errorString()));
    QVERIFY(port.setBaudRate(baud));
    QVERIFY(port.setStopBits(stopBits));
    QCOMPARE(line.lineFormat().value_or(LineFormat{}).text(), text);
}

void SimLineFormatTest::closedLineHasNoSettings()
{
    VirtualLine line(LineSettings{});
    QVERIFY(!line.lineFormat().has_value());
    QVERIFY(line.open(nullptr));
    QVERIFY(line.lineFormat().has_value());
    line.vanish();
    QVERIFY(!line.lineFormat().has_value());
}

QTEST_GUILESS_MAIN(SimLineFormatTest)
#include "sim_line_format_test.moc"
