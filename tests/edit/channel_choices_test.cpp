// What a list choice and a prompt answer store in the selected channels of the
// channel grid, and which cells follow.
#include "edit/channel_rules.h"
#include "edit_testkit.h"
#include "model/reference.h"

#include <QTest>

#include <algorithm>

using namespace velmor;
using namespace velmor::testing;

namespace {

// "TM-B8" with voltage excitation (code 0 reads "10.0V") and the long gain list
// "1,2,5,10,100,200,500,1000,...", so that ranges come out round.
ModuleRecord voltageTmB8()
{
    return moduleOf(kTmB8, {{&ModuleRecord::excitationType, 2}, {&ModuleRecord::gainType, 4}});
}

}  // namespace

class ChannelChoicesTest : public QObject {
    Q_OBJECT

private slots:
    // List choices.
    void choiceWritesItsCodeIntoEverySelectedChannel_data();
    void choiceWritesItsCodeIntoEverySelectedChannel();
    void rowsFiveToTwoChoosingAcCouplingSetChannelsOneToFour();
    void integralListAndCellsSpellDifferently();
    void currentSourceChoiceSetsAcCoupling_data();
    void currentSourceChoiceSetsAcCoupling();
    void dcCouplingOnCurrentSourceIsTurnedBackToAc();
    void couplingRuleHoldsUnderExcitationType1Only();
    void gainChoiceOnTmA4LoadsAdjustEntriesAtTheGainPosition();
    void gainChoiceOnOtherModelsLoadsEntryZero();
    void gainChoiceRecomputesRangeWhereReferenceColumnsExist_data();
    void gainChoiceRecomputesRangeWhereReferenceColumnsExist();
    void excitationChoiceRecomputesRange();
    void gainChoiceWithoutReferenceColumnsKeepsTheRange();
    void objectTypeChoiceRewritesTheTypeDependentCells_data();
    void objectTypeChoiceRewritesTheTypeDependentCells();
    void cutOffStepOnTmC16FillsWholeGroups();
    void choiceOutsideTheListOrOnARefusedColumnStoresNothing_data();
    void choiceOutsideTheListOrOnARefusedColumnStoresNothing();
    void choiceSkipsRowsTheModuleLacks();
    // Prompt answers.
    void balanceCapByVersionAndModel_data();
    void balanceCapByVersionAndModel();
    void balanceAnswerOf5000IsCapped_data();
    void balanceAnswerOf5000IsCapped();
    void promptColumnsStoreUnevenly_data();
    void promptColumnsStoreUnevenly();
    void wholeAnswersRoundHalvesToEven_data();
    void wholeAnswersRoundHalvesToEven();
    void unusableAnswersChangeNothing_data();
    void unusableAnswersChangeNothing();
    void coefficientAndSensitivityAnswersKeepTheRange();
    void rangeAnswerRunsTheAutomaticGainChoice_data();
    void rangeAnswerRunsTheAutomaticGainChoice();
};

// ---- List choices ---------------------------------------------------------

namespace {

// The field a list column writes, as a number.
int listField(const ChannelRecord& channel, int column)
{
    switch (column) {
    case 1: return channel.excitation;
    case 4: return channel.coupling;
    case 5: return channel.gain;
    case 6: return channel.cutoff;
    case 7: return channel.holdExponent;
    case 10: return channel.integral;
    case 11: return channel.bridgeType;
    case 16: return channel.isStrain ? 0 : 1;
    }
    return -1;
}

}  // namespace

void ChannelChoicesTest::choiceWritesItsCodeIntoEverySelectedChannel_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("cellText");
    const ModuleRecord voltages = moduleOf(kTmC16, {{&ModuleRecord::excitationType, 2}});
    QTest::newRow("excitation 2.5V") << voltages << 1 << 2 << "2.5V";
    QTest::newRow("DC coupling") << voltages << 4 << 0 << "DC Coupling";
    QTest::newRow("gain 10") << voltages << 5 << 3 << "10";
    QTest::newRow("cut-off 1KHz") << moduleOf(kTmB8, {{&ModuleRecord::filterType, 2}}) << 6 << 2 << "1KHz";
    QTest::newRow("division 32") << voltages << 7 << 5 << "32";
    QTest::newRow("two integrations") << moduleOf(kTmC16, {{&ModuleRecord::integralType, 1}}) << 10 << 2
                                      << "Two Integral";
    QTest::newRow("quarter bridge") << moduleOf(kTmB8) << 11 << 2 << "1/4";
    QTest::newRow("pressure") << moduleOf(kTmB8) << 16 << 1 << "Pressure";
}

