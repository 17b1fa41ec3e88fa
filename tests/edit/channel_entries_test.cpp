// Values typed straight into the channel grid's cells, the cut-off frequency
// entry with its two choices, and the frequency dialog's OK.
#include "edit/channel_rules.h"
#include "edit_testkit.h"
#include "model/key_filters.h"
#include "model/reference.h"

#include <QTest>

#include <string_view>

using namespace velmor;
using namespace velmor::testing;

Q_DECLARE_METATYPE(velmor::FrequencyFit)

namespace {

// Every prompt column editable: balance, zero adjust and a 10-bit adjust converter.
ModuleRecord adjustable(int modelCode, int version = 0)
{
    return moduleOf(modelCode, {{&ModuleRecord::version, version}, {&ModuleRecord::balanceType, 1},
                                {&ModuleRecord::zeroType, 1}, {&ModuleRecord::adjustType, 1}});
}

// "TM-B8" with voltage excitation ("10.0V") and gain 1000 on channel 0.
ModuleRecord voltageTmB8()
{
    ModuleRecord module = moduleOf(kTmB8, {{&ModuleRecord::excitationType, 2}, {&ModuleRecord::gainType, 4}});
    channel(module, 0).gain = 7;
    return module;
}

ModuleRecord withFilter(int filterType, int modelCode = kTmB8)
{
    return moduleOf(modelCode, {{&ModuleRecord::filterType, filterType}});
}

QList<CellUpdate> cutoffCells(int first, int last, const QString& text)
{
    return cellsInRows(first, last, kCutoffColumn, text);
}

// Whether exactly rows first..last (1-based) hold `code`; the others keep the start value 100.
bool cutoffsAre(const ModuleRecord& module, int first, int last, int code)
{
    for (int row = 1; row <= kWiredChannels; ++row) {
        const int expected = row >= first && row <= last ? code : 100;
        if (module.channels[static_cast<size_t>(row - 1)].cutoff != expected)
            return false;
    }
    return true;
}

}  // namespace

class ChannelEntriesTest : public QObject {
    Q_OBJECT

private slots:
    // Typing into a cell.
    void equalTrimmedTextsStoreNothing();
    void typedValuesWithinTheirBoundsAreStored_data();
    void typedValuesWithinTheirBoundsAreStored();
    void typedOutOfRangeTextIsShownButNotStored_data();
    void typedOutOfRangeTextIsShownButNotStored();
    void typedZeroAdjustLandsAtTheGainEntryOnTmA4Only_data();
    void typedZeroAdjustLandsAtTheGainEntryOnTmA4Only();
    void typedGainAdjustLandsInEntryZeroForEveryModel();
    void typedWholeNumbersRoundHalvesToEven_data();
    void typedWholeNumbersRoundHalvesToEven();
    void typedCoefficientRecomputesTheRange();
    void typedSensitivityRecomputesTheRange();
    void typedCoefficientThatIsNotANumberCountsAsZero();
    void typedRangeRunsTheAutomaticGainChoice();
    void typingIntoAListColumnShowsTheTextAndStoresNothing();
    void typingWhereAClickWouldNotEditDoesNothing_data();
    void typingWhereAClickWouldNotEditDoesNothing();
    // Frequency entry.
    void frequencyLimitsFollowTheFilterType_data();
    void frequencyLimitsFollowTheFilterType();
    void outOfRangeChoicesSayOverflowOrTooLow_data();
    void outOfRangeChoicesSayOverflowOrTooLow();
    void withinLimitsTheChoicesShowTheNeighbours_data();
    void withinLimitsTheChoicesShowTheNeighbours();
    void tmC8EntryKeepsTheFilterTypeLimits();
    void pastedTextThatIsNotANumberIsReported_data();
    void pastedTextThatIsNotANumberIsReported();
    void keysThroughTheDecimalFilterReachTheEntry();
    // Taking a frequency.
    void takingAChoiceStoresItsCode_data();
    void takingAChoiceStoresItsCode();
    void takingOnTmC16FillsTheRowsCutOffGroup_data();
    void takingOnTmC16FillsTheRowsCutOffGroup();
    void takingAnEntryWithoutAFrequencyStoresNothing_data();
    void takingAnEntryWithoutAFrequencyStoresNothing();
    // The frequency dialog's OK.
    void dialogOkWritesIntoTheSelectedRowsInEitherOrder();
    void dialogOkOnTmC16WidensToWholeGroups();
    void dialogOkWithoutAContinuousCutOffStoresNothing_data();
    void dialogOkWithoutAContinuousCutOffStoresNothing();
};

