// The frequency dialog's steps without widgets: start from the cell text,
// typing, option clicks, leaving the box, OK. Candidate values are worked out by
// hand (base / n, rounded to five decimals).
#include "edit/frequency_dialog_rules.h"
#include "edit_testkit.h"

#include <QTest>

#include <array>

using namespace velmor;
using namespace velmor::testing;

namespace {

// Every channel's cut-off code distinct, to see which rows change.
ModuleRecord moduleWith(int modelCode, int filterType)
{
    ModuleRecord module = moduleOf(modelCode, {{&ModuleRecord::filterType, filterType}});
    for (int c = 0; c < kWiredChannels; ++c)
        channel(module, c).cutoff = 1000 + c;
    return module;
}

using Captions = std::array<QString, 2>;

Captions captions(const char* first, const char* second)
{
    return {QString::fromUtf8(first), QString::fromUtf8(second)};
}

EditResult cutoffCells(int first, int last, const QString& text)
{
    return storedInRows(first, last, kCutoffColumn, text);
}

ModuleRecord withCutoff(ModuleRecord module, int first, int last, int code)
{
    for (int row = first; row <= last; ++row)
        channel(module, row - 1).cutoff = code;
    return module;
}

// A row of the tables that end in what the dialog shows: the module's model
// and filter type, the text, both captions and the code of option 0.
struct ShownRow {
    int modelCode;
    int filterType;
    QString text;
    Captions captions;
    int code;
};

void addShownColumns()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("filterType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("code");
}

ShownRow fetchShownRow()
{
    QFETCH(int, modelCode);
    QFETCH(int, filterType);
    QFETCH(QString, text);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, code);
    return {modelCode, filterType, text, {first, second}, code};
}

void compareShown(const FrequencyDialogState& state, const ShownRow& row)
{
    QCOMPARE(state.text, row.text);
    QCOMPARE(state.captions, row.captions);
    QCOMPARE(state.choice.code, row.code);
}

}  // namespace

class FrequencyDialogRulesTest : public QObject {
    Q_OBJECT

private slots:
    void frequency1000Base50000OffersTwoCandidatesWithCodes100And102();
    void lowest1Point52593Base50000GivesBothCandidatesAndCode65534();
    void zeroAtStartGivesCodeZeroAndKeepsTheCandidates();
    void zeroTypedLaterIsTooLowAndKeepsTheChoice();
    void frequency10001OnFilterType1Overflows();
    void belowTheLowestIsTooLow_data();
    void belowTheLowestIsTooLow();
    void withinTheLimitsRecomputesOnTheFilterTypesBase_data();
    void withinTheLimitsRecomputesOnTheFilterTypesBase();
    void tmC8StartsOnBase150000AndChangesOnFilterType();
    void startTakesTheExactLowestValuesApart_data();
    void startTakesTheExactLowestValuesApart();
    void startShowsCandidatesWithoutALimitCheck();
    void preselectsTheCandidateEqualToFElseTheLowerOne_data();
    void preselectsTheCandidateEqualToFElseTheLowerOne();
    void optionClickCopiesItsCaptionAndKeepsTheCode();
    void optionClickOnAnOutOfRangeCaptionGivesZero();
    void optionClickOutsideTheTwoOptionsIsIgnored();
    void focusLostReformatsAndRefreshes_data();
    void focusLostReformatsAndRefreshes();
    void okWritesTextAndCodeIntoTheSelectedRows();
    void okWithOptionOneAddsTwoOnBase150000Too();
    void okWithOptionOneOnTheLowestValuePasses65535();
    void okOnTmC16WidensToWholeGroups();
    void okTakesRowsInEitherOrder();
    void okStopsAtTheModulesLastChannel();
    void outOfRangeInputIsNoErrorAndOkWritesTheTextThatStands();
    void startingAndCancellingLeavesTheRecordAsItWas();
    void dialogCaptions_data();
    void dialogCaptions();
};

