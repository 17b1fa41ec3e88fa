#include "model/key_filters.h"

#include <QTest>

using namespace velmor;

namespace {

// A decimal box with the caret at the end: each key goes through the filter
// and, when it passes, lands at the caret.
QString typeIntoDecimalBox(QString text, QStringView keys)
{
    for (QChar key : keys) {
        const char16_t passed = FilterDecimalKey(key.unicode(), text, int(text.size()), 0);
        if (passed != 0)
            text.append(QChar(passed));
    }
    return text;
}

bool isDigit(int key)
{
    return key >= '0' && key <= '9';
}

}  // namespace

class KeyFiltersTest : public QObject {
    Q_OBJECT

private slots:
    void digitKeyPassesOnlyDigitsAndBackspace();
    void decimalKeyOnEmptyBox_data();
    void decimalKeyOnEmptyBox();
    void typing1Dot2Dot3IntoEmptyBoxYields1Point23();
    void digitBeforeMinusIsSwallowedAndAfterItAccepted();
    void digitReplacingSelectedMinusIsAccepted();
    void secondPointIsSwallowed();
    void minusIsNeverTyped();
    void pastedTextIsJudgedOnlyKeyByKey();
};

void KeyFiltersTest::digitKeyPassesOnlyDigitsAndBackspace()
{
    for (int key = 0; key <= 0xFFFF; ++key) {
        const auto k = static_cast<char16_t>(key);
        const char16_t expected = isDigit(key) || key == 8 ? k : char16_t{0};
        QCOMPARE(FilterDigitKey(k), expected);
    }
}

void KeyFiltersTest::decimalKeyOnEmptyBox_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("result");
    for (char key = '0'; key <= '9'; ++key)
        QTest::addRow("digit %c", key) << int(key) << int(key);
    QTest::newRow("point") << int('.') << int('.');
    QTest::newRow("backspace") << 8 << 8;
    QTest::newRow("minus") << int('-') << 0;
    QTest::newRow("plus") << int('+') << 0;
    QTest::newRow("comma") << int(',') << 0;
    QTest::newRow("letter e") << int('e') << 0;
    QTest::newRow("blank") << int(' ') << 0;
    QTest::newRow("enter") << 13 << 0;
    QTest::newRow("full-width five") << 0xFF15 << 0;
}

void KeyFiltersTest::decimalKeyOnEmptyBox()
{
    QFETCH(int, key);
    QFETCH(int, result);
    QCOMPARE(int(FilterDecimalKey(static_cast<char16_t>(key), u"", 0, 0)), result);
}

void KeyFiltersTest::typing1Dot2Dot3IntoEmptyBoxYields1Point23()
{
    QCOMPARE(typeIntoDecimalBox(QString(), u"1.2.3"), QStringLiteral("1.23"));
}

void KeyFiltersTest::digitBeforeMinusIsSwallowedAndAfterItAccepted()
{
    QCOMPARE(FilterDecimalKey(u'7', u"-5", 0, 0), char16_t{0});
    QCOMPARE(FilterDecimalKey(u'7', u"-5", 1, 0), u'7');
    QCOMPARE(FilterDecimalKey(u'7', u"-5", 2, 0), u'7');
    QCOMPARE(FilterDecimalKey(kBackspaceKey, u"-5", 0, 0), kBackspaceKey);
}

void KeyFiltersTest::digitReplacingSelectedMinusIsAccepted()
{
    QCOMPARE(FilterDecimalKey(u'7', u"-5", 0, 1), u'7');
    QCOMPARE(FilterDecimalKey(u'7', u"-5", 0, 2), u'7');
}

void KeyFiltersTest::secondPointIsSwallowed()
{
    QCOMPARE(FilterDecimalKey(u'.', u"1.5", 3, 0), char16_t{0});
    QCOMPARE(FilterDecimalKey(u'.', u"1.5", 0, 3), char16_t{0});  // even over a selected point
    QCOMPARE(FilterDecimalKey(u'.', u"15", 1, 0), u'.');
}

void KeyFiltersTest::minusIsNeverTyped()
{
    QCOMPARE(FilterDecimalKey(u'-', u"", 0, 0), char16_t{0});
    QCOMPARE(FilterDecimalKey(u'-', u"5", 0, 0), char16_t{0});
    QCOMPARE(FilterDigitKey(u'-'), char16_t{0});
}

void KeyFiltersTest::pastedTextIsJudgedOnlyKeyByKey()
{
    // Pasted text never passes a filter: the filters see single keys and read
    // whatever text the box already holds.
    QCOMPARE(typeIntoDecimalBox(QStringLiteral("ab-1.2.3"), u"4.x"), QStringLiteral("ab-1.2.34"));
    QCOMPARE(FilterDecimalKey(u'4', u"-ab", 0, 0), char16_t{0});
}

QTEST_APPLESS_MAIN(KeyFiltersTest)
#include "key_filters_test.moc"
