#include "config/config_image.h"
#include "config_testkit.h"

#include <QTest>

#include <cstring>

using namespace velmor;
using velmor::test::byteAt;
using velmor::test::distinctRecord;
using velmor::test::firstDifference;

namespace {

// The n bytes of the image at offset, little-endian, as one number.
quint64 numberAt(const QByteArray& image, int offset, int n)
{
    quint64 value = 0;
    for (int i = n - 1; i >= 0; --i)
        value = value * 256 + byteAt(image, offset + i);
    return value;
}

quint32 floatBits(float f)
{
    quint32 bits;
    std::memcpy(&bits, &f, sizeof bits);
    return bits;
}

}  // namespace

// Offsets below are written out as literal numbers on purpose: they check the
// layout constants, so they must not be derived from them.
class ConfigImageTest : public QObject {
    Q_OBJECT

private slots:
    void imageIs8716Bytes();
    void moduleFieldsSitAtTheirOffsets();
    void paddingBytesAreZero();
    void channelFieldsSitAtTheirOffsetsInEverySlot_data();
    void channelFieldsSitAtTheirOffsetsInEverySlot();
    void isStrainIsStoredAs0OrFFFF();
    void anyNonZeroStrainWordReadsTrue_data();
    void anyNonZeroStrainWordReadsTrue();
    void textCharactersTheFileCannotHoldAreStoredAsQuestionMark();
    void nulCharactersRoundTrip();
    void recordWithEveryFieldDistinctComesBackEqual();
    void emptyImageChangesNothing();
    void shortImageReplacesOnlyTheFieldsItReaches();
    void fieldCutByTheImageEndKeepsItsOtherBytes();
    void uncoveredTextKeepsCharactersTheFileCannotHold();
    void longImageReadsOnlyItsFirst8716Bytes();
};

void ConfigImageTest::imageIs8716Bytes()
{
    QCOMPARE(configImage(defaultModule()).size(), 8716);
    QCOMPARE(configImage(distinctRecord()).size(), 8716);
}

void ConfigImageTest::moduleFieldsSitAtTheirOffsets()
{
    ModuleRecord m = defaultModule();
    m.portNumber = -2;
    m.busAddress = 0x1234;
    m.channelCount = 8;
    m.moduleNumber = 65535;
    for (int i = 0; i < kCapabilityCount; ++i)
        m.*kCapabilityFields[i] = static_cast<quint8>(0xC0 + i);
    for (int i = 0; i < kInfoTailBytes; ++i)
        m.infoTail[static_cast<size_t>(i)] = static_cast<quint8>(0x40 + i);
    const QByteArray image = configImage(m);

    QCOMPARE(image.left(6), QByteArray("TM-C16"));
    QCOMPARE(numberAt(image, 20, 2), quint64{0xFFFE});
    QCOMPARE(numberAt(image, 22, 2), quint64{0x1234});
    QCOMPARE(numberAt(image, 24, 2), quint64{8});
    QCOMPARE(numberAt(image, 28, 4), quint64{0x0000FFFF});
    for (int i = 0; i < 11; ++i)
        QCOMPARE(byteAt(image, 32 + i), static_cast<quint8>(0xC0 + i));
    for (int i = 0; i < 36; ++i)
        QCOMPARE(byteAt(image, 43 + i), static_cast<quint8>(0x40 + i));
    QCOMPARE(numberAt(image, 80, 2), quint64{0});   // channel 0's number
    QCOMPARE(numberAt(image, 80 + 508, 2), quint64{1});
}

void ConfigImageTest::paddingBytesAreZero()
{
    const QByteArray image = configImage(distinctRecord());
    QCOMPARE(byteAt(image, 26), quint8{0});
    QCOMPARE(byteAt(image, 27), quint8{0});
    QCOMPARE(byteAt(image, 79), quint8{0});
}

void ConfigImageTest::channelFieldsSitAtTheirOffsetsInEverySlot_data()
{
    QTest::addColumn<int>("slot");
    for (int c = 0; c < 17; ++c)
        QTest::newRow(qPrintable(QStringLiteral("slot %1").arg(c))) << c;
}