void FrequencyDialogRulesTest::frequency1000Base50000OffersTwoCandidatesWithCodes100And102()
{
    ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    QCOMPARE(state.choice.candidates[0], 1000.0);
    QCOMPARE(state.choice.candidates[1], 980.39216);
    QCOMPARE(state.captions, captions("1000.00000", "980.39216"));
    QCOMPARE(state.choice.code, 100);
    QCOMPARE(state.selectedOption, 0);

    ModuleRecord optionZero = module;
    acceptFrequencyDialog(state, optionZero, RowSpan{2, 2});
    QCOMPARE(optionZero.channels[1].cutoff, 100);

    frequencyOptionClicked(state, 1);
    acceptFrequencyDialog(state, module, RowSpan{2, 2});
    QCOMPARE(module.channels[1].cutoff, 102);
}

void FrequencyDialogRulesTest::lowest1Point52593Base50000GivesBothCandidatesAndCode65534()
{
    const ModuleRecord module = moduleWith(kTmA8, 1);
    const FrequencyDialogState started = startFrequencyDialog(module, QStringLiteral("1.52593"));
    QCOMPARE(started.captions, captions("1.52593", "1.52593"));
    QCOMPARE(started.choice.code, 65534);
    QCOMPARE(started.selectedOption, 0);

    // Typed, the same value takes the same exact path.
    FrequencyDialogState typed = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    frequencyTextChanged(typed, module, QStringLiteral("1.52593"), Language::English);
    QCOMPARE(typed.captions, captions("1.52593", "1.52593"));
    QCOMPARE(typed.choice.code, 65534);
}

void FrequencyDialogRulesTest::zeroAtStartGivesCodeZeroAndKeepsTheCandidates()
{
    const ModuleRecord module = moduleWith(kTmA8, 1);
    const FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("0"));
    QCOMPARE(state.choice.code, 0);
    // Nothing was computed yet, so the candidates stay at their start of 0.
    QCOMPARE(state.choice.candidates[0], 0.0);
    QCOMPARE(state.choice.candidates[1], 0.0);
    QCOMPARE(state.captions, captions(".00000", ".00000"));
    QCOMPARE(state.text, QStringLiteral("0"));
}

void FrequencyDialogRulesTest::zeroTypedLaterIsTooLowAndKeepsTheChoice()
{
    const ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    frequencyTextChanged(state, module, QStringLiteral("0"), Language::English);
    QCOMPARE(state.captions, captions("Too low", "Too low"));
    QCOMPARE(state.choice.candidates[0], 1000.0);
    QCOMPARE(state.choice.candidates[1], 980.39216);
    QCOMPARE(state.choice.code, 100);
}

void FrequencyDialogRulesTest::frequency10001OnFilterType1Overflows()
{
    const ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    frequencyTextChanged(state, module, QStringLiteral("10001"), Language::English);
    QCOMPARE(state.captions, captions("Overflow", "Overflow"));
    QCOMPARE(state.text, QStringLiteral("10001"));
    QCOMPARE(state.choice.code, 100);
    frequencyTextChanged(state, module, QStringLiteral("10001"), Language::Chinese);
    QCOMPARE(state.captions, captions("超过最大值", "超过最大值"));
    // 10000 itself is still within.
    frequencyTextChanged(state, module, QStringLiteral("10000"), Language::English);
    QCOMPARE(state.captions, captions("10000.00000", "8333.33333"));
    QCOMPARE(state.choice.code, 10);
}

