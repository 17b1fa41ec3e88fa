#include "model/auto_gain.h"

#include <QTest>

using namespace velmor;

namespace {

// A strain channel 0 behind a 4 mA source (excitationType 1, excitation 1),
// gauge coefficient 2.0, full bridge, range 500000, gain list "1,2,5,10".
ModuleRecord strainModule()
{
    ModuleRecord module = defaultModule();
    module.excitationType = 1;
    module.gainType = 2;
    ChannelRecord& channel = module.channels[0];
    channel.excitation = 1;
    channel.gaugeCoef = 2.0f;
    channel.bridgeType = 0;
    channel.fullRange = 500000.0f;
    channel.isStrain = true;
    channel.gain = 3;
    return module;
}

// A pressure channel 0 at 10.0V (excitationType 2, excitation 0), sensitivity
// 2.0, gain list "1,10,100,1000".
ModuleRecord pressureModule(float fullRange)
{
    ModuleRecord module = defaultModule();
    module.excitationType = 2;
    module.gainType = 3;
    ChannelRecord& channel = module.channels[0];
    channel.excitation = 0;
    channel.sensitivity = 2.0f;
    channel.isStrain = false;
    channel.fullRange = fullRange;
    return module;
}

}  // namespace

class AutoGainTest : public QObject {
    Q_OBJECT

private slots:
    void strainAt4mASearchesDownAndPicksStepTwo();
    void strainWithOpenExcitationGetsGainZero();
    void halfBridgeDoublesFullScale();
    void fullScaleEqualToRangeQualifies();
    void pressureTakesLargestStepOrNone_data();
    void pressureTakesLargestStepOrNone();
    void excitation1Point25VReadsAsOnePointTwoFive();
    void unknownGainTypeEndsAtGainZero();
    void noSetupExcitationReadsAsZero();
    void onlyGainOfThatChannelChanges();
};

void AutoGainTest::strainAt4mASearchesDownAndPicksStepTwo()
{
    // 10 gives 125000, 5 gives 250000, 2 gives 625000 >= 500000.
    ModuleRecord module = strainModule();
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(1));
}

void AutoGainTest::strainWithOpenExcitationGetsGainZero()
{
    ModuleRecord module = strainModule();
    module.channels[0].excitation = 0;
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(0));
}

void AutoGainTest::halfBridgeDoublesFullScale()
{
    // Half bridge: 10 gives 250000, 5 gives 500000 >= 500000.
    ModuleRecord module = strainModule();
    module.channels[0].bridgeType = 1;
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(2));
}

void AutoGainTest::fullScaleEqualToRangeQualifies()
{
    // Step 10 gives exactly 125000.
    ModuleRecord module = strainModule();
    module.channels[0].fullRange = 125000.0f;
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(3));
}

void AutoGainTest::pressureTakesLargestStepOrNone_data()
{
    // Full scale = step * 2.0 * 10 / 1000: 0.02, 0.2, 2, 20. It grows with the
    // step, so the search from the top takes the largest step or none.
    QTest::addColumn<float>("fullRange");
    QTest::addColumn<int>("gain");
    QTest::newRow("20 reached by 1000") << 20.0f << 3;
    QTest::newRow("0.5 reached by 1000") << 0.5f << 3;
    QTest::newRow("20.5 reached by none") << 20.5f << 0;
}

void AutoGainTest::pressureTakesLargestStepOrNone()
{
    QFETCH(float, fullRange);
    QFETCH(int, gain);
    ModuleRecord module = pressureModule(fullRange);
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(gain));
}

void AutoGainTest::excitation1Point25VReadsAsOnePointTwoFive()
{
    // "1.25V" with step 10 and sensitivity 2.0 gives 0.025; reading it as 1 would give 0.02.
    ModuleRecord module = pressureModule(0.022f);
    module.gainType = 2;
    module.channels[0].excitation = 3;
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(3));
}

void AutoGainTest::unknownGainTypeEndsAtGainZero()
{
    ModuleRecord module = pressureModule(0.0f);
    module.gainType = 9;
    module.channels[0].gain = 5;
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(0));
}

void AutoGainTest::noSetupExcitationReadsAsZero()
{
    ModuleRecord module = strainModule();
    module.excitationType = 0;
    chooseGain(module, 0);
    QCOMPARE(module.channels[0].gain, qint16(0));
}

void AutoGainTest::onlyGainOfThatChannelChanges()
{
    ModuleRecord module = strainModule();
    module.channels[1] = module.channels[0];
    ModuleRecord expected = module;
    expected.channels[1].gain = 1;
    chooseGain(module, 1);
    QCOMPARE(module.channels[1].gain, qint16(1));
    QVERIFY(module == expected);
}

QTEST_APPLESS_MAIN(AutoGainTest)
#include "auto_gain_test.moc"