// ---- Typing into a cell ---------------------------------------------------

void ChannelEntriesTest::equalTrimmedTextsStoreNothing()
{
    ModuleRecord module = adjustable(kTmC16);
    channel(module, 0).balanceValue = 12;
    const ModuleRecord before = module;
    QCOMPARE(typeIntoCell(module, 1, 2, QStringLiteral(" 12 "), QStringLiteral("12\t"), Language::English),
             EditResult{});
    QVERIFY(module == before);
    // "12.0" is another text, although the same number: shown and stored.
    const EditResult result = typeIntoCell(module, 1, 2, QStringLiteral("12"), QStringLiteral("12.0"),
                                           Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 2, "12.0"}}));
    QVERIFY(result.stored);
}

void ChannelEntriesTest::typedValuesWithinTheirBoundsAreStored_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("balance");
    QTest::addColumn<int>("zeroAdjust");  // and entry 0 of zeroAdjustTable
    QTest::addColumn<int>("gainAdjust");  // and entry 0 of gainAdjustTable
    QTest::newRow("balance 4095, version 41") << adjustable(kTmC16, 41) << 2 << "4095" << 4095 << 0 << 0;
    QTest::newRow("balance 255 on TM-C8, version 41") << adjustable(kTmC8, 41) << 2 << "255" << 255 << 0 << 0;
    QTest::newRow("balance 1023, version 40") << adjustable(kTmC16, 40) << 2 << "1023" << 1023 << 0 << 0;
    QTest::newRow("zero adjust 255") << adjustable(kTmC16) << 8 << "255" << 0 << 255 << 0;
    QTest::newRow("gain adjust 1023") << adjustable(kTmC16) << 9 << "1023" << 0 << 0 << 1023;
    // The bound 1024 holds for every converter resolution, 8 bit included.
    QTest::newRow("gain adjust 1000 on an 8-bit converter")
        << moduleOf(kTmC16, {{&ModuleRecord::adjustType, 3}}) << 9 << "1000" << 0 << 0 << 1000;
}

void ChannelEntriesTest::typedValuesWithinTheirBoundsAreStored()
{
    QFETCH(ModuleRecord, module);
    QFETCH(int, column);
    QFETCH(QString, box);
    QFETCH(int, balance);
    QFETCH(int, zeroAdjust);
    QFETCH(int, gainAdjust);
    const EditResult result = typeIntoCell(module, 2, column, QStringLiteral("0"), box, Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{2, column, box}}));
    QVERIFY(result.stored);
    const ChannelRecord& c = channel(module, 1);
    QCOMPARE(c.balanceValue, balance);
    QCOMPARE(c.zeroAdjust, zeroAdjust);
    QCOMPARE(c.zeroAdjustTable[0], zeroAdjust);
    QCOMPARE(c.gainAdjust, gainAdjust);
    QCOMPARE(c.gainAdjustTable[0], gainAdjust);
    QCOMPARE(channel(module, 0), defaultChannel(0));
}

void ChannelEntriesTest::typedOutOfRangeTextIsShownButNotStored_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("box");
    QTest::newRow("balance 4096, version 41") << adjustable(kTmC16, 41) << 2 << "4096";
    QTest::newRow("balance 256 on TM-C8, version 41") << adjustable(kTmC8, 41) << 2 << "256";
    QTest::newRow("balance 1024, version 40") << adjustable(kTmC16, 40) << 2 << "1024";
    QTest::newRow("balance -1") << adjustable(kTmC16) << 2 << "-1";
    QTest::newRow("zero adjust 256") << adjustable(kTmC16) << 8 << "256";
    QTest::newRow("zero adjust 255.5 rounds to 256") << adjustable(kTmC16) << 8 << "255.5";
    QTest::newRow("gain adjust 1024 on a 12-bit converter")
        << moduleOf(kTmC16, {{&ModuleRecord::adjustType, 2}}) << 9 << "1024";
    QTest::newRow("coefficient -2") << moduleOf(kTmB8) << 12 << "-2";
    QTest::newRow("sensitivity -0.5") << moduleOf(kTmB8) << 13 << "-0.5";
    QTest::newRow("range -5") << moduleOf(kTmB8) << 14 << "-5";
    QTest::newRow("range that is not a number") << moduleOf(kTmB8) << 14 << "abc";
    QTest::newRow("range with a tail") << moduleOf(kTmB8) << 14 << "12abc";
}

