#include "model/number_text.h"

#include <QTest>

using namespace velmor;

class NumberTextTest : public QObject {
    Q_OBJECT

private slots:
    void cutoffPicture_data();
    void cutoffPicture();
    void coefPicture_data();
    void coefPicture();
    void wholePicture_data();
    void wholePicture();
    void thousandthsPicture_data();
    void thousandthsPicture();
    void cutoffPictureDropsZeroBeforePoint();
    void leadingNumber_data();
    void leadingNumber();
    void cutoffTextReadsBackToItsValue();
    void wholeNumberWithin_data();
    void wholeNumberWithin();
};

namespace {

void addPictureColumns()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
}

}  // namespace

void NumberTextTest::cutoffPicture_data()
{
    addPictureColumns();
    QTest::newRow("0.5") << 0.5 << ".50000";
    QTest::newRow("0") << 0.0 << ".00000";
    QTest::newRow("-0.5") << -0.5 << "-.50000";
    QTest::newRow("1.52593") << 50000.0 / 32767 << "1.52593";
    QTest::newRow("980.39216") << 50000.0 / 51 << "980.39216";
    QTest::newRow("10.5") << 10.5 << "10.50000";
    QTest::newRow("50000") << 50000.0 << "50000.00000";
    QTest::newRow("no separator above 99999") << 123456.7 << "123456.70000";
}

void NumberTextTest::cutoffPicture()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(formatNumber(value, kCutoffPicture), text);
}

void NumberTextTest::coefPicture_data()
{
    addPictureColumns();
    QTest::newRow("2") << 2.0 << "2.00";
    QTest::newRow("2.1") << 2.1 << "2.10";
    QTest::newRow("2.125") << 2.125 << "2.125";
    QTest::newRow("2.1256 float") << double(2.1256f) << "2.126";
    QTest::newRow("2.1204") << 2.1204 << "2.12";
    QTest::newRow("0") << 0.0 << "0.00";
    QTest::newRow("0.5") << 0.5 << "0.50";
    QTest::newRow("1234.5") << 1234.5 << "1234.50";
}

void NumberTextTest::coefPicture()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(formatNumber(value, kCoefPicture), text);
}

void NumberTextTest::wholePicture_data()
{
    addPictureColumns();
    QTest::newRow("500000") << 500000.0 << "500000";
    QTest::newRow("1999.6") << 1999.6 << "2000";
    QTest::newRow("0") << 0.0 << "0";
    QTest::newRow("0.4") << 0.4 << "0";
    QTest::newRow("no separator") << 1234567.0 << "1234567";
}

void NumberTextTest::wholePicture()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(formatNumber(value, kWholePicture), text);
}

void NumberTextTest::thousandthsPicture_data()
{
    addPictureColumns();
    QTest::newRow("500000") << 500000.0 << "500000.000";
    QTest::newRow("2") << 2.0 << "2.000";
    QTest::newRow("0.25") << 0.25 << "0.250";
    QTest::newRow("0") << 0.0 << "0.000";
    QTest::newRow("1.23456") << 1.23456 << "1.235";
}

void NumberTextTest::thousandthsPicture()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(formatNumber(value, kThousandthsPicture), text);
}

void NumberTextTest::cutoffPictureDropsZeroBeforePoint()
{
    QCOMPARE(formatNumber(0.123456, kCutoffPicture), QStringLiteral(".12346"));
    QCOMPARE(formatNumber(0.123456, kThousandthsPicture), QStringLiteral("0.123"));
}

void NumberTextTest::leadingNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("10.0V") << "10.0V" << 10.0;
    QTest::newRow("4mA") << "4mA" << 4.0;
    QTest::newRow("4mA恒流源") << "4mA恒流源" << 4.0;
    QTest::newRow("100uA") << "100uA" << 100.0;
    QTest::newRow("1.25V") << "1.25V" << 1.25;
    QTest::newRow("1000") << "1000" << 1000.0;
    QTest::newRow("断开") << "断开" << 0.0;
    QTest::newRow("No Setup") << "No Setup" << 0.0;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow(".50000") << ".50000" << 0.5;
    QTest::newRow("blanks first") << "  12" << 12.0;
    QTest::newRow("minus") << "-5" << -5.0;
    QTest::newRow("plus point") << "+.5" << 0.5;
    QTest::newRow("exponent") << "1e3" << 1000.0;
    QTest::newRow("bare e") << "2e" << 2.0;
    QTest::newRow("second point ends it") << "1.2.3" << 1.2;
    QTest::newRow("point alone") << "." << 0.0;
    QTest::newRow("sign alone") << "-" << 0.0;
    QTest::newRow("too large") << "1e999" << 0.0;
    QTest::newRow("full-width digit") << "５" << 0.0;
}

void NumberTextTest::leadingNumber()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(velmor::leadingNumber(text), value);
}

void NumberTextTest::cutoffTextReadsBackToItsValue()
{
    QCOMPARE(velmor::leadingNumber(formatNumber(50000.0 / 51, kCutoffPicture)), 980.39216);
    QCOMPARE(velmor::leadingNumber(formatNumber(0.5, kCutoffPicture)), 0.5);
}

void NumberTextTest::wholeNumberWithin_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("highest");
    QTest::addColumn<int>("expected");  // -1: refused
    QTest::newRow("top of the module number") << "65535" << 65535 << 65535;
    QTest::newRow("one past it") << "65536" << 65535 << -1;
    QTest::newRow("version 255") << "255" << 255 << 255;
    QTest::newRow("version 256") << "256" << 255 << -1;
    QTest::newRow("half rounds to even, down") << "2.5" << 255 << 2;
    QTest::newRow("half rounds to even, up") << "3.5" << 255 << 4;
    QTest::newRow("255.5 rounds to 256") << "255.5" << 255 << -1;
    QTest::newRow("254.5 rounds to 254") << "254.5" << 255 << 254;
    QTest::newRow("empty reads as 0") << "" << 255 << 0;
    QTest::newRow("leading number of a pasted text") << "12ab" << 255 << 12;
    QTest::newRow("negative") << "-1" << 255 << -1;
    QTest::newRow("minus a half rounds to zero") << "-0.5" << 255 << 0;
    QTest::newRow("huge") << "1e300" << 65535 << -1;
}

void NumberTextTest::wholeNumberWithin()
{
    QFETCH(QString, text);
    QFETCH(int, highest);
    QFETCH(int, expected);
    QCOMPARE(velmor::wholeNumberWithin(text, highest).value_or(-1), expected);
}

QTEST_APPLESS_MAIN(NumberTextTest)
#include "number_text_test.moc"
