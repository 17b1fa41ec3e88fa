// Generated module values are reproducible, plausible and within wire ranges.

#include "model/parameters.h"
#include "sim/sim_values.h"

#include "model/models.h"
#include "protocol/blocks.h"

#include <QTest>

using namespace velmor;
using namespace velmor::sim;

class SimValuesTest : public QObject {
    Q_OBJECT

private slots:
    void sameAddressModelAndSeedGiveTheSameModule();
    void addressAndSeedChangeTheValues();
    void modelGivesNameChannelCountAndValidCodes_data();
    void modelGivesNameChannelCountAndValidCodes();
    void channelValuesLieWithinTheirWireRanges_data();
    void channelValuesLieWithinTheirWireRanges();
    void channelValuesReadAsRealTexts_data();
    void channelValuesReadAsRealTexts();
    void channelsBeyondTheModelKeepStartValues();
    void informationTailBeyondTheWrittenBytesIsZero();
    void balancedValueIsReproducibleAndInRange();
};

void SimValuesTest::channelValuesLieWithinTheirWireRanges_data()
{
    modelGivesNameChannelCountAndValidCodes_data();
}

void SimValuesTest::channelValuesReadAsRealTexts_data()
{
    modelGivesNameChannelCountAndValidCodes_data();
}

void SimValuesTest::sameAddressModelAndSeedGiveTheSameModule()
{
    QCOMPARE(simulatedModule(3, 2, 11), simulatedModule(3, 2, 11));
}

void SimValuesTest::addressAndSeedChangeTheValues()
{
    QVERIFY(simulatedModule(3, 2, 11) != simulatedModule(3, 2, 12));
    QVERIFY(simulatedModule(3, 2, 11).channels != simulatedModule(4, 2, 11).channels);
}

void SimValuesTest::modelGivesNameChannelCountAndValidCodes_data()
{
    QTest::addColumn<int>("modelCode");
    for (int code = 0; code < kModelCount; ++code)
        QTest::newRow(qPrintable(QString::fromUtf16(kModels[code].name))) << code;
}

void SimValuesTest::modelGivesNameChannelCountAndValidCodes()
{
    QFETCH(int, modelCode);
    const ModuleRecord m = simulatedModule(7, modelCode, 1);
    QCOMPARE(trimmedText(m.modelName), QString::fromUtf16(kModels[modelCode].name));
    QCOMPARE(int(m.channelCount), kModels[modelCode].channels);
    QCOMPARE(int(m.busAddress), 7);
    QCOMPARE(int(m.modelCode), modelCode);
    // The largest valid code of every capability after the model and version.
    const int most[kCapabilityCount] = {8, 255, 3, 1, 1, 7, 4, 1, 1, 3, 1};
    for (int i = 2; i < kCapabilityCount; ++i)
        QVERIFY2(m.*kCapabilityFields[i] <= most[i], qPrintable(QStringLiteral("code %1").arg(i)));
    QVERIFY(m.moduleNumber >= 0 && m.moduleNumber <= 65535);
}

void SimValuesTest::channelValuesLieWithinTheirWireRanges()
{
    QFETCH(int, modelCode);
    const ModuleRecord m = simulatedModule(9, modelCode, 5);
    auto in = [](qint64 v, qint64 low, qint64 high) { return v >= low && v <= high; };
    for (int c = 0; c < m.channelCount; ++c) {
        const ChannelRecord& ch = m.channels[static_cast<size_t>(c)];
        QVERIFY(in(ch.excitation, 0, 255));
        QVERIFY(in(ch.balanceValue, 0, 65535));
        QVERIFY(in(ch.coupling, 0, 15));
        QVERIFY(in(ch.integral, 0, 15));
        QVERIFY(in(ch.gain, 0, 255));
        QVERIFY(in(ch.cutoff, 0, 65535));
        QVERIFY(in(ch.holdExponent, 0, 255));
        QVERIFY(in(ch.zeroAdjust, 0, 255));
        QVERIFY(in(ch.gainAdjust, 0, 65535));
        QVERIFY(in(ch.channelFlags, 0, 255));
        for (int i = 0; i < kTableEntries; ++i) {
            QVERIFY(in(ch.zeroAdjustTable[static_cast<size_t>(i)], 0, 255));
            QVERIFY(in(ch.gainAdjustTable[static_cast<size_t>(i)], 0, 65535));
            QVERIFY(in(ch.zeroCoef[static_cast<size_t>(i)], 0, 65535));
            QVERIFY(in(ch.gainCoef[static_cast<size_t>(i)], 0, 65535));
        }
    }
}

void SimValuesTest::channelValuesReadAsRealTexts()
{
    QFETCH(int, modelCode);
    const ModuleRecord m = simulatedModule(5, modelCode, 3);
    for (int c = 0; c < m.channelCount; ++c) {
        for (Parameter p : {Parameter::Excitation, Parameter::Coupling, Parameter::Gain, Parameter::Cutoff,
                            Parameter::Hold, Parameter::Integral, Parameter::ZeroAdjust}) {
            const QString text = parameterText(p, m, c, Language::English);
            QVERIFY2(text != QStringLiteral("Unknown"), qPrintable(QStringLiteral("model %1 channel %2 parameter %3")
                                                                       .arg(modelCode).arg(c).arg(static_cast<int>(p))));
        }
    }
}

void SimValuesTest::channelsBeyondTheModelKeepStartValues()
{
    const ModuleRecord m = simulatedModule(1, 0, 1);  // four channels
    for (int c = 4; c < kChannelSlots; ++c)
        QCOMPARE(m.channels[static_cast<size_t>(c)], defaultModule().channels[static_cast<size_t>(c)]);
}

void SimValuesTest::informationTailBeyondTheWrittenBytesIsZero()
{
    const ModuleRecord m = simulatedModule(1, 2, 1);
    QCOMPARE(m.infoTail[34], quint8(0));
    QCOMPARE(m.infoTail[35], quint8(0));
}

void SimValuesTest::balancedValueIsReproducibleAndInRange()
{
    QCOMPARE(balancedValue(1, 2, 3, 4000), balancedValue(1, 2, 3, 4000));
    for (int before = 0; before < 65536; before += 4099) {
        const qint32 v = balancedValue(1, 2, 3, before);
        QVERIFY(v >= 0 && v <= 65535);
    }
}

QTEST_GUILESS_MAIN(SimValuesTest)
#include "sim_values_test.moc"