void ChannelEntriesTest::typedOutOfRangeTextIsShownButNotStored()
{
    QFETCH(ModuleRecord, module);
    QFETCH(int, column);
    QFETCH(QString, box);
    const ModuleRecord before = module;
    const EditResult result = typeIntoCell(module, 3, column, QStringLiteral("7"), box, Language::Chinese);
    QCOMPARE(result.cells, (QList<CellUpdate>{{3, column, box}}));
    QVERIFY(!result.stored);
    QVERIFY(module == before);
}

void ChannelEntriesTest::typedZeroAdjustLandsAtTheGainEntryOnTmA4Only_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("gain");
    QTest::addColumn<int>("entry");  // -1: the table stays as it was
    QTest::newRow("TM-A4, gain 2") << int(kTmA4) << 2 << 2;
    QTest::newRow("TM-A4, gain 0") << int(kTmA4) << 0 << 0;
    QTest::newRow("TM-C16, gain 2") << int(kTmC16) << 2 << 0;
    QTest::newRow("TM-B8, gain 3") << int(kTmB8) << 3 << 0;
    QTest::newRow("TM-A4, gain code past the table") << int(kTmA4) << 20 << -1;
}

void ChannelEntriesTest::typedZeroAdjustLandsAtTheGainEntryOnTmA4Only()
{
    QFETCH(int, modelCode);
    QFETCH(int, gain);
    QFETCH(int, entry);
    ModuleRecord module = adjustable(modelCode);
    channel(module, 0).gain = static_cast<qint16>(gain);
    const EditResult result = typeIntoCell(module, 1, 8, QStringLiteral("0"), QStringLiteral("77"),
                                           Language::English);
    QVERIFY(result.stored);
    QCOMPARE(channel(module, 0).zeroAdjust, 77);
    for (int i = 0; i < kTableEntries; ++i)
        QCOMPARE(channel(module, 0).zeroAdjustTable[i], i == entry ? 77 : 0);
}

void ChannelEntriesTest::typedGainAdjustLandsInEntryZeroForEveryModel()
{
    ModuleRecord module = adjustable(kTmA4);
    channel(module, 0).gain = 2;
    QVERIFY(typeIntoCell(module, 1, 9, QStringLiteral("0"), QStringLiteral("500"), Language::English).stored);
    QCOMPARE(channel(module, 0).gainAdjust, 500);
    QCOMPARE(channel(module, 0).gainAdjustTable[0], 500);
    QCOMPARE(channel(module, 0).gainAdjustTable[2], 0);
}

void ChannelEntriesTest::typedWholeNumbersRoundHalvesToEven_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("stored");
    QTest::newRow("balance 2.5 gives 2") << 2 << "2.5" << 2;
    QTest::newRow("balance 3.5 gives 4") << 2 << "3.5" << 4;
    QTest::newRow("zero adjust 254.5 gives 254") << 8 << "254.5" << 254;
    QTest::newRow("gain adjust 1022.5 gives 1022") << 9 << "1022.5" << 1022;
}

void ChannelEntriesTest::typedWholeNumbersRoundHalvesToEven()
{
    QFETCH(int, column);
    QFETCH(QString, box);
    QFETCH(int, stored);
    ModuleRecord module = adjustable(kTmC16);
    QVERIFY(typeIntoCell(module, 1, column, QStringLiteral("0"), box, Language::English).stored);
    const ChannelRecord& c = channel(module, 0);
    QCOMPARE(column == 2 ? c.balanceValue : column == 8 ? c.zeroAdjust : c.gainAdjust, stored);
}