void ChannelChoicesTest::choiceWritesItsCodeIntoEverySelectedChannel()
{
    QFETCH(ModuleRecord, module);
    QFETCH(int, column);
    QFETCH(int, item);
    QFETCH(QString, cellText);
    const ModuleRecord before = module;
    const EditResult result = chooseListItem(module, column, item, {2, 3}, Language::English);
    QVERIFY(result.stored);
    for (int index : {1, 2}) {
        QCOMPARE(listField(module.channels[index], column), item);
        const auto shown = std::find_if(result.cells.begin(), result.cells.end(), [&](const CellUpdate& cell) {
            return cell.row == index + 1 && cell.column == column;
        });
        QVERIFY(shown != result.cells.end());
        QCOMPARE(shown->text, cellText);
    }
    // Rows outside the selection are neither written nor redrawn.
    QCOMPARE(module.channels[0], before.channels[0]);
    QCOMPARE(module.channels[3], before.channels[3]);
    for (const CellUpdate& cell : result.cells)
        QVERIFY(cell.row == 2 || cell.row == 3);
}

void ChannelChoicesTest::rowsFiveToTwoChoosingAcCouplingSetChannelsOneToFour()
{
    ModuleRecord module = moduleOf(kTmC16);
    for (ChannelRecord& c : module.channels)
        c.coupling = 0;
    const EditResult result = chooseListItem(module, 4, 1, {5, 2}, Language::Chinese);
    const QList<CellUpdate> cells{{2, 4, "AC耦合"}, {3, 4, "AC耦合"}, {4, 4, "AC耦合"}, {5, 4, "AC耦合"}};
    QCOMPARE(result.cells, cells);
    QVERIFY(result.stored);
    for (int index = 1; index <= 4; ++index)
        QCOMPARE(int(channel(module, index).coupling), 1);
    QCOMPARE(int(channel(module, 0).coupling), 0);
    QCOMPARE(int(channel(module, 5).coupling), 0);
}

void ChannelChoicesTest::integralListAndCellsSpellDifferently()
{
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::integralType, 1}});
    QCOMPARE(channelEditor(module, 10, Language::English).items.mid(1), (QStringList{"One integral", "two integral"}));
    QCOMPARE(chooseListItem(module, 10, 1, {1, 1}, Language::English).cells,
             (QList<CellUpdate>{{1, 10, "One Integral"}}));
    QCOMPARE(chooseListItem(module, 10, 2, {1, 1}, Language::English).cells,
             (QList<CellUpdate>{{1, 10, "Two Integral"}}));
    QCOMPARE(int(channel(module, 0).integral), 2);
}

void ChannelChoicesTest::currentSourceChoiceSetsAcCoupling_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("excitationText");
    QTest::addColumn<QString>("couplingText");
    QTest::newRow("Chinese") << Language::Chinese << "4mA恒流源" << "AC耦合";
    QTest::newRow("English") << Language::English << "4mA" << "AC Coupling";
}

void ChannelChoicesTest::currentSourceChoiceSetsAcCoupling()
{
    QFETCH(Language, language);
    QFETCH(QString, excitationText);
    QFETCH(QString, couplingText);
    ModuleRecord module = moduleOf(kTmC16);  // excitationType 1
    for (ChannelRecord& c : module.channels)
        c.coupling = 0;
    const EditResult result = chooseListItem(module, 1, 1, {1, 2}, language);
    const QList<CellUpdate> cells{{1, 1, excitationText}, {1, 4, couplingText},
                                  {2, 1, excitationText}, {2, 4, couplingText}};
    QCOMPARE(result.cells, cells);
    QCOMPARE(int(channel(module, 0).coupling), 1);
    QCOMPARE(int(channel(module, 1).coupling), 1);
    QCOMPARE(int(channel(module, 2).coupling), 0);

    // Choosing "Open" leaves the coupling as it is.
    channel(module, 0).coupling = 0;
    QCOMPARE(chooseListItem(module, 1, 0, {1, 1}, language).cells.size(), 1);
    QCOMPARE(int(channel(module, 0).coupling), 0);
}

