#include "model/cutoff_frequency.h"

#include <QTest>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::CutoffBase)
Q_DECLARE_METATYPE(velmor::FrequencyFit)

namespace {

ModuleRecord moduleWith(int modelCode, int filterType)
{
    ModuleRecord module = defaultModule();
    module.modelCode = static_cast<quint8>(modelCode);
    module.filterType = static_cast<quint8>(filterType);
    return module;
}

CutoffChoice choiceFor(double frequency, CutoffBase base)
{
    CutoffChoice choice;
    updateCutoffChoice(choice, frequency, base);
    return choice;
}

}  // namespace

class CutoffFrequencyTest : public QObject {
    Q_OBJECT

private slots:
    void frequency1000Base50000GivesDivider50();
    void lowest1Point52593Base50000GivesCode65534();
    void lowest2Point28889Base150000GivesCode65534();
    void zeroFrequencyKeepsCandidatesAndGivesCodeZero();
    void negativeFrequencyCountsAsZero();
    void frequency10001OnFilterType1Overflows();
    void candidates_data();
    void candidates();
    void optionOneAddsTwoOnEveryBase();
    void baseAtStart_data();
    void baseAtStart();
    void baseOnEdit_data();
    void baseOnEdit();
    void limits_data();
    void limits();
    void fit_data();
    void fit();
    void outOfRangeCaptions_data();
    void outOfRangeCaptions();
    void withinCaptionsShowCandidates();
};

void CutoffFrequencyTest::frequency1000Base50000GivesDivider50()
{
    const CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base50000);
    QCOMPARE(choice.candidates[0], 1000.0);
    QCOMPARE(choice.candidates[1], 980.39216);
    QCOMPARE(choice.code, 100);
    QCOMPARE(chosenCutoffCode(choice, 0), 100);
    QCOMPARE(chosenCutoffCode(choice, 1), 102);
}

void CutoffFrequencyTest::lowest1Point52593Base50000GivesCode65534()
{
    const CutoffChoice choice = choiceFor(1.52593, CutoffBase::Base50000);
    QCOMPARE(choice.candidates[0], 1.52593);
    QCOMPARE(choice.candidates[1], 1.52593);
    QCOMPARE(choice.code, 65534);
}

void CutoffFrequencyTest::lowest2Point28889Base150000GivesCode65534()
{
    const CutoffChoice choice = choiceFor(2.28889, CutoffBase::Base150000);
    QCOMPARE(choice.candidates[0], 2.28889);
    QCOMPARE(choice.candidates[1], 2.28889);
    QCOMPARE(choice.code, 65534);
}

void CutoffFrequencyTest::zeroFrequencyKeepsCandidatesAndGivesCodeZero()
{
    CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base50000);
    updateCutoffChoice(choice, 0.0, CutoffBase::Base50000);
    QCOMPARE(choice.candidates[0], 1000.0);
    QCOMPARE(choice.candidates[1], 980.39216);
    QCOMPARE(choice.code, 0);
}

void CutoffFrequencyTest::negativeFrequencyCountsAsZero()
{
    CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base150000);
    updateCutoffChoice(choice, -5.0, CutoffBase::Base150000);
    QCOMPARE(choice.candidates[0], 1000.0);
    QCOMPARE(choice.code, 0);
}

void CutoffFrequencyTest::frequency10001OnFilterType1Overflows()
{
    const CutoffLimits limits = cutoffLimits(moduleWith(2, 1));
    QCOMPARE(frequencyFit(10001.0, limits), FrequencyFit::Overflow);
    const CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base50000);
    QCOMPARE(optionCaption(choice, 0, FrequencyFit::Overflow, Language::English), QStringLiteral("Overflow"));
    QCOMPARE(optionCaption(choice, 1, FrequencyFit::Overflow, Language::English), QStringLiteral("Overflow"));
}

void CutoffFrequencyTest::candidates_data()
{
    QTest::addColumn<double>("frequency");
    QTest::addColumn<CutoffBase>("base");
    QTest::addColumn<double>("upper");
    QTest::addColumn<double>("lower");
    QTest::addColumn<int>("code");
    QTest::newRow("3 on 50000") << 3.0 << CutoffBase::Base50000 << 3.00012 << 2.99994 << 33332;
    QTest::newRow("reachable 2500 on 50000") << 2500.0 << CutoffBase::Base50000 << 2500.0 << 2380.95238 << 40;
    QTest::newRow("50000 on 50000") << 50000.0 << CutoffBase::Base50000 << 50000.0 << 25000.0 << 2;
    QTest::newRow("1.52594 is an ordinary value") << 1.52594 << CutoffBase::Base50000 << 1.52597 << 1.52593 << 65532;
    QTest::newRow("1000 on 150000") << 1000.0 << CutoffBase::Base150000 << 1000.0 << 993.37748 << 150;
    QTest::newRow("30000 on 150000") << 30000.0 << CutoffBase::Base150000 << 30000.0 << 25000.0 << 5;
    QTest::newRow("7 on 150000") << 7.0 << CutoffBase::Base150000 << 7.00019 << 6.99986 << 21428;
    QTest::newRow("1.83111 on 150000") << 1.83111 << CutoffBase::Base150000 << 1.83112 << 1.8311 << 81917;
}

void CutoffFrequencyTest::candidates()
{
    QFETCH(double, frequency);
    QFETCH(CutoffBase, base);
    QFETCH(double, upper);
    QFETCH(double, lower);
    QFETCH(int, code);
    const CutoffChoice choice = choiceFor(frequency, base);
    QCOMPARE(choice.candidates[0], upper);
    QCOMPARE(choice.candidates[1], lower);
    QCOMPARE(choice.code, code);
}