void ChannelEntriesTest::typedCoefficientRecomputesTheRange()
{
    ModuleRecord module = voltageTmB8();
    const EditResult result = typeIntoCell(module, 1, 12, QStringLiteral("2.00"), QStringLiteral("4"),
                                           Language::English);
    // 4 x 10 000 000 / (1000 x 10 x 4.0)
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 12, "4"}, {1, 14, "1000"}}));
    QVERIFY(result.stored);
    QCOMPARE(channel(module, 0).gaugeCoef, 4.0f);
    QCOMPARE(channel(module, 0).fullRange, 1000.0f);
}

void ChannelEntriesTest::typedSensitivityRecomputesTheRange()
{
    ModuleRecord module = voltageTmB8();
    setStrain(channel(module, 0), false);
    channel(module, 0).gain = 4;  // 100
    const EditResult result = typeIntoCell(module, 1, 13, QStringLiteral("2.00"), QStringLiteral("3"),
                                           Language::English);
    // 100 x 3 x 10 / 1000
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 13, "3"}, {1, 14, "3.000"}}));
    QCOMPARE(channel(module, 0).sensitivity, 3.0f);
    QCOMPARE(channel(module, 0).fullRange, 3.0f);
}

void ChannelEntriesTest::typedCoefficientThatIsNotANumberCountsAsZero()
{
    // Only the range refuses a text that is not a number; the coefficient reads it as 0.
    ModuleRecord module = voltageTmB8();
    const EditResult result = typeIntoCell(module, 1, 12, QStringLiteral("2.00"), QStringLiteral("abc"),
                                           Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 12, "abc"}, {1, 14, "0"}}));
    QCOMPARE(channel(module, 0).gaugeCoef, 0.0f);
    QCOMPARE(channel(module, 0).fullRange, 0.0f);
}

void ChannelEntriesTest::typedRangeRunsTheAutomaticGainChoice()
{
    // "4mA" reads as 4; with "1,2,5,10", coefficient 2.0 and a full bridge, 2 is
    // the largest step that still reaches 500000.
    ModuleRecord module = moduleOf(kTmB8);
    channel(module, 0).excitation = 1;
    channel(module, 0).gain = 3;
    const EditResult result = typeIntoCell(module, 1, 14, QStringLiteral("2000"), QStringLiteral("500000"),
                                           Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{1, 5, "2"}, {1, 14, "500000"}}));
    QVERIFY(result.stored);
    QCOMPARE(int(channel(module, 0).gain), 1);
    QCOMPARE(channel(module, 0).fullRange, 500000.0f);
}

void ChannelEntriesTest::typingIntoAListColumnShowsTheTextAndStoresNothing()
{
    ModuleRecord module = moduleOf(kTmC16);
    const ModuleRecord before = module;
    const EditResult result = typeIntoCell(module, 4, 1, QStringLiteral("Open"), QStringLiteral("4mA"),
                                           Language::English);
    QCOMPARE(result.cells, (QList<CellUpdate>{{4, 1, "4mA"}}));
    QVERIFY(!result.stored);
    QVERIFY(module == before);
}

void ChannelEntriesTest::typingWhereAClickWouldNotEditDoesNothing_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("cut-off column") << withFilter(1) << 1 << 6;
    QTest::newRow("reference column on TM-B16") << moduleOf(kTmB16) << 1 << 12;
    QTest::newRow("balance without balance") << moduleOf(kTmC16) << 1 << 2;
    QTest::newRow("automatic-balance toggle") << moduleOf(kTmC16) << 1 << 3;
    QTest::newRow("unit column") << moduleOf(kTmB8) << 1 << 15;
    QTest::newRow("channel-name column") << moduleOf(kTmB8) << 1 << 0;
    QTest::newRow("row 0 holds the headings") << adjustable(kTmB8) << 0 << 2;
    QTest::newRow("row 9 of an 8-channel module") << adjustable(kTmB8) << 9 << 2;
}

void ChannelEntriesTest::typingWhereAClickWouldNotEditDoesNothing()
{
    QFETCH(ModuleRecord, module);
    QFETCH(int, row);
    QFETCH(int, column);
    const ModuleRecord before = module;
    QCOMPARE(typeIntoCell(module, row, column, QStringLiteral("1"), QStringLiteral("5"), Language::English),
             EditResult{});
    QVERIFY(module == before);
}

// ---- Frequency entry ------------------------------------------------------