void ConfigImageTest::channelFieldsSitAtTheirOffsetsInEverySlot()
{
    QFETCH(int, slot);
    ModuleRecord m = defaultModule();
    ChannelRecord& c = m.channels[static_cast<size_t>(slot)];
    const auto tag = static_cast<quint8>(slot + 1);   // keeps the slots apart
    c.channelNumber = static_cast<qint16>(0x0100 + tag);
    c.excitation = static_cast<qint16>(0x0200 + tag);
    c.balanceValue = 0x03000000 + tag;
    c.coupling = static_cast<qint16>(0x0400 + tag);
    c.gain = static_cast<qint16>(0x0500 + tag);
    c.cutoff = 0x06000000 + tag;
    c.holdExponent = static_cast<quint16>(0x0700 + tag);
    c.integral = static_cast<qint16>(0x0800 + tag);
    c.zeroAdjust = 0x09000000 + tag;
    c.gainAdjust = 0x0A000000 + tag;
    c.zeroAdjustTable[0] = 0x0B000000 + tag;
    c.zeroAdjustTable[16] = 0x0B100000 + tag;
    c.gainAdjustTable[3] = 0x0C000000 + tag;
    c.zeroCoef[7] = 0x0D000000 + tag;
    c.gainCoef[10] = -tag;
    c.spareBlock[0] = 0x0E000000 + tag;
    c.spareBlock[32] = 0x0E200000 + tag;
    c.bridgeType = 0x0F000000 + tag;
    c.referenceInt = 0x10000000 + tag;
    c.sensitivity = 2.0f;
    c.gaugeCoef = -1.5f;
    c.fullRange = 500000.0f;
    c.isStrain = true;
    c.unitText = fixedText(u"mV/V");
    c.channelFlags = static_cast<qint16>(0x1100 + tag);
    c.trailingBlock[0] = 0x12;
    c.trailingBlock[31] = tag;
    const QByteArray image = configImage(m);
    const int base = 80 + 508 * slot;

    QCOMPARE(numberAt(image, base + 0, 2), quint64{0x0100u + tag});
    QCOMPARE(numberAt(image, base + 2, 2), quint64{0x0200u + tag});
    QCOMPARE(numberAt(image, base + 4, 4), quint64{0x03000000u + tag});
    QCOMPARE(numberAt(image, base + 8, 2), quint64{0x0400u + tag});
    QCOMPARE(numberAt(image, base + 10, 2), quint64{0x0500u + tag});
    QCOMPARE(numberAt(image, base + 12, 4), quint64{0x06000000u + tag});
    QCOMPARE(numberAt(image, base + 16, 2), quint64{0x0700u + tag});
    QCOMPARE(numberAt(image, base + 18, 2), quint64{0x0800u + tag});
    QCOMPARE(numberAt(image, base + 20, 4), quint64{0x09000000u + tag});
    QCOMPARE(numberAt(image, base + 24, 4), quint64{0x0A000000u + tag});
    QCOMPARE(numberAt(image, base + 28, 4), quint64{0x0B000000u + tag});
    QCOMPARE(numberAt(image, base + 28 + 4 * 16, 4), quint64{0x0B100000u + tag});
    QCOMPARE(numberAt(image, base + 96 + 4 * 3, 4), quint64{0x0C000000u + tag});
    QCOMPARE(numberAt(image, base + 164 + 4 * 7, 4), quint64{0x0D000000u + tag});
    QCOMPARE(numberAt(image, base + 232 + 4 * 10, 4), quint64{0x100000000u - tag});
    QCOMPARE(numberAt(image, base + 300, 4), quint64{0x0E000000u + tag});
    QCOMPARE(numberAt(image, base + 300 + 4 * 32, 4), quint64{0x0E200000u + tag});
    QCOMPARE(numberAt(image, base + 432, 4), quint64{0x0F000000u + tag});
    QCOMPARE(numberAt(image, base + 436, 4), quint64{0x10000000u + tag});
    QCOMPARE(numberAt(image, base + 440, 4), quint64{0x40000000});   // 2.0
    QCOMPARE(numberAt(image, base + 444, 4), quint64{0xBFC00000});   // -1.5
    QCOMPARE(numberAt(image, base + 448, 4), quint64{floatBits(500000.0f)});
    QCOMPARE(numberAt(image, base + 452, 2), quint64{0xFFFF});
    QCOMPARE(image.mid(base + 454, 20), QByteArray("mV/V                "));
    QCOMPARE(numberAt(image, base + 474, 2), quint64{0x1100u + tag});
    QCOMPARE(byteAt(image, base + 476), quint8{0x12});
    QCOMPARE(byteAt(image, base + 507), tag);
}

void ConfigImageTest::isStrainIsStoredAs0OrFFFF()
{
    ModuleRecord m = defaultModule();
    m.channels[0].isStrain = true;
    m.channels[1].isStrain = false;
    const QByteArray image = configImage(m);
    QCOMPARE(numberAt(image, 80 + 452, 2), quint64{0xFFFF});
    QCOMPARE(numberAt(image, 80 + 508 + 452, 2), quint64{0});
}

void ConfigImageTest::anyNonZeroStrainWordReadsTrue_data()
{
    QTest::addColumn<int>("word");
    QTest::addColumn<bool>("expected");
    QTest::newRow("0") << 0 << false;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("0x0100") << 0x0100 << true;
    QTest::newRow("0x8000") << 0x8000 << true;
    QTest::newRow("0xFFFF") << 0xFFFF << true;
}