void ChannelChoicesTest::dcCouplingOnCurrentSourceIsTurnedBackToAc()
{
    ModuleRecord module = moduleOf(kTmC16);
    channel(module, 0).excitation = 1;  // 4 mA
    channel(module, 1).excitation = 0;  // open
    const EditResult result = chooseListItem(module, 4, 0, {1, 2}, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 4, "AC Coupling"}, {2, 4, "DC Coupling"}}));
    QCOMPARE(int(channel(module, 0).coupling), 1);
    QCOMPARE(int(channel(module, 1).coupling), 0);
}

void ChannelChoicesTest::couplingRuleHoldsUnderExcitationType1Only()
{
    // Under excitationType 3 code 1 is "100uA" and code 0 "4mA": no coupling rule.
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::excitationType, 3}});
    channel(module, 0).coupling = 0;
    chooseListItem(module, 1, 1, {1, 1}, Language::English);
    QCOMPARE(int(channel(module, 0).coupling), 0);
    channel(module, 1).excitation = 0;
    chooseListItem(module, 4, 0, {1, 2}, Language::English);
    QCOMPARE(int(channel(module, 0).coupling), 0);
    QCOMPARE(int(channel(module, 1).coupling), 0);
}

void ChannelChoicesTest::gainChoiceOnTmA4LoadsAdjustEntriesAtTheGainPosition()
{
    ModuleRecord module = moduleOf(kTmA4, {{&ModuleRecord::zeroType, 1}, {&ModuleRecord::adjustType, 1}});
    for (int entry = 0; entry < kTableEntries; ++entry) {
        channel(module, 0).zeroAdjustTable[entry] = 10 + entry;
        channel(module, 0).gainAdjustTable[entry] = 100 + entry;
    }
    const EditResult result = chooseListItem(module, 5, 2, {1, 1}, Language::English);
    QCOMPARE(channel(module, 0).zeroAdjust, 12);
    QCOMPARE(channel(module, 0).gainAdjust, 102);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 5, "5"}, {1, 8, "12"}, {1, 9, "102"}}));
}

void ChannelChoicesTest::gainChoiceOnOtherModelsLoadsEntryZero()
{
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::zeroType, 1}, {&ModuleRecord::adjustType, 2}});
    for (int entry = 0; entry < kTableEntries; ++entry) {
        channel(module, 3).zeroAdjustTable[entry] = 10 + entry;
        channel(module, 3).gainAdjustTable[entry] = 100 + entry;
    }
    const EditResult result = chooseListItem(module, 5, 3, {4, 4}, Language::English);
    QCOMPARE(int(channel(module, 3).gain), 3);
    QCOMPARE(channel(module, 3).zeroAdjust, 10);
    QCOMPARE(channel(module, 3).gainAdjust, 100);
    QCOMPARE(result.cells, (QList<CellUpdate>{{4, 5, "10"}, {4, 8, "10"}, {4, 9, "100"}}));
}

void ChannelChoicesTest::gainChoiceRecomputesRangeWhereReferenceColumnsExist_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<bool>("strain");
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("rangeText");
    QTest::addColumn<float>("range");
    // 4 x 10 000 000 / (1000 x 10 x 2.0) on a strain channel.
    QTest::newRow("TM-B8 strain, gain 1000 at 10.0V, coefficient 2.0") << int(kTmB8) << true << 7 << "2000" << 2000.0f;
    // 100 x 2.0 x 10 / 1000 on a pressure channel.
    QTest::newRow("TM-B8 pressure, gain 100 at 10.0V, sensitivity 2.0") << int(kTmB8) << false << 4 << "2.000" << 2.0f;
    QTest::newRow("TM-B16 shows the range too") << int(kTmB16) << true << 7 << "2000" << 2000.0f;
}

void ChannelChoicesTest::gainChoiceRecomputesRangeWhereReferenceColumnsExist()
{
    QFETCH(int, modelCode);
    QFETCH(bool, strain);
    QFETCH(int, item);
    QFETCH(QString, rangeText);
    QFETCH(float, range);
    ModuleRecord module = voltageTmB8();
    module.modelCode = static_cast<quint8>(modelCode);
    setStrain(channel(module, 1), strain);
    const EditResult result = chooseListItem(module, 5, item, {2, 2}, Language::English);
    QVERIFY(!result.cells.isEmpty());
    QCOMPARE(result.cells.last(), (CellUpdate{2, 14, rangeText}));
    QCOMPARE(channel(module, 1).fullRange, range);
    QCOMPARE(channel(module, 0).fullRange, 500000.0f);
}

