#include "model/reference.h"

#include <QTest>

#include <limits>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::ReferenceColumn)

namespace {

QStringList cells(const ChannelRecord& channel, Language language)
{
    QStringList texts;
    for (ReferenceColumn column : kReferenceColumns)
        texts << referenceCell(column, channel, language);
    return texts;
}

ChannelRecord pressureChannel()
{
    ChannelRecord channel = defaultChannel(0);
    setStrain(channel, false);
    return channel;
}

}  // namespace

class ReferenceTest : public QObject {
    Q_OBJECT

private slots:
    void headers_data();
    void headers();
    void bridgeText_data();
    void bridgeText();
    void typeAndUnit_data();
    void typeAndUnit();
    void freshChannelShowsEnglishDefaults();
    void freshChannelShowsChineseDefaults();
    void pressureChannelWithDefaultsShowsSensitivityAndVolts();
    void bridgeTypeOutsideZeroToTwoShowsFullBridge_data();
    void bridgeTypeOutsideZeroToTwoShowsFullBridge();
    void gaugeCoef2125Shows2125And21256Shows2126();
    void unitFollowsIsStrainNotUnitText();
    void setStrainRewritesUnitText();
    void referenceColumnsOnlyForTmB8AndTmB16_data();
    void referenceColumnsOnlyForTmB8AndTmB16();
    void defaultChannelHoldsStartValues();
};

void ReferenceTest::headers_data()
{
    QTest::addColumn<ReferenceColumn>("column");
    QTest::addColumn<QString>("zh");
    QTest::addColumn<QString>("en");
    QTest::newRow("bridge") << ReferenceColumn::Bridge << "桥型" << "Bridge";
    QTest::newRow("coef") << ReferenceColumn::Coef << "应变系数" << "Coef.";
    QTest::newRow("sensitivity") << ReferenceColumn::Sensitivity << "灵敏度mv/V" << "S. (mv/V)";
    QTest::newRow("range") << ReferenceColumn::Range << "最大量程" << "Range";
    QTest::newRow("unit") << ReferenceColumn::Unit << "单位" << "Unit";
    QTest::newRow("type") << ReferenceColumn::Type << "类型" << "Type";
}

void ReferenceTest::headers()
{
    QFETCH(ReferenceColumn, column);
    QFETCH(QString, zh);
    QFETCH(QString, en);
    QCOMPARE(referenceHeader(column, Language::Chinese), zh);
    QCOMPARE(referenceHeader(column, Language::English), en);
}

void ReferenceTest::bridgeText_data()
{
    QTest::addColumn<int>("bridgeType");
    QTest::addColumn<QString>("zh");
    QTest::addColumn<QString>("en");
    QTest::newRow("full") << 0 << "全桥" << "Full";
    QTest::newRow("half") << 1 << "半桥" << "1/2";
    QTest::newRow("quarter") << 2 << "1/4桥" << "1/4";
}

void ReferenceTest::bridgeText()
{
    QFETCH(int, bridgeType);
    QFETCH(QString, zh);
    QFETCH(QString, en);
    ChannelRecord channel = defaultChannel(0);
    channel.bridgeType = bridgeType;
    QCOMPARE(referenceCell(ReferenceColumn::Bridge, channel, Language::Chinese), zh);
    QCOMPARE(referenceCell(ReferenceColumn::Bridge, channel, Language::English), en);
}

void ReferenceTest::typeAndUnit_data()
{
    QTest::addColumn<bool>("strain");
    QTest::addColumn<QString>("typeZh");
    QTest::addColumn<QString>("typeEn");
    QTest::addColumn<QString>("unit");
    QTest::newRow("strain") << true << "应变" << "Strain" << "με";
    QTest::newRow("pressure") << false << "压力" << "Pressure" << "V";
}

void ReferenceTest::typeAndUnit()
{
    QFETCH(bool, strain);
    QFETCH(QString, typeZh);
    QFETCH(QString, typeEn);
    QFETCH(QString, unit);
    ChannelRecord channel = defaultChannel(0);
    setStrain(channel, strain);
    QCOMPARE(referenceCell(ReferenceColumn::Type, channel, Language::Chinese), typeZh);
    QCOMPARE(referenceCell(ReferenceColumn::Type, channel, Language::English), typeEn);
    QCOMPARE(referenceCell(ReferenceColumn::Unit, channel, Language::Chinese), unit);
    QCOMPARE(referenceCell(ReferenceColumn::Unit, channel, Language::English), unit);
}

void ReferenceTest::freshChannelShowsEnglishDefaults()
{
    const QStringList expected{"Full", "2.00", "", "500000", "με", "Strain"};
    QCOMPARE(cells(defaultChannel(0), Language::English), expected);
}

void ReferenceTest::freshChannelShowsChineseDefaults()
{
    const QStringList expected{"全桥", "2.00", "", "500000", "με", "应变"};
    QCOMPARE(cells(defaultChannel(5), Language::Chinese), expected);
}