void FrequencyDialogRulesTest::belowTheLowestIsTooLow_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("filterType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("caption");
    QTest::newRow("1.52592 on filterType 1") << int(kTmA8) << 1 << "1.52592" << Language::English << "Too low";
    QTest::newRow("1 on filterType 3, Chinese") << int(kTmA8) << 3 << "1" << Language::Chinese << "低于最小值";
    QTest::newRow("2.28888 on filterType 4") << int(kTmA8) << 4 << "2.28888" << Language::English << "Too low";
    QTest::newRow("1.83110 on TM-C8") << int(kTmC8) << 1 << "1.83110" << Language::English << "Too low";
    QTest::newRow("1.52593 on TM-C8") << int(kTmC8) << 3 << "1.52593" << Language::English << "Too low";
    QTest::newRow("letters read 0") << int(kTmA8) << 1 << "abc" << Language::English << "Too low";
    QTest::newRow("negative") << int(kTmA8) << 1 << "-5" << Language::English << "Too low";
}

void FrequencyDialogRulesTest::belowTheLowestIsTooLow()
{
    QFETCH(int, modelCode);
    QFETCH(int, filterType);
    QFETCH(QString, text);
    QFETCH(Language, language);
    QFETCH(QString, caption);
    const ModuleRecord module = moduleWith(modelCode, filterType);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    const CutoffChoice before = state.choice;
    frequencyTextChanged(state, module, text, language);
    QCOMPARE(state.captions, (Captions{caption, caption}));
    QCOMPARE(state.choice.candidates, before.candidates);
    QCOMPARE(state.choice.code, before.code);
}

void FrequencyDialogRulesTest::withinTheLimitsRecomputesOnTheFilterTypesBase_data()
{
    addShownColumns();
    QTest::newRow("3 on filterType 1") << int(kTmA8) << 1 << "3" << "3.00012" << "2.99994" << 33332;
    QTest::newRow("50000 on filterType 3") << int(kTmA8) << 3 << "50000" << "50000.00000" << "25000.00000" << 2;
    QTest::newRow("30000 on filterType 4") << int(kTmA8) << 4 << "30000" << "30000.00000" << "25000.00000" << 5;
    QTest::newRow("2.28889 on filterType 4") << int(kTmA8) << 4 << "2.28889" << "2.28889" << "2.28889" << 65534;
    QTest::newRow("1.83111 on TM-C8 filterType 1") << int(kTmC8) << 1 << "1.83111" << "1.83117" << "1.83110" << 54610;
    QTest::newRow("1.83111 on TM-C8 filterType 4") << int(kTmC8) << 4 << "1.83111" << "1.83112" << "1.83110" << 81917;
    QTest::newRow("leading number of 990Hz") << int(kTmA8) << 1 << "990Hz" << "1000.00000" << "980.39216" << 100;
}

void FrequencyDialogRulesTest::withinTheLimitsRecomputesOnTheFilterTypesBase()
{
    const ShownRow row = fetchShownRow();
    const ModuleRecord module = moduleWith(row.modelCode, row.filterType);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("100.00000"));
    frequencyTextChanged(state, module, row.text, Language::English);
    compareShown(state, row);
}

