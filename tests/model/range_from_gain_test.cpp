#include "model/range_from_gain.h"

#include <QTest>

using namespace velmor;

namespace {

// Channel 0 with gain list "1,2,5,10,100,200,500,1000,..." (gainType 4) and
// voltage excitation (excitationType 2, code 0 is "10.0V").
ModuleRecord voltageModule(int gainPosition, bool strain)
{
    ModuleRecord module = defaultModule();
    module.gainType = 4;
    module.excitationType = 2;
    ChannelRecord& channel = module.channels[0];
    channel.gain = static_cast<qint16>(gainPosition);
    channel.excitation = 0;
    channel.gaugeCoef = 2.0f;
    channel.sensitivity = 2.0f;
    channel.isStrain = strain;
    return module;
}

}  // namespace

class RangeFromGainTest : public QObject {
    Q_OBJECT

private slots:
    void strainGain1000At10VCoef2Gives2000();
    void pressureGain100At10VSensitivity2Gives2Volts();
    void bridgeTypeDoesNotEnter();
    void unknownGainGivesZeroRange();
    void currentExcitationIsTakenLiterally_data();
    void currentExcitationIsTakenLiterally();
    void rangeIsStoredAsFloat();
    void onlyThatChannelChanges();
};

void RangeFromGainTest::strainGain1000At10VCoef2Gives2000()
{
    ModuleRecord module = voltageModule(7, true);
    QCOMPARE(applyRangeFromGain(module, 0), QStringLiteral("2000"));
    QCOMPARE(module.channels[0].fullRange, 2000.0f);
}

void RangeFromGainTest::pressureGain100At10VSensitivity2Gives2Volts()
{
    ModuleRecord module = voltageModule(4, false);
    QCOMPARE(applyRangeFromGain(module, 0), QStringLiteral("2.000"));
    QCOMPARE(module.channels[0].fullRange, 2.0f);
}

void RangeFromGainTest::bridgeTypeDoesNotEnter()
{
    ModuleRecord module = voltageModule(7, true);
    module.channels[0].bridgeType = 2;
    QCOMPARE(applyRangeFromGain(module, 0), QStringLiteral("2000"));
}

void RangeFromGainTest::unknownGainGivesZeroRange()
{
    ModuleRecord module = voltageModule(11, true);  // gainType 4 has positions 0..10
    QCOMPARE(applyRangeFromGain(module, 0), QStringLiteral("0"));
    QCOMPARE(module.channels[0].fullRange, 0.0f);
    ModuleRecord noGain = voltageModule(0, false);
    noGain.gainType = 0;
    QCOMPARE(applyRangeFromGain(noGain, 0), QStringLiteral("0.000"));
}

void RangeFromGainTest::currentExcitationIsTakenLiterally_data()
{
    // excitationType 3: 0 "4mA", 1 "100uA"; gain 10 (position 3), coefficient 2.0.
    QTest::addColumn<int>("excitation");
    QTest::addColumn<QString>("text");
    QTest::newRow("4mA as 4") << 0 << "500000";
    QTest::newRow("100uA as 100") << 1 << "20000";
}

void RangeFromGainTest::currentExcitationIsTakenLiterally()
{
    QFETCH(int, excitation);
    QFETCH(QString, text);
    ModuleRecord module = voltageModule(3, true);
    module.excitationType = 3;
    module.channels[0].excitation = static_cast<qint16>(excitation);
    QCOMPARE(applyRangeFromGain(module, 0), text);
}

void RangeFromGainTest::rangeIsStoredAsFloat()
{
    // 4e7 / (1 * 10 * 3) = 1333333.33..., shown rounded from the double.
    ModuleRecord module = voltageModule(0, true);
    module.channels[0].gaugeCoef = 3.0f;
    QCOMPARE(applyRangeFromGain(module, 0), QStringLiteral("1333333"));
    QCOMPARE(module.channels[0].fullRange, static_cast<float>(4.0e7 / 30.0));
}

void RangeFromGainTest::onlyThatChannelChanges()
{
    ModuleRecord module = voltageModule(7, true);
    module.channels[3] = module.channels[0];
    ModuleRecord expected = module;
    expected.channels[3].fullRange = 2000.0f;
    applyRangeFromGain(module, 3);
    QVERIFY(module == expected);
}

QTEST_APPLESS_MAIN(RangeFromGainTest)
#include "range_from_gain_test.moc"
