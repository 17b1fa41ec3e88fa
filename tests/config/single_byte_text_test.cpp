#include "config/single_byte_text.h"

#include <QTest>

using namespace velmor;

class SingleByteTextTest : public QObject {
    Q_OBJECT

private slots:
    void asciiIsStoredAsIs_data();
    void asciiIsStoredAsIs();
    void muAndEpsilonTakeTheirWindows1253Bytes();
    void otherCharactersAreStoredAsQuestionMark_data();
    void otherCharactersAreStoredAsQuestionMark();
    void otherHighBytesReadAsQuestionMark_data();
    void otherHighBytesReadAsQuestionMark();
    void nulReadsBackAsNul();
    void everyByteThatReadsAsItselfWritesBackUnchanged();
};

void SingleByteTextTest::asciiIsStoredAsIs_data()
{
    QTest::addColumn<char16_t>("ch");
    QTest::newRow("nul") << char16_t{0};
    QTest::newRow("blank") << char16_t{u' '};
    QTest::newRow("letter") << char16_t{u'T'};
    QTest::newRow("digit") << char16_t{u'6'};
    QTest::newRow("tilde") << char16_t{u'~'};
    QTest::newRow("delete") << char16_t{0x7F};
}

void SingleByteTextTest::asciiIsStoredAsIs()
{
    QFETCH(char16_t, ch);
    QCOMPARE(toSingleByte(ch), static_cast<quint8>(ch));
    QCOMPARE(fromSingleByte(static_cast<quint8>(ch)), ch);
}

void SingleByteTextTest::muAndEpsilonTakeTheirWindows1253Bytes()
{
    QCOMPARE(toSingleByte(u'\u03BC'), quint8{0xEC});
    QCOMPARE(toSingleByte(u'\u03B5'), quint8{0xE5});
    QCOMPARE(fromSingleByte(0xEC), u'\u03BC');
    QCOMPARE(fromSingleByte(0xE5), u'\u03B5');
}

void SingleByteTextTest::otherCharactersAreStoredAsQuestionMark_data()
{
    QTest::addColumn<char16_t>("ch");
    QTest::newRow("latin-1 e acute") << char16_t{u'\u00E9'};
    QTest::newRow("micro sign") << char16_t{u'\u00B5'};
    QTest::newRow("capital mu") << char16_t{u'\u039C'};
    QTest::newRow("euro") << char16_t{u'\u20AC'};
    QTest::newRow("degree celsius") << char16_t{u'\u2103'};
    QTest::newRow("chinese") << char16_t{u'\u4E2D'};
    QTest::newRow("high surrogate") << char16_t{0xD83D};
    QTest::newRow("last unit") << char16_t{0xFFFF};
}

void SingleByteTextTest::otherCharactersAreStoredAsQuestionMark()
{
    QFETCH(char16_t, ch);
    QCOMPARE(toSingleByte(ch), quint8{'?'});
}

void SingleByteTextTest::otherHighBytesReadAsQuestionMark_data()
{
    QTest::addColumn<quint8>("byte");
    for (int b : {0x80, 0xB5, 0xCC, 0xE4, 0xE6, 0xEB, 0xED, 0xFF})
        QTest::newRow(qPrintable(QStringLiteral("0x%1").arg(b, 2, 16))) << static_cast<quint8>(b);
}

void SingleByteTextTest::otherHighBytesReadAsQuestionMark()
{
    QFETCH(quint8, byte);
    QCOMPARE(fromSingleByte(byte), u'?');
}

void SingleByteTextTest::nulReadsBackAsNul()
{
    QCOMPARE(fromSingleByte(0), char16_t{0});
    QCOMPARE(toSingleByte(0), quint8{0});
}

void SingleByteTextTest::everyByteThatReadsAsItselfWritesBackUnchanged()
{
    for (int b = 0; b < 256; ++b) {
        const auto byte = static_cast<quint8>(b);
        const char16_t ch = fromSingleByte(byte);
        const quint8 back = toSingleByte(ch);
        if (ch == u'?' && b != '?')
            QCOMPARE(back, quint8{'?'});
        else
            QCOMPARE(back, byte);
    }
}

QTEST_GUILESS_MAIN(SingleByteTextTest)
#include "single_byte_text_test.moc"