void FrequencyDialogRulesTest::tmC8StartsOnBase150000AndChangesOnFilterType()
{
    const ModuleRecord module = moduleWith(kTmC8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    QCOMPARE(state.captions, captions("1000.00000", "993.37748"));
    QCOMPARE(state.choice.code, 150);
    frequencyTextChanged(state, module, QStringLiteral("1000.00000"), Language::English);
    QCOMPARE(state.captions, captions("1000.00000", "980.39216"));
    QCOMPARE(state.choice.code, 100);

    // filterType 4 counts on 150000 at start and while typing alike.
    const ModuleRecord other = moduleWith(kTmA8, 4);
    state = startFrequencyDialog(other, QStringLiteral("1000.00000"));
    QCOMPARE(state.choice.code, 150);
    frequencyTextChanged(state, other, QStringLiteral("1000"), Language::English);
    QCOMPARE(state.captions, captions("1000.00000", "993.37748"));
    QCOMPARE(state.choice.code, 150);
}

void FrequencyDialogRulesTest::startTakesTheExactLowestValuesApart_data()
{
    addShownColumns();
    QTest::newRow("1.52593 on base 50000") << int(kTmA8) << 3 << "1.52593" << "1.52593" << "1.52593" << 65534;
    QTest::newRow("2.28889 on base 150000") << int(kTmA8) << 4 << "2.28889" << "2.28889" << "2.28889" << 65534;
    // TM-C8 at start: 1.83111 is exact, n = round(150000 / f) = 81918, and the
    // one division takes 149999.9.
    QTest::newRow("1.83111 on TM-C8") << int(kTmC8) << 1 << "1.83111" << "1.83110" << "1.83110" << 81918;
    QTest::newRow("1.83111 on TM-C8 filterType 4") << int(kTmC8) << 4 << "1.83111" << "1.83110" << "1.83110" << 81918;
    // Elsewhere 1.83111 on base 150000 is an ordinary value: n = floor(150000 / f).
    QTest::newRow("1.83111 on filterType 4") << int(kTmA8) << 4 << "1.83111" << "1.83112" << "1.83110" << 81917;
    QTest::newRow("1.52594 is ordinary") << int(kTmA8) << 1 << "1.52594" << "1.52597" << "1.52593" << 65532;
}

void FrequencyDialogRulesTest::startTakesTheExactLowestValuesApart()
{
    const ShownRow row = fetchShownRow();
    compareShown(startFrequencyDialog(moduleWith(row.modelCode, row.filterType), row.text), row);
}

void FrequencyDialogRulesTest::startShowsCandidatesWithoutALimitCheck()
{
    const FrequencyDialogState state = startFrequencyDialog(moduleWith(kTmA8, 1), QStringLiteral("20000.00000"));
    QCOMPARE(state.captions, captions("25000.00000", "16666.66667"));
    QCOMPARE(state.choice.code, 4);
}

void FrequencyDialogRulesTest::preselectsTheCandidateEqualToFElseTheLowerOne_data()
{
    QTest::addColumn<int>("filterType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("option");
    QTest::newRow("f is candidate 0") << 1 << "1000.00000" << 0;
    QTest::newRow("f between the two takes the lower") << 1 << "990.00000" << 1;
    QTest::newRow("f is candidate 1") << 1 << "980.39216" << 1;
    QTest::newRow("f at five decimals equals candidate 0") << 1 << "999.999999" << 0;
    QTest::newRow("both candidates equal f") << 1 << "1.52593" << 0;
    QTest::newRow("base 150000, f is candidate 0") << 4 << "1000.00000" << 0;
    QTest::newRow("base 150000, f between") << 4 << "997.00000" << 1;
}

void FrequencyDialogRulesTest::preselectsTheCandidateEqualToFElseTheLowerOne()
{
    QFETCH(int, filterType);
    QFETCH(QString, text);
    QFETCH(int, option);
    QCOMPARE(startFrequencyDialog(moduleWith(kTmA8, filterType), text).selectedOption, option);
}

void FrequencyDialogRulesTest::optionClickCopiesItsCaptionAndKeepsTheCode()
{
    const ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("3.00000"));
    QCOMPARE(state.captions, captions("3.00012", "2.99994"));
    QCOMPARE(state.selectedOption, 1);

    frequencyOptionClicked(state, 0);
    QCOMPARE(state.selectedOption, 0);
    QCOMPARE(state.text, QStringLiteral("3.00012"));
    QCOMPARE(state.choice.code, 33332);
    QCOMPARE(state.captions, captions("3.00012", "2.99994"));

    // 2.99994 read back would give the next divider; the click keeps the one
    // the caption came from, so OK writes what the caption shows.
    frequencyOptionClicked(state, 1);
    QCOMPARE(state.selectedOption, 1);
    QCOMPARE(state.text, QStringLiteral("2.99994"));
    QCOMPARE(state.choice.code, 33332);
    ModuleRecord written = module;
    acceptFrequencyDialog(state, written, RowSpan{1, 1});
    QCOMPARE(written.channels[0].cutoff, 33334);
}

void FrequencyDialogRulesTest::optionClickOnAnOutOfRangeCaptionGivesZero()
{
    const ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    frequencyTextChanged(state, module, QStringLiteral("20000"), Language::English);
    frequencyOptionClicked(state, 1);
    QCOMPARE(state.text, QStringLiteral(".00000"));
    QCOMPARE(state.selectedOption, 1);
    QCOMPARE(state.captions, captions("Overflow", "Overflow"));
}

void FrequencyDialogRulesTest::optionClickOutsideTheTwoOptionsIsIgnored()
{
    FrequencyDialogState state = startFrequencyDialog(moduleWith(kTmA8, 1), QStringLiteral("990"));
    frequencyOptionClicked(state, 2);
    frequencyOptionClicked(state, -1);
    QCOMPARE(state.text, QStringLiteral("990"));
    QCOMPARE(state.selectedOption, 1);
}

void FrequencyDialogRulesTest::focusLostReformatsAndRefreshes_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("code");
    QTest::newRow("whole number") << "1000" << "1000.00000" << "1000.00000" << "980.39216" << 100;
    QTest::newRow("more than five decimals") << "12.345678" << "12.34568" << "12.34873" << "12.34568" << 8098;
    QTest::newRow("below 1 drops the leading 0") << "0.5" << ".50000" << "Too low" << "Too low" << 20;
    QTest::newRow("letters read 0") << "abc" << ".00000" << "Too low" << "Too low" << 20;
    QTest::newRow("above the highest") << "20000" << "20000.00000" << "Overflow" << "Overflow" << 20;
}