void ChannelEntriesTest::frequencyLimitsFollowTheFilterType_data()
{
    QTest::addColumn<int>("filterType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<FrequencyFit>("fit");
    QTest::newRow("50k: 50000") << 3 << "50000" << FrequencyFit::Within;
    QTest::newRow("50k: 50000.1") << 3 << "50000.1" << FrequencyFit::Overflow;
    QTest::newRow("50k: 1.52593") << 3 << "1.52593" << FrequencyFit::Within;
    QTest::newRow("50k: 1.5259") << 3 << "1.5259" << FrequencyFit::TooLow;
    QTest::newRow("30k: 30000") << 4 << "30000" << FrequencyFit::Within;
    QTest::newRow("30k: 30000.01") << 4 << "30000.01" << FrequencyFit::Overflow;
    QTest::newRow("30k: 2.28889") << 4 << "2.28889" << FrequencyFit::Within;
    QTest::newRow("30k: 2.28888") << 4 << "2.28888" << FrequencyFit::TooLow;
    QTest::newRow("continuous: 10000") << 1 << "10000" << FrequencyFit::Within;
    QTest::newRow("continuous: 10001") << 1 << "10001" << FrequencyFit::Overflow;
    QTest::newRow("continuous: 1.52593") << 1 << "1.52593" << FrequencyFit::Within;
    QTest::newRow("continuous: 1.52592") << 1 << "1.52592" << FrequencyFit::TooLow;
    QTest::newRow("continuous: 0") << 1 << "0" << FrequencyFit::TooLow;
}

void ChannelEntriesTest::frequencyLimitsFollowTheFilterType()
{
    QFETCH(int, filterType);
    QFETCH(QString, text);
    QFETCH(FrequencyFit, fit);
    const FrequencyEntry entry = frequencyEntry(withFilter(filterType), text, Language::English);
    QVERIFY(entry.isNumber);
    QCOMPARE(entry.fit, fit);
}

void ChannelEntriesTest::outOfRangeChoicesSayOverflowOrTooLow_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("caption");
    QTest::newRow("10001 on filter type 1, English") << "10001" << Language::English << "Overflow";
    QTest::newRow("10001 on filter type 1, Chinese") << "10001" << Language::Chinese << "超过最大值";
    QTest::newRow("1 on filter type 1, English") << "1" << Language::English << "Too low";
    QTest::newRow("1 on filter type 1, Chinese") << "1" << Language::Chinese << "低于最小值";
}

void ChannelEntriesTest::outOfRangeChoicesSayOverflowOrTooLow()
{
    QFETCH(QString, text);
    QFETCH(Language, language);
    QFETCH(QString, caption);
    const FrequencyEntry entry = frequencyEntry(withFilter(1), text, language);
    QCOMPARE(entry.captions[0], caption);
    QCOMPARE(entry.captions[1], caption);
    QCOMPARE(entry.choice.code, 0);  // no neighbours worked out
}

void ChannelEntriesTest::withinLimitsTheChoicesShowTheNeighbours_data()
{
    QTest::addColumn<int>("filterType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("upper");
    QTest::addColumn<QString>("lower");
    QTest::addColumn<int>("code");
    // 50000 / 50 and 50000 / 51; the code is 2 x 50.
    QTest::newRow("continuous 1000") << 1 << "1000" << "1000.00000" << "980.39216" << 100;
    QTest::newRow("50k 1000") << 3 << "1000" << "1000.00000" << "980.39216" << 100;
    QTest::newRow("continuous 10000") << 1 << "10000" << "10000.00000" << "8333.33333" << 10;
    QTest::newRow("50k lowest") << 3 << "1.52593" << "1.52593" << "1.52593" << 65534;
    // filterType 4 divides 150000 and its code is the divider itself.
    QTest::newRow("30k 1000") << 4 << "1000" << "1000.00000" << "993.37748" << 150;
    QTest::newRow("30k 30000") << 4 << "30000" << "30000.00000" << "25000.00000" << 5;
    QTest::newRow("30k lowest") << 4 << "2.28889" << "2.28889" << "2.28889" << 65534;
}

void ChannelEntriesTest::withinLimitsTheChoicesShowTheNeighbours()
{
    QFETCH(int, filterType);
    QFETCH(QString, text);
    QFETCH(QString, upper);
    QFETCH(QString, lower);
    QFETCH(int, code);
    const FrequencyEntry entry = frequencyEntry(withFilter(filterType), text, Language::Chinese);
    QVERIFY(entry.isNumber);
    QCOMPARE(entry.fit, FrequencyFit::Within);
    QCOMPARE(entry.captions[0], upper);
    QCOMPARE(entry.captions[1], lower);
    QCOMPARE(entry.choice.code, code);
}

void ChannelEntriesTest::tmC8EntryKeepsTheFilterTypeLimits()
{
    // The frequency dialog starts "TM-C8" at 1.83111; the grid's entry goes by filterType alone.
    const FrequencyEntry entry = frequencyEntry(withFilter(1, kTmC8), QStringLiteral("1.7"), Language::English);
    QCOMPARE(entry.fit, FrequencyFit::Within);
    QCOMPARE(entry.choice.code, 2 * 29411);  // 50000 / 1.7 = 29411.7...
}

void ChannelEntriesTest::pastedTextThatIsNotANumberIsReported_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("letters") << "abc";
    QTest::newRow("number with a tail") << "12abc";
    QTest::newRow("empty") << "";
    QTest::newRow("decimal comma") << "1,5";
    QTest::newRow("infinity") << "inf";
}