void ReferenceTest::pressureChannelWithDefaultsShowsSensitivityAndVolts()
{
    const QStringList expected{"Full", "", "2.00", "500000.000", "V", "Pressure"};
    QCOMPARE(cells(pressureChannel(), Language::English), expected);
}

void ReferenceTest::bridgeTypeOutsideZeroToTwoShowsFullBridge_data()
{
    QTest::addColumn<int>("bridgeType");
    QTest::newRow("-1") << -1;
    QTest::newRow("3") << 3;
    QTest::newRow("120") << 120;
    QTest::newRow("int max") << std::numeric_limits<int>::max();
}

void ReferenceTest::bridgeTypeOutsideZeroToTwoShowsFullBridge()
{
    QFETCH(int, bridgeType);
    ChannelRecord channel = defaultChannel(0);
    channel.bridgeType = bridgeType;
    QCOMPARE(referenceCell(ReferenceColumn::Bridge, channel, Language::English), QStringLiteral("Full"));
    QCOMPARE(referenceCell(ReferenceColumn::Bridge, channel, Language::Chinese), QStringLiteral("全桥"));
}

void ReferenceTest::gaugeCoef2125Shows2125And21256Shows2126()
{
    ChannelRecord channel = defaultChannel(0);
    channel.gaugeCoef = 2.125f;
    QCOMPARE(referenceCell(ReferenceColumn::Coef, channel, Language::English), QStringLiteral("2.125"));
    channel.gaugeCoef = 2.1256f;
    QCOMPARE(referenceCell(ReferenceColumn::Coef, channel, Language::English), QStringLiteral("2.126"));
    ChannelRecord pressure = pressureChannel();
    pressure.sensitivity = 2.1256f;
    QCOMPARE(referenceCell(ReferenceColumn::Sensitivity, pressure, Language::English), QStringLiteral("2.126"));
}

void ReferenceTest::unitFollowsIsStrainNotUnitText()
{
    ChannelRecord channel = defaultChannel(0);
    channel.isStrain = false;  // unitText still says "με"
    QCOMPARE(referenceCell(ReferenceColumn::Unit, channel, Language::English), QStringLiteral("V"));
    channel.isStrain = true;
    channel.unitText = fixedText(u"kPa");
    QCOMPARE(referenceCell(ReferenceColumn::Unit, channel, Language::English), QStringLiteral("με"));
}

void ReferenceTest::setStrainRewritesUnitText()
{
    ChannelRecord channel = defaultChannel(0);
    setStrain(channel, false);
    QVERIFY(!channel.isStrain);
    QCOMPARE(trimmedText(channel.unitText), QStringLiteral("V"));
    setStrain(channel, true);
    QVERIFY(channel.isStrain);
    QCOMPARE(trimmedText(channel.unitText), QStringLiteral("με"));
}

void ReferenceTest::referenceColumnsOnlyForTmB8AndTmB16_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QString>("titleZh");
    QTest::addColumn<QString>("titleEn");
    const QString plainZh = "参数设置";
    const QString greyZh = "参数设置 - 灰色区域的数据为参考值，提供量程等参数与放大倍数的关系，不保存在模块中。";
    for (int code : {0, 1, 2, 5, 6, 7, 8, 9})
        QTest::addRow("model %d", code) << code << false << plainZh << "Channel Setup";
    QTest::newRow("TM-B8") << 3 << true << greyZh << "Channel setup";
    QTest::newRow("TM-B16") << 4 << true << greyZh << "Channel setup";
}

void ReferenceTest::referenceColumnsOnlyForTmB8AndTmB16()
{
    QFETCH(int, modelCode);
    QFETCH(bool, shown);
    QFETCH(QString, titleZh);
    QFETCH(QString, titleEn);
    QCOMPARE(hasReferenceColumns(modelCode), shown);
    QCOMPARE(channelFrameTitle(modelCode, Language::Chinese), titleZh);
    QCOMPARE(channelFrameTitle(modelCode, Language::English), titleEn);
}

void ReferenceTest::defaultChannelHoldsStartValues()
{
    for (int index : {0, 15}) {
        const ChannelRecord c = defaultChannel(index);
        QCOMPARE(c.channelNumber, qint16(index));
        QCOMPARE(c.excitation, qint16(0));
        QCOMPARE(c.balanceValue, 0);
        QCOMPARE(c.coupling, qint16(1));
        QCOMPARE(c.gain, qint16(0));
        QCOMPARE(c.cutoff, 100);
        QCOMPARE(c.holdExponent, quint16(0));
        QCOMPARE(c.integral, qint16(0));
        QCOMPARE(c.zeroAdjust, 0);
        QCOMPARE(c.gainAdjust, 0);
        QCOMPARE(c.bridgeType, 0);
        QCOMPARE(c.referenceInt, 120);
        QCOMPARE(c.sensitivity, 2.0f);
        QCOMPARE(c.gaugeCoef, 2.0f);
        QCOMPARE(c.fullRange, 500000.0f);
        QVERIFY(c.isStrain);
        QCOMPARE(trimmedText(c.unitText), QStringLiteral("με"));
    }
}

QTEST_APPLESS_MAIN(ReferenceTest)
#include "reference_test.moc"