void FrequencyDialogRulesTest::focusLostReformatsAndRefreshes()
{
    QFETCH(QString, typed);
    QFETCH(QString, text);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, code);
    const ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("5000.00000"));
    QCOMPARE(state.choice.code, 20);
    // The text arrives as a paste would, without a change step of its own.
    state.text = typed;
    frequencyFocusLost(state, module, Language::English);
    QCOMPARE(state.text, text);
    QCOMPARE(state.captions, (Captions{first, second}));
    QCOMPARE(state.choice.code, code);
}

void FrequencyDialogRulesTest::okWritesTextAndCodeIntoTheSelectedRows()
{
    ModuleRecord module = moduleWith(kTmA8, 1);
    const ModuleRecord expected = withCutoff(module, 3, 5, 100);
    const FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    const EditResult result = acceptFrequencyDialog(state, module, RowSpan{3, 5});
    QCOMPARE(result, cutoffCells(3, 5, QStringLiteral("1000.00000")));
    QCOMPARE(module, expected);
}

void FrequencyDialogRulesTest::okWithOptionOneAddsTwoOnBase150000Too()
{
    ModuleRecord module = moduleWith(kTmA8, 4);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    QCOMPARE(state.choice.code, 150);
    frequencyOptionClicked(state, 1);
    const ModuleRecord expected = withCutoff(module, 1, 2, 152);
    QCOMPARE(acceptFrequencyDialog(state, module, RowSpan{1, 2}), cutoffCells(1, 2, QStringLiteral("993.37748")));
    QCOMPARE(module, expected);
}

void FrequencyDialogRulesTest::okWithOptionOneOnTheLowestValuePasses65535()
{
    // The dialog adds 2 without the channel grid's own cap: deliberate.
    ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1.52593"));
    frequencyOptionClicked(state, 1);
    acceptFrequencyDialog(state, module, RowSpan{4, 4});
    QCOMPARE(module.channels[3].cutoff, 65536);
}