void ChannelChoicesTest::excitationChoiceRecomputesRange()
{
    ModuleRecord module = voltageTmB8();
    channel(module, 0).gain = 7;  // 1000
    const EditResult result = chooseListItem(module, 1, 1, {1, 1}, Language::English);  // 5.0V
    // 4 x 10 000 000 / (1000 x 5 x 2.0)
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 1, "5.0V"}, {1, 14, "4000"}}));
    QCOMPARE(channel(module, 0).fullRange, 4000.0f);
}

void ChannelChoicesTest::gainChoiceWithoutReferenceColumnsKeepsTheRange()
{
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::excitationType, 2}, {&ModuleRecord::gainType, 4}});
    const EditResult result = chooseListItem(module, 5, 7, {1, 1}, Language::English);
    QCOMPARE(channel(module, 0).fullRange, 500000.0f);
    for (const CellUpdate& cell : result.cells)
        QVERIFY(cell.column != 14);
}

void ChannelChoicesTest::objectTypeChoiceRewritesTheTypeDependentCells_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("item");
    QTest::addColumn<QStringList>("texts");  // columns 12 to 16
    QTest::addColumn<QString>("unit");
    QTest::newRow("pressure, English") << Language::English << 1
                                       << QStringList{"", "2.00", "500000.000", "V", "Pressure"} << "V";
    QTest::newRow("pressure, Chinese") << Language::Chinese << 1
                                       << QStringList{"", "2.00", "500000.000", "V", "压力"} << "V";
    QTest::newRow("strain, English") << Language::English << 0
                                     << QStringList{"2.00", "", "500000", "με", "Strain"} << "με";
}

void ChannelChoicesTest::objectTypeChoiceRewritesTheTypeDependentCells()
{
    QFETCH(Language, language);
    QFETCH(int, item);
    QFETCH(QStringList, texts);
    QFETCH(QString, unit);
    ModuleRecord module = moduleOf(kTmB8);
    setStrain(channel(module, 2), item == 1 ? true : false);  // start from the other type
    const EditResult result = chooseListItem(module, 16, item, {3, 3}, language);
    QList<CellUpdate> cells;
    for (int column = 12; column <= 16; ++column)
        cells << CellUpdate{3, column, texts.at(column - 12)};
    QCOMPARE(result.cells, cells);
    QCOMPARE(channel(module, 2).isStrain, item == 0);
    QCOMPARE(trimmedText(channel(module, 2).unitText), unit);
    QCOMPARE(channel(module, 2).fullRange, 500000.0f);  // the type alone does not recompute the range
}

void ChannelChoicesTest::cutOffStepOnTmC16FillsWholeGroups()
{
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::filterType, 2}});
    const EditResult result = chooseListItem(module, 6, 1, {5, 5}, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{4, 6, "10Hz"}, {5, 6, "10Hz"}, {6, 6, "10Hz"}}));
    QCOMPARE(channel(module, 2).cutoff, 100);
    for (int index = 3; index <= 5; ++index)
        QCOMPARE(channel(module, index).cutoff, 1);
    QCOMPARE(channel(module, 6).cutoff, 100);
}

void ChannelChoicesTest::choiceOutsideTheListOrOnARefusedColumnStoresNothing_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("item");
    QTest::newRow("item -1") << moduleOf(kTmC16) << 4 << -1;
    QTest::newRow("third item of a two-item list") << moduleOf(kTmC16) << 4 << 2;
    QTest::newRow("gain on gainType 0") << moduleOf(kTmC16, {{&ModuleRecord::gainType, 0}}) << 5 << 0;
    QTest::newRow("object type on TM-B16") << moduleOf(kTmB16) << 16 << 1;
    QTest::newRow("prompt column") << moduleOf(kTmB8) << 12 << 0;
    QTest::newRow("continuous cut-off") << moduleOf(kTmC16) << 6 << 1;
}

void ChannelChoicesTest::choiceOutsideTheListOrOnARefusedColumnStoresNothing()
{
    QFETCH(ModuleRecord, module);
    QFETCH(int, column);
    QFETCH(int, item);
    const ModuleRecord before = module;
    QCOMPARE(chooseListItem(module, column, item, {1, 16}, Language::English), EditResult{});
    QVERIFY(module == before);
}