void ConfigImageTest::anyNonZeroStrainWordReadsTrue()
{
    QFETCH(int, word);
    QFETCH(bool, expected);
    ModuleRecord m = defaultModule();
    m.channels[5].isStrain = !expected;
    QByteArray image = configImage(m);
    const int at = 80 + 508 * 5 + 452;
    image[at] = static_cast<char>(word & 0xFF);
    image[at + 1] = static_cast<char>(word >> 8);
    applyImage(image, m);
    QCOMPARE(m.channels[5].isStrain, expected);
}

void ConfigImageTest::textCharactersTheFileCannotHoldAreStoredAsQuestionMark()
{
    ModuleRecord m = defaultModule();
    m.modelName = fixedText(u"TM-\u00C716\u4E2D");
    const QByteArray image = configImage(m);
    QCOMPARE(image.left(20), QByteArray("TM-?16?             "));
    applyImage(image, m);
    QCOMPARE(m.modelName, fixedText(u"TM-?16?"));
}

void ConfigImageTest::nulCharactersRoundTrip()
{
    ModuleRecord m = defaultModule();
    m.channels[2].unitText = fixedText(QStringView(u"a\0b", 3));
    m.channels[2].unitText[19] = 0;
    const QByteArray image = configImage(m);
    QCOMPARE(image.mid(80 + 508 * 2 + 454, 20), QByteArray("a\0b                \0", 20));
    ModuleRecord back = distinctRecord();
    applyImage(image, back);
    QCOMPARE(back.channels[2].unitText, m.channels[2].unitText);
}

void ConfigImageTest::recordWithEveryFieldDistinctComesBackEqual()
{
    const ModuleRecord original = distinctRecord();
    ModuleRecord back = defaultModule();
    applyImage(configImage(original), back);
    QVERIFY2(back == original, qPrintable(firstDifference(configImage(original), configImage(back))));
}

void ConfigImageTest::emptyImageChangesNothing()
{
    const ModuleRecord original = distinctRecord();
    ModuleRecord m = original;
    applyImage(QByteArray(), m);
    QVERIFY(m == original);
}

void ConfigImageTest::shortImageReplacesOnlyTheFieldsItReaches()
{
    const ModuleRecord source = distinctRecord();
    const ModuleRecord before = defaultModule();
    ModuleRecord m = before;
    // 100 bytes reach channel 0 up to its integral field (image bytes 98 and 99).
    applyImage(configImage(source).left(100), m);

    ModuleRecord expected = before;
    expected.modelName = source.modelName;
    expected.portNumber = source.portNumber;
    expected.busAddress = source.busAddress;
    expected.channelCount = source.channelCount;
    expected.moduleNumber = source.moduleNumber;
    for (int i = 0; i < kCapabilityCount; ++i)
        expected.*kCapabilityFields[i] = source.*kCapabilityFields[i];
    expected.infoTail = source.infoTail;
    const ChannelRecord& from = source.channels[0];
    ChannelRecord& to = expected.channels[0];
    to.channelNumber = from.channelNumber;
    to.excitation = from.excitation;
    to.balanceValue = from.balanceValue;
    to.coupling = from.coupling;
    to.gain = from.gain;
    to.cutoff = from.cutoff;
    to.holdExponent = from.holdExponent;
    to.integral = from.integral;
    QVERIFY2(m == expected, qPrintable(firstDifference(configImage(expected), configImage(m))));
}

void ConfigImageTest::fieldCutByTheImageEndKeepsItsOtherBytes()
{
    ModuleRecord m = defaultModule();
    m.moduleNumber = 0x11223344;
    QByteArray image = configImage(m).left(30);   // the low half of moduleNumber
    image[28] = 0x66;
    image[29] = 0x55;
    applyImage(image, m);
    QCOMPARE(m.moduleNumber, 0x11225566);
}

void ConfigImageTest::uncoveredTextKeepsCharactersTheFileCannotHold()
{
    ModuleRecord m = defaultModule();
    m.channels[15].unitText = fixedText(u"\u2103");   // degree Celsius
    const ModuleRecord before = m;
    applyImage(configImage(distinctRecord()).left(80 + 508 * 15 + 454), m);
    QCOMPARE(m.channels[15].unitText, before.channels[15].unitText);
}

void ConfigImageTest::longImageReadsOnlyItsFirst8716Bytes()
{
    const ModuleRecord original = distinctRecord();
    ModuleRecord m = defaultModule();
    applyImage(configImage(original) + QByteArray(5000, '\xAB'), m);
    QVERIFY(m == original);
}

QTEST_GUILESS_MAIN(ConfigImageTest)
#include "config_image_test.moc"