void CutoffFrequencyTest::optionOneAddsTwoOnEveryBase()
{
    const CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base150000);
    QCOMPARE(chosenCutoffCode(choice, 0), 150);
    QCOMPARE(chosenCutoffCode(choice, 1), 152);
}

void CutoffFrequencyTest::baseAtStart_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("filterType");
    QTest::addColumn<CutoffBase>("base");
    QTest::newRow("TM-C16 continuous") << 2 << 1 << CutoffBase::Base50000;
    QTest::newRow("TM-C16 50k") << 2 << 3 << CutoffBase::Base50000;
    QTest::newRow("TM-C16 30k") << 2 << 4 << CutoffBase::Base150000;
    QTest::newRow("TM-C8 continuous") << 6 << 1 << CutoffBase::Base150000;
    QTest::newRow("TM-C8 50k") << 6 << 3 << CutoffBase::Base150000;
}

void CutoffFrequencyTest::baseAtStart()
{
    QFETCH(int, modelCode);
    QFETCH(int, filterType);
    QFETCH(CutoffBase, base);
    QCOMPARE(cutoffBaseAtStart(moduleWith(modelCode, filterType)), base);
}

void CutoffFrequencyTest::baseOnEdit_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("filterType");
    QTest::addColumn<CutoffBase>("base");
    QTest::newRow("TM-C16 continuous") << 2 << 1 << CutoffBase::Base50000;
    QTest::newRow("TM-C16 30k") << 2 << 4 << CutoffBase::Base150000;
    QTest::newRow("TM-C8 continuous goes back to 50000") << 6 << 1 << CutoffBase::Base50000;
    QTest::newRow("TM-C8 30k") << 6 << 4 << CutoffBase::Base150000;
}

void CutoffFrequencyTest::baseOnEdit()
{
    QFETCH(int, modelCode);
    QFETCH(int, filterType);
    QFETCH(CutoffBase, base);
    QCOMPARE(cutoffBaseOnEdit(moduleWith(modelCode, filterType)), base);
}

void CutoffFrequencyTest::limits_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("filterType");
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::newRow("filterType 3") << 2 << 3 << 1.52593 << 50000.0;
    QTest::newRow("filterType 4") << 2 << 4 << 2.28889 << 30000.0;
    QTest::newRow("filterType 1") << 2 << 1 << 1.52593 << 10000.0;
    QTest::newRow("filterType 2") << 2 << 2 << 1.52593 << 10000.0;
    QTest::newRow("filterType 0") << 0 << 0 << 1.52593 << 10000.0;
    QTest::newRow("TM-C8 filterType 1") << 6 << 1 << 1.83111 << 10000.0;
    QTest::newRow("TM-C8 filterType 4") << 6 << 4 << 1.83111 << 30000.0;
}

void CutoffFrequencyTest::limits()
{
    QFETCH(int, modelCode);
    QFETCH(int, filterType);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    const CutoffLimits limits = cutoffLimits(moduleWith(modelCode, filterType));
    QCOMPARE(limits.lowest, lowest);
    QCOMPARE(limits.highest, highest);
}

void CutoffFrequencyTest::fit_data()
{
    QTest::addColumn<double>("frequency");
    QTest::addColumn<FrequencyFit>("fit");
    QTest::newRow("highest is within") << 10000.0 << FrequencyFit::Within;
    QTest::newRow("above highest") << 10000.001 << FrequencyFit::Overflow;
    QTest::newRow("lowest is within") << 1.52593 << FrequencyFit::Within;
    QTest::newRow("below lowest") << 1.52592 << FrequencyFit::TooLow;
    QTest::newRow("zero") << 0.0 << FrequencyFit::TooLow;
    QTest::newRow("middle") << 500.0 << FrequencyFit::Within;
}

void CutoffFrequencyTest::fit()
{
    QFETCH(double, frequency);
    QFETCH(FrequencyFit, fit);
    QCOMPARE(frequencyFit(frequency, CutoffLimits{1.52593, 10000.0}), fit);
}

void CutoffFrequencyTest::outOfRangeCaptions_data()
{
    QTest::addColumn<FrequencyFit>("fit");
    QTest::addColumn<QString>("zh");
    QTest::addColumn<QString>("en");
    QTest::newRow("overflow") << FrequencyFit::Overflow << "超过最大值" << "Overflow";
    QTest::newRow("too low") << FrequencyFit::TooLow << "低于最小值" << "Too low";
}

void CutoffFrequencyTest::outOfRangeCaptions()
{
    QFETCH(FrequencyFit, fit);
    QFETCH(QString, zh);
    QFETCH(QString, en);
    const CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base50000);
    for (int option : {0, 1}) {
        QCOMPARE(optionCaption(choice, option, fit, Language::Chinese), zh);
        QCOMPARE(optionCaption(choice, option, fit, Language::English), en);
    }
}

void CutoffFrequencyTest::withinCaptionsShowCandidates()
{
    const CutoffChoice choice = choiceFor(1000.0, CutoffBase::Base50000);
    QCOMPARE(optionCaption(choice, 0, FrequencyFit::Within, Language::Chinese), QStringLiteral("1000.00000"));
    QCOMPARE(optionCaption(choice, 1, FrequencyFit::Within, Language::English), QStringLiteral("980.39216"));
}

QTEST_APPLESS_MAIN(CutoffFrequencyTest)
#include "cutoff_frequency_test.moc"