void ChannelChoicesTest::choiceSkipsRowsTheModuleLacks()
{
    ModuleRecord module = moduleOf(kTmA4);  // four channels
    const EditResult result = chooseListItem(module, 7, 2, {3, 9}, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{3, 7, "4"}, {4, 7, "4"}}));
    QCOMPARE(int(channel(module, 3).holdExponent), 2);
    QCOMPARE(int(channel(module, 4).holdExponent), 0);
}

// ---- Prompt answers -------------------------------------------------------

void ChannelChoicesTest::balanceCapByVersionAndModel_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("cap");
    QTest::newRow("version 41, TM-C8") << 41 << int(kTmC8) << 255;
    QTest::newRow("version 41, TM-C16") << 41 << int(kTmC16) << 4095;
    QTest::newRow("version 255, TM-B8") << 255 << int(kTmB8) << 4095;
    QTest::newRow("version 40, TM-C8") << 40 << int(kTmC8) << 1023;
    QTest::newRow("version 0, TM-C16") << 0 << int(kTmC16) << 1023;
}

void ChannelChoicesTest::balanceCapByVersionAndModel()
{
    QFETCH(int, version);
    QFETCH(int, modelCode);
    QFETCH(int, cap);
    QCOMPARE(balanceCap(moduleOf(modelCode, {{&ModuleRecord::version, version}})), cap);
}

void ChannelChoicesTest::balanceAnswerOf5000IsCapped_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("stored");
    QTest::newRow("version 41, model code 6") << 41 << int(kTmC8) << 255;
    QTest::newRow("version 41, model code 2") << 41 << int(kTmC16) << 4095;
    QTest::newRow("version 40") << 40 << int(kTmC16) << 1023;
}

void ChannelChoicesTest::balanceAnswerOf5000IsCapped()
{
    QFETCH(int, version);
    QFETCH(int, modelCode);
    QFETCH(int, stored);
    ModuleRecord module = moduleOf(modelCode, {{&ModuleRecord::version, version}, {&ModuleRecord::balanceType, 1}});
    const EditResult result = answerPrompt(module, 2, QStringLiteral("5000"), {2, 1}, Language::English);
    const QString text = QString::number(stored);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 2, text}, {2, 2, text}}));
    QVERIFY(result.stored);
    QCOMPARE(channel(module, 0).balanceValue, stored);
    QCOMPARE(channel(module, 1).balanceValue, stored);
    QCOMPARE(channel(module, 2).balanceValue, 0);
}

void ChannelChoicesTest::promptColumnsStoreUnevenly_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("stored");
    QTest::addColumn<int>("balance");
    QTest::addColumn<int>("gainAdjust");  // also entry 0 of gainAdjustTable
    QTest::newRow("balance stores balanceValue") << 2 << "300" << "300" << true << 300 << 0;
    QTest::newRow("zero adjust stores the gain adjust") << 8 << "100" << "100" << true << 0 << 100;
    QTest::newRow("zero adjust is capped at 255") << 8 << "300" << "255" << true << 0 << 255;
    QTest::newRow("gain adjust stores nothing, uncapped") << 9 << "5000" << "5000" << false << 0 << 0;
}

void ChannelChoicesTest::promptColumnsStoreUnevenly()
{
    QFETCH(int, column);
    QFETCH(QString, answer);
    QFETCH(QString, shown);
    QFETCH(bool, stored);
    QFETCH(int, balance);
    QFETCH(int, gainAdjust);
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::version, 41}, {&ModuleRecord::balanceType, 1},
                                            {&ModuleRecord::zeroType, 1}, {&ModuleRecord::adjustType, 1}});
    const EditResult result = answerPrompt(module, column, answer, {3, 4}, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{3, column, shown}, {4, column, shown}}));
    QCOMPARE(result.stored, stored);
    for (int index : {2, 3}) {
        const ChannelRecord& c = channel(module, index);
        QCOMPARE(c.balanceValue, balance);
        QCOMPARE(c.gainAdjust, gainAdjust);
        QCOMPARE(c.gainAdjustTable[0], gainAdjust);
        QCOMPARE(c.zeroAdjust, 0);  // no prompt writes the zero adjust
        QCOMPARE(c.zeroAdjustTable[0], 0);
    }
    QCOMPARE(channel(module, 4), defaultChannel(4));
}