void ChannelEntriesTest::pastedTextThatIsNotANumberIsReported()
{
    QFETCH(QString, text);
    const FrequencyEntry entry = frequencyEntry(withFilter(1), text, Language::English);
    QVERIFY(!entry.isNumber);
    QVERIFY(entry.captions[0].isEmpty());
    QVERIFY(entry.captions[1].isEmpty());
}

void ChannelEntriesTest::keysThroughTheDecimalFilterReachTheEntry()
{
    // The keys 1 . 2 . 3 leave "1.23" in the box: a number, below the lowest frequency.
    QString box;
    for (char16_t key : std::u16string_view(u"1.2.3")) {
        if (FilterDecimalKey(key, box, static_cast<int>(box.size()), 0) != 0)
            box += QChar(key);
    }
    QCOMPARE(box, QStringLiteral("1.23"));
    const FrequencyEntry entry = frequencyEntry(withFilter(1), box, Language::English);
    QVERIFY(entry.isNumber);
    QCOMPARE(entry.fit, FrequencyFit::TooLow);
}

// ---- Taking a frequency ---------------------------------------------------

void ChannelEntriesTest::takingAChoiceStoresItsCode_data()
{
    QTest::addColumn<int>("filterType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("caption");
    QTest::newRow("option 0 of 1000") << 1 << "1000" << 0 << 100 << "1000.00000";
    QTest::newRow("option 1 of 1000 adds 2") << 1 << "1000" << 1 << 102 << "980.39216";
    QTest::newRow("30k option 0 of 1000") << 4 << "1000" << 0 << 150 << "1000.00000";
    QTest::newRow("30k option 1 of 1000 adds 2") << 4 << "1000" << 1 << 152 << "993.37748";
    QTest::newRow("option 1 at code 65534 adds nothing") << 3 << "1.52593" << 1 << 65534 << "1.52593";
    QTest::newRow("30k option 1 at code 65534 adds nothing") << 4 << "2.28889" << 1 << 65534 << "2.28889";
}

void ChannelEntriesTest::takingAChoiceStoresItsCode()
{
    QFETCH(int, filterType);
    QFETCH(QString, text);
    QFETCH(int, option);
    QFETCH(int, code);
    QFETCH(QString, caption);
    ModuleRecord module = withFilter(filterType);  // TM-B8: no cut-off groups
    const FrequencyEntry entry = frequencyEntry(module, text, Language::English);
    const EditResult result = takeCutoff(module, 2, entry, option);
    QCOMPARE(result.cells, (QList<CellUpdate>{{2, 6, caption}}));
    QVERIFY(result.stored);
    QVERIFY(cutoffsAre(module, 2, 2, code));
}

void ChannelEntriesTest::takingOnTmC16FillsTheRowsCutOffGroup_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("row 1 of 1-3") << 1 << 1 << 3;
    QTest::newRow("row 3 of 1-3") << 3 << 1 << 3;
    QTest::newRow("row 5 of 4-6") << 5 << 4 << 6;
    QTest::newRow("row 8 of 7-8") << 8 << 7 << 8;
    QTest::newRow("row 9 of 9-11") << 9 << 9 << 11;
    QTest::newRow("row 14 of 12-14") << 14 << 12 << 14;
    QTest::newRow("row 15 of 15-16") << 15 << 15 << 16;
    QTest::newRow("row 16 of 15-16") << 16 << 15 << 16;
}