void FrequencyDialogRulesTest::okOnTmC16WidensToWholeGroups()
{
    // The groups themselves are the cut-off groups table's, tested with it
    // (tests/model/cutoff_groups_test.cpp); here, that OK goes through it.
    for (int row = 1; row <= kWiredChannels; ++row) {
        ModuleRecord module = moduleWith(kTmC16, 1);
        const RowSpan widened = cutoffRows(kTmC16, RowSpan{row, row});
        const ModuleRecord expected = withCutoff(module, widened.first, widened.last, 100);
        const FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
        const EditResult result = acceptFrequencyDialog(state, module, RowSpan{row, row});
        QCOMPARE(result, cutoffCells(widened.first, widened.last, QStringLiteral("1000.00000")));
        QCOMPARE(module, expected);
    }
}

void FrequencyDialogRulesTest::okTakesRowsInEitherOrder()
{
    ModuleRecord upward = moduleWith(kTmC16, 1);
    ModuleRecord downward = upward;
    const FrequencyDialogState state = startFrequencyDialog(upward, QStringLiteral("1000.00000"));
    const EditResult up = acceptFrequencyDialog(state, upward, RowSpan{7, 5});
    const EditResult down = acceptFrequencyDialog(state, downward, RowSpan{5, 7});
    QCOMPARE(up, cutoffCells(4, 8, QStringLiteral("1000.00000")));
    QCOMPARE(up, down);
    QCOMPARE(upward, downward);

    ModuleRecord other = moduleWith(kTmA8, 1);
    QCOMPARE(acceptFrequencyDialog(state, other, RowSpan{6, 2}), cutoffCells(2, 6, QStringLiteral("1000.00000")));
}

void FrequencyDialogRulesTest::okStopsAtTheModulesLastChannel()
{
    ModuleRecord module = moduleWith(kTmA4, 1);
    const ModuleRecord expected = withCutoff(module, 3, 4, 100);
    const FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    QCOMPARE(acceptFrequencyDialog(state, module, RowSpan{3, 6}), cutoffCells(3, 4, QStringLiteral("1000.00000")));
    QCOMPARE(module, expected);
}

void FrequencyDialogRulesTest::outOfRangeInputIsNoErrorAndOkWritesTheTextThatStands()
{
    ModuleRecord module = moduleWith(kTmA8, 1);
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    frequencyTextChanged(state, module, QStringLiteral("20000"), Language::English);
    QCOMPARE(state.captions, captions("Overflow", "Overflow"));
    // The code stays the one computed last, for 1000.
    const ModuleRecord expected = withCutoff(module, 2, 2, 100);
    QCOMPARE(acceptFrequencyDialog(state, module, RowSpan{2, 2}), cutoffCells(2, 2, QStringLiteral("20000")));
    QCOMPARE(module, expected);
}

void FrequencyDialogRulesTest::startingAndCancellingLeavesTheRecordAsItWas()
{
    // Cancel has no step of its own: everything before OK must leave the record alone.
    const ModuleRecord module = moduleWith(kTmC16, 1);
    const ModuleRecord before = module;
    FrequencyDialogState state = startFrequencyDialog(module, QStringLiteral("1000.00000"));
    frequencyTextChanged(state, module, QStringLiteral("3"), Language::English);
    frequencyOptionClicked(state, 1);
    frequencyFocusLost(state, module, Language::English);
    QCOMPARE(state.text, QStringLiteral("2.99994"));
    QCOMPARE(module, before);
}

void FrequencyDialogRulesTest::dialogCaptions_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("cancel");
    QTest::newRow("English") << Language::English << "Frequence:" << "Ok" << "Cancel";
    QTest::newRow("Chinese") << Language::Chinese << "频率选择：" << "确定" << "取消";
}

void FrequencyDialogRulesTest::dialogCaptions()
{
    QFETCH(Language, language);
    QFETCH(QString, label);
    QFETCH(QString, ok);
    QFETCH(QString, cancel);
    QCOMPARE(frequencyDialogCaptions(language), (FrequencyDialogCaptions{label, ok, cancel}));
}

QTEST_APPLESS_MAIN(FrequencyDialogRulesTest)
#include "frequency_dialog_rules_test.moc"