void ChannelChoicesTest::wholeAnswersRoundHalvesToEven_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("stored");
    QTest::newRow("2.5 gives 2") << "2.5" << 2;
    QTest::newRow("3.5 gives 4") << "3.5" << 4;
    QTest::newRow("0.4 gives 0") << "0.4" << 0;
    QTest::newRow("-0.4 gives 0") << "-0.4" << 0;
    QTest::newRow("blanks around") << "  17  " << 17;
}

void ChannelChoicesTest::wholeAnswersRoundHalvesToEven()
{
    QFETCH(QString, answer);
    QFETCH(int, stored);
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::balanceType, 1}});
    channel(module, 0).balanceValue = 99;
    const EditResult result = answerPrompt(module, 2, answer, {1, 1}, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 2, QString::number(stored)}}));
    QCOMPARE(channel(module, 0).balanceValue, stored);
}

void ChannelChoicesTest::unusableAnswersChangeNothing_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("answer");
    for (int column : {2, 9, 12, 14}) {
        QTest::addRow("empty, column %d", column) << column << "";
        QTest::addRow("blanks, column %d", column) << column << "   ";
        QTest::addRow("not a number, column %d", column) << column << "abc";
        QTest::addRow("number with a tail, column %d", column) << column << "12abc";
        QTest::addRow("negative, column %d", column) << column << "-5";
    }
}

void ChannelChoicesTest::unusableAnswersChangeNothing()
{
    QFETCH(int, column);
    QFETCH(QString, answer);
    ModuleRecord module = moduleOf(kTmB8, {{&ModuleRecord::balanceType, 1}, {&ModuleRecord::adjustType, 1}});
    const ModuleRecord before = module;
    QCOMPARE(answerPrompt(module, column, answer, {1, 8}, Language::English), EditResult{});
    QVERIFY(module == before);
}

void ChannelChoicesTest::coefficientAndSensitivityAnswersKeepTheRange()
{
    ModuleRecord module = voltageTmB8();
    setStrain(channel(module, 1), false);
    EditResult result = answerPrompt(module, 12, QStringLiteral("2.5"), {1, 2}, Language::English);
    QCOMPARE(channel(module, 0).gaugeCoef, 2.5f);
    QCOMPARE(channel(module, 1).gaugeCoef, 2.5f);  // stored, though a pressure row does not show it
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 12, "2.50"}, {2, 12, ""}}));
    result = answerPrompt(module, 13, QStringLiteral("1.125"), {2, 2}, Language::English);
    QCOMPARE(channel(module, 1).sensitivity, 1.125f);
    QCOMPARE(result.cells, (QList<CellUpdate>{{2, 13, "1.125"}}));
    QVERIFY(result.stored);
    QCOMPARE(channel(module, 0).fullRange, 500000.0f);
    QCOMPARE(channel(module, 1).fullRange, 500000.0f);
}

void ChannelChoicesTest::rangeAnswerRunsTheAutomaticGainChoice_data()
{
    QTest::addColumn<int>("excitation");
    QTest::addColumn<int>("gain");
    QTest::addColumn<QString>("gainText");
    // "4mA" reads as 4: step 10 reaches 125000, 5 reaches 250000, 2 reaches 625000.
    QTest::newRow("4mA finds gain 2") << 1 << 1 << "2";
    // "Open" reads as 0 and no step reaches the range.
    QTest::newRow("open finds no step") << 0 << 0 << "1";
}

void ChannelChoicesTest::rangeAnswerRunsTheAutomaticGainChoice()
{
    QFETCH(int, excitation);
    QFETCH(int, gain);
    QFETCH(QString, gainText);
    ModuleRecord module = moduleOf(kTmB8);  // excitationType 1, gain list "1,2,5,10"
    for (int index : {0, 1}) {
        channel(module, index).excitation = static_cast<qint16>(excitation);
        channel(module, index).gain = 3;
        channel(module, index).fullRange = 1.0f;
    }
    const EditResult result = answerPrompt(module, 14, QStringLiteral("500000"), {2, 1}, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 5, gainText}, {1, 14, "500000"},
                                              {2, 5, gainText}, {2, 14, "500000"}}));
    for (int index : {0, 1}) {
        QCOMPARE(int(channel(module, index).gain), gain);
        QCOMPARE(channel(module, index).fullRange, 500000.0f);
    }
    QCOMPARE(int(channel(module, 2).gain), 0);
}

QTEST_APPLESS_MAIN(ChannelChoicesTest)
#include "channel_choices_test.moc"