void ChannelEntriesTest::takingOnTmC16FillsTheRowsCutOffGroup()
{
    QFETCH(int, row);
    QFETCH(int, first);
    QFETCH(int, last);
    ModuleRecord module = withFilter(1, kTmC16);
    const FrequencyEntry entry = frequencyEntry(module, QStringLiteral("1000"), Language::English);
    const EditResult result = takeCutoff(module, row, entry, 1);
    QCOMPARE(result.cells, cutoffCells(first, last, QStringLiteral("980.39216")));
    QVERIFY(cutoffsAre(module, first, last, 102));
}

void ChannelEntriesTest::takingAnEntryWithoutAFrequencyStoresNothing_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("option");
    QTest::newRow("overflow") << withFilter(1) << "10001" << 0;
    QTest::newRow("too low") << withFilter(1) << "1" << 1;
    QTest::newRow("not a number") << withFilter(1) << "abc" << 0;
    QTest::newRow("option 2") << withFilter(1) << "1000" << 2;
    QTest::newRow("option -1") << withFilter(1) << "1000" << -1;
    QTest::newRow("cut-off steps") << withFilter(2) << "1000" << 0;
    QTest::newRow("no filter") << withFilter(0) << "1000" << 0;
}

void ChannelEntriesTest::takingAnEntryWithoutAFrequencyStoresNothing()
{
    QFETCH(ModuleRecord, module);
    QFETCH(QString, text);
    QFETCH(int, option);
    // The entry is read as a continuous filter would read it.
    const FrequencyEntry entry = frequencyEntry(withFilter(1), text, Language::English);
    const ModuleRecord before = module;
    QCOMPARE(takeCutoff(module, 1, entry, option), EditResult{});
    QVERIFY(module == before);
}

// ---- The frequency dialog's OK --------------------------------------------

void ChannelEntriesTest::dialogOkWritesIntoTheSelectedRowsInEitherOrder()
{
    ModuleRecord module = withFilter(3);
    const EditResult result = applyDialogCutoff(module, {4, 2}, QStringLiteral("980.39216"), 102);
    QCOMPARE(result.cells, cutoffCells(2, 4, QStringLiteral("980.39216")));
    QVERIFY(result.stored);
    QVERIFY(cutoffsAre(module, 2, 4, 102));
}

void ChannelEntriesTest::dialogOkOnTmC16WidensToWholeGroups()
{
    // The groups are the cut-off groups table's, tested with it
    // (tests/model/cutoff_groups_test.cpp); here, that the entry goes through
    // it, in either order of the selection.
    for (const RowSpan selection : {RowSpan{2, 5}, RowSpan{13, 4}}) {
        ModuleRecord module = withFilter(1, kTmC16);
        const RowSpan widened = cutoffRows(kTmC16, selection);
        const EditResult result = applyDialogCutoff(module, selection, QStringLiteral("500.00000"), 200);
        QCOMPARE(result.cells, cutoffCells(widened.first, widened.last, QStringLiteral("500.00000")));
        QVERIFY(cutoffsAre(module, widened.first, widened.last, 200));
    }
}

void ChannelEntriesTest::dialogOkWithoutAContinuousCutOffStoresNothing_data()
{
    QTest::addColumn<int>("filterType");
    QTest::newRow("cut-off steps") << 2;
    QTest::newRow("no filter") << 0;
    QTest::newRow("unknown filter") << 5;
}

void ChannelEntriesTest::dialogOkWithoutAContinuousCutOffStoresNothing()
{
    QFETCH(int, filterType);
    ModuleRecord module = withFilter(filterType);
    const ModuleRecord before = module;
    QCOMPARE(applyDialogCutoff(module, {1, 8}, QStringLiteral("1000.00000"), 100), EditResult{});
    QVERIFY(module == before);
}

QTEST_APPLESS_MAIN(ChannelEntriesTest)
#include "channel_entries_test.moc"
