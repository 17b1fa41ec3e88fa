// Editing rules of the adjust and coefficient grids: the range check while
// typing, what leaving the box stores, the several-rows prompt and where the
// in-place editor goes. Expected records are built by hand from the start
// record, so any field written by mistake shows up as a difference.
#include "edit/grid_cells.h"
#include "edit/trim_rules.h"
#include "edit_testkit.h"

#include <QTest>

#include <limits>

using namespace velmor;
using namespace velmor::testing;

Q_DECLARE_METATYPE(velmor::TrimGrid)

namespace {

// A record whose trimming values are all distinct, so a write to the wrong
// entry or channel cannot go unnoticed.
ModuleRecord filledModule(int modelCode)
{
    ModuleRecord module = moduleOf(modelCode);
    for (int c = 0; c < kWiredChannels; ++c) {
        ChannelRecord& channel = module.channels[static_cast<size_t>(c)];
        for (int e = 0; e < kTableEntries; ++e) {
            const size_t i = static_cast<size_t>(e);
            channel.zeroAdjustTable[i] = 100 + c * 20 + e;
            channel.gainAdjustTable[i] = 500 + c * 20 + e;
            channel.zeroCoef[i] = -1000 - c * 20 - e;
            channel.gainCoef[i] = 10000 + c * 20 + e;
        }
    }
    return module;
}

ChannelRecord& channelOf(ModuleRecord& module, int row)
{
    return module.channels[static_cast<size_t>(row - 1)];
}

qint32& entryOf(Table17& table, int index)
{
    return table[static_cast<size_t>(index)];
}

// The adjust grid's columns 1-4 hold zeroAdjustTable entries 0-3, columns 5-8
// gainAdjustTable entries 0-3.
qint32& adjustEntry(ChannelRecord& channel, int column)
{
    return column <= 4 ? entryOf(channel.zeroAdjustTable, column - 1) : entryOf(channel.gainAdjustTable, column - 5);
}

// A row of the coefficient tables, typed into one cell or answered for several
// rows alike: the model, the grid column, the text, and the coefficient entry
// that takes the scaled value.
struct CoefficientRow {
    int modelCode;
    int column;
    QString text;
    bool zeroCoef;
    int index;
    int value;
};

void addCoefficientColumns()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("zeroCoef");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("value");
}

CoefficientRow fetchCoefficientRow()
{
    QFETCH(int, modelCode);
    QFETCH(int, column);
    QFETCH(QString, text);
    QFETCH(bool, zeroCoef);
    QFETCH(int, index);
    QFETCH(int, value);
    return {modelCode, column, text, zeroCoef, index, value};
}

// `module` with the row's coefficient entry set to its value in rows first..last.
ModuleRecord withCoefficient(ModuleRecord module, int first, int last, const CoefficientRow& row)
{
    for (int r = first; r <= last; ++r) {
        ChannelRecord& channel = channelOf(module, r);
        entryOf(row.zeroCoef ? channel.zeroCoef : channel.gainCoef, row.index) = row.value;
    }
    return module;
}

EditResult oneCell(int row, int column, const QString& text, bool stored)
{
    EditResult result;
    result.cells << CellUpdate{row, column, text};
    result.stored = stored;
    return result;
}

}  // namespace

class TrimRulesTest : public QObject {
    Q_OBJECT

private slots:
    void typing256IntoZeroAdjustWarnsAtOnce();
    void adjustRangeCheck_data();
    void adjustRangeCheck();
    void leaving256StoresNothingAndTheCellStillReads256();
    void leavingAnAdjustCellStoresRoundedHalvesToEven_data();
    void leavingAnAdjustCellStoresRoundedHalvesToEven();
    void eachAdjustColumnWritesItsOwnEntry_data();
    void eachAdjustColumnWritesItsOwnEntry();
    void pastedTextIsCaughtByTheChangeAndLeaveChecks();
    void equalTrimmedTextsChangeNothing_data();
    void equalTrimmedTextsChangeNothing();
    void gainCoef12345Shows123Point45AndTyping1Point25Stores125();
    void leavingACoefficientCellStoresScaledValues_data();
    void leavingACoefficientCellStoresScaledValues();
    void tmB8HasElevenGainCoefficientColumnsAndNoZeroColumns();
    void cellsOutsideTheGridChangeNothing_data();
    void cellsOutsideTheGridChangeNothing();
    void dragOverAColumnOutsideTheGridChangesNothing_data();
    void dragOverAColumnOutsideTheGridChangesNothing();
    void dragOverRows2To5OfGainAdjustWith2000Stores1023();
    void dragRowsGivenInEitherOrderGiveTheSameResult();
    void singleRowDragAsksNothingAndStoresNothing();
    void emptyAnswerCancels_data();
    void emptyAnswerCancels();
    void adjustAnswerIsRoundedAndCappedAtTheColumnLimit_data();
    void adjustAnswerIsRoundedAndCappedAtTheColumnLimit();
    void coefficientAnswerIsScaledLikeTyping_data();
    void coefficientAnswerIsScaledLikeTyping();
    void dragStopsAtTheModulesLastChannel();
    void promptTextsDifferBetweenTheGrids_data();
    void promptTextsDifferBetweenTheGrids();
};

void TrimRulesTest::typing256IntoZeroAdjustWarnsAtOnce()
{
    QVERIFY(adjustTextInRange(QStringLiteral("2"), 1));
    QVERIFY(adjustTextInRange(QStringLiteral("25"), 1));
    QVERIFY(!adjustTextInRange(QStringLiteral("256"), 1));
}

void TrimRulesTest::adjustRangeCheck_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("inRange");
    QTest::newRow("255 zero adjust") << "255" << 1 << true;
    QTest::newRow("256 last zero adjust column") << "256" << 4 << false;
    QTest::newRow("256 gain adjust") << "256" << 5 << true;
    QTest::newRow("1023 gain adjust") << "1023" << 8 << true;
    QTest::newRow("1024 gain adjust") << "1024" << 5 << false;
    QTest::newRow("0") << "0" << 1 << true;
    QTest::newRow("empty reads 0") << "" << 1 << true;
    QTest::newRow("255.9 truncates to 255") << "255.9" << 2 << true;
    QTest::newRow("1023.9 truncates to 1023") << "1023.9" << 6 << true;
    QTest::newRow("pasted -1") << "-1" << 1 << false;
    QTest::newRow("pasted -0.5 truncates toward zero") << "-0.5" << 1 << true;
    QTest::newRow("pasted letters read 0") << "abc" << 1 << true;
    QTest::newRow("pasted 300x reads 300") << "300x" << 3 << false;
    QTest::newRow("pasted 300x in gain adjust") << "300x" << 7 << true;
}

void TrimRulesTest::adjustRangeCheck()
{
    QFETCH(QString, text);
    QFETCH(int, column);
    QFETCH(bool, inRange);
    QCOMPARE(adjustTextInRange(text, column), inRange);
}

void TrimRulesTest::leaving256StoresNothingAndTheCellStillReads256()
{
    ModuleRecord module = filledModule(kTmC16);
    channelOf(module, 3).zeroAdjustTable[0] = 17;
    const ModuleRecord before = module;
    const EditResult result =
        typeIntoTrimCell(TrimGrid::Adjust, module, 3, 1, QStringLiteral("17"), QStringLiteral("256"));
    QCOMPARE(result, oneCell(3, 1, QStringLiteral("256"), false));
    QCOMPARE(module, before);
}

void TrimRulesTest::leavingAnAdjustCellStoresRoundedHalvesToEven_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("stored");
    QTest::addColumn<int>("value");
    QTest::newRow("12") << 1 << "12" << true << 12;
    QTest::newRow("12.5 to even 12") << 1 << "12.5" << true << 12;
    QTest::newRow("13.5 to even 14") << 1 << "13.5" << true << 14;
    QTest::newRow("255 is the highest zero adjust") << 2 << "255" << true << 255;
    QTest::newRow("254.5 to even 254") << 2 << "254.5" << true << 254;
    QTest::newRow("255.5 rounds to 256, not stored") << 2 << "255.5" << false << 0;
    QTest::newRow("1023 is the highest gain adjust") << 5 << "1023" << true << 1023;
    QTest::newRow("1023.5 rounds to 1024, not stored") << 6 << "1023.5" << false << 0;
    QTest::newRow("1024 not stored") << 7 << "1024" << false << 0;
    QTest::newRow("-1 not stored") << 8 << "-1" << false << 0;
    QTest::newRow("-0.4 rounds to 0") << 3 << "-0.4" << true << 0;
    QTest::newRow("letters read 0") << 4 << "abc" << true << 0;
    QTest::newRow("leading number of 7x") << 5 << "7x" << true << 7;
}

void TrimRulesTest::leavingAnAdjustCellStoresRoundedHalvesToEven()
{
    QFETCH(int, column);
    QFETCH(QString, text);
    QFETCH(bool, stored);
    QFETCH(int, value);
    ModuleRecord module = filledModule(kTmC16);
    ModuleRecord expected = module;
    const int row = 4;
    const QString cellText = adjustCellText(channelOf(module, row), column);
    if (stored)
        adjustEntry(channelOf(expected, row), column) = value;
    const EditResult result = typeIntoTrimCell(TrimGrid::Adjust, module, row, column, cellText, text);
    QCOMPARE(result, oneCell(row, column, text, stored));
    QCOMPARE(module, expected);
}

void TrimRulesTest::eachAdjustColumnWritesItsOwnEntry_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("zero");
    QTest::addColumn<int>("index");
    for (int column = 1; column <= 8; ++column) {
        const bool zero = column <= 4;
        QTest::addRow("column %d", column) << column << zero << (zero ? column - 1 : column - 5);
    }
}

void TrimRulesTest::eachAdjustColumnWritesItsOwnEntry()
{
    QFETCH(int, column);
    QFETCH(bool, zero);
    QFETCH(int, index);
    ModuleRecord module = filledModule(kTmC16);
    ModuleRecord expected = module;
    ChannelRecord& channel = channelOf(expected, 7);
    entryOf(zero ? channel.zeroAdjustTable : channel.gainAdjustTable, index) = 42;
    const EditResult result = typeIntoTrimCell(TrimGrid::Adjust, module, 7, column, QStringLiteral("1"),
                                               QStringLiteral("42"));
    QCOMPARE(result, oneCell(7, column, QStringLiteral("42"), true));
    QCOMPARE(module, expected);
    QCOMPARE(adjustCellText(channelOf(module, 7), column), QStringLiteral("42"));
}

void TrimRulesTest::pastedTextIsCaughtByTheChangeAndLeaveChecks()
{
    // The digit filter never sees a paste; "-3" and "12abc" arrive as they are.
    ModuleRecord module = filledModule(kTmC16);
    const ModuleRecord before = module;
    QVERIFY(!adjustTextInRange(QStringLiteral("-3"), 2));
    QCOMPARE(typeIntoTrimCell(TrimGrid::Adjust, module, 1, 2, QStringLiteral("101"), QStringLiteral("-3")),
             oneCell(1, 2, QStringLiteral("-3"), false));
    QCOMPARE(module, before);

    QVERIFY(adjustTextInRange(QStringLiteral("12abc"), 2));
    QCOMPARE(typeIntoTrimCell(TrimGrid::Adjust, module, 1, 2, QStringLiteral("101"), QStringLiteral("12abc")),
             oneCell(1, 2, QStringLiteral("12abc"), true));
    QCOMPARE(channelOf(module, 1).zeroAdjustTable[1], 12);
}

void TrimRulesTest::equalTrimmedTextsChangeNothing_data()
{
    QTest::addColumn<TrimGrid>("grid");
    QTest::addColumn<QString>("cellText");
    QTest::addColumn<QString>("boxText");
    QTest::newRow("adjust, blanks around") << TrimGrid::Adjust << "12" << " 12 ";
    QTest::newRow("adjust, same text") << TrimGrid::Adjust << "256" << "256";
    QTest::newRow("coefficient, blanks around") << TrimGrid::Calibration << " 1.25" << "1.25\t";
}

void TrimRulesTest::equalTrimmedTextsChangeNothing()
{
    QFETCH(TrimGrid, grid);
    QFETCH(QString, cellText);
    QFETCH(QString, boxText);
    // The record holds something else than the cell shows: still nothing is stored.
    ModuleRecord module = filledModule(kTmC16);
    const ModuleRecord before = module;
    QCOMPARE(typeIntoTrimCell(grid, module, 2, 1, cellText, boxText), EditResult{});
    QCOMPARE(module, before);
}

void TrimRulesTest::gainCoef12345Shows123Point45AndTyping1Point25Stores125()
{
    ModuleRecord module = filledModule(kTmC16);
    channelOf(module, 1).gainCoef[0] = 12345;
    const QString shown = calibrationCellText(kTmC16, channelOf(module, 1), 1);
    QCOMPARE(shown, QStringLiteral("123.45"));

    ModuleRecord expected = module;
    channelOf(expected, 1).gainCoef[0] = 125;
    const EditResult result =
        typeIntoTrimCell(TrimGrid::Calibration, module, 1, 1, shown, QStringLiteral("1.25"));
    QCOMPARE(result, oneCell(1, 1, QStringLiteral("1.25"), true));
    QCOMPARE(module, expected);
    QCOMPARE(calibrationCellText(kTmC16, channelOf(module, 1), 1), QStringLiteral("1.25"));
}

void TrimRulesTest::leavingACoefficientCellStoresScaledValues_data()
{
    addCoefficientColumns();
    QTest::newRow("gain column 4") << int(kTmC16) << 4 << "-2" << false << 3 << -200;
    QTest::newRow("gain 0.125 to even 12") << int(kTmC16) << 2 << "0.125" << false << 1 << 12;
    QTest::newRow("gain 0.375 to even 38") << int(kTmC16) << 3 << "0.375" << false << 2 << 38;
    QTest::newRow("zero column 5 in tenths") << int(kTmC16) << 5 << "2.5" << true << 0 << 25;
    QTest::newRow("zero 0.25 to even 2") << int(kTmC16) << 8 << "0.25" << true << 3 << 2;
    QTest::newRow("zero negative") << int(kTmC16) << 6 << "-3.7" << true << 1 << -37;
    QTest::newRow("no range check") << int(kTmC16) << 1 << "99999" << false << 0 << 9999900;
    QTest::newRow("beyond the field saturates") << int(kTmC16) << 1 << "1e20" << false << 0
                                                << std::numeric_limits<qint32>::max();
    QTest::newRow("letters read 0") << int(kTmC16) << 7 << "x1" << true << 2 << 0;
    QTest::newRow("TM-B8 column 5 is a gain coefficient") << int(kTmB8) << 5 << "1.25" << false << 4 << 125;
    QTest::newRow("TM-B8 column 8") << int(kTmB8) << 8 << "0.5" << false << 7 << 50;
    QTest::newRow("TM-B8 column 11") << int(kTmB8) << 11 << "3" << false << 10 << 300;
}

void TrimRulesTest::leavingACoefficientCellStoresScaledValues()
{
    const CoefficientRow row = fetchCoefficientRow();
    ModuleRecord module = filledModule(row.modelCode);
    const ModuleRecord expected = withCoefficient(module, 2, 2, row);
    const QString cellText = calibrationCellText(row.modelCode, channelOf(module, 2), row.column);
    const EditResult result = typeIntoTrimCell(TrimGrid::Calibration, module, 2, row.column, cellText, row.text);
    QCOMPARE(result, oneCell(2, row.column, row.text, true));
    QCOMPARE(module, expected);
}

void TrimRulesTest::tmB8HasElevenGainCoefficientColumnsAndNoZeroColumns()
{
    const ModuleRecord module = filledModule(kTmB8);
    const GridCells cells = calibrationGridCells(module, Language::English);
    QCOMPARE(cells.headings.size(), 12);
    QCOMPARE(cells.headings.at(11), QStringLiteral("Gain Coef11"));
    QVERIFY(!cells.headings.join(QString()).contains(QStringLiteral("Zero Coef")));

    // Column 12 lies beyond the grid; column 11 is its last gain coefficient.
    ModuleRecord edited = module;
    QCOMPARE(typeIntoTrimCell(TrimGrid::Calibration, edited, 1, 12, QStringLiteral("0"), QStringLiteral("5")),
             EditResult{});
    QCOMPARE(edited, module);
    QVERIFY(typeIntoTrimCell(TrimGrid::Calibration, edited, 1, 11, QStringLiteral("0"), QStringLiteral("5")).stored);
    QCOMPARE(channelOf(edited, 1).gainCoef[10], 500);
}

void TrimRulesTest::cellsOutsideTheGridChangeNothing_data()
{
    QTest::addColumn<TrimGrid>("grid");
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("heading row") << TrimGrid::Adjust << int(kTmC16) << 0 << 1;
    QTest::newRow("row 17") << TrimGrid::Adjust << int(kTmC16) << 17 << 1;
    QTest::newRow("row 5 of a four-channel module") << TrimGrid::Adjust << int(kTmA4) << 5 << 1;
    QTest::newRow("channel-name column") << TrimGrid::Adjust << int(kTmC16) << 1 << 0;
    QTest::newRow("adjust column 9") << TrimGrid::Adjust << int(kTmC16) << 1 << 9;
    QTest::newRow("coefficient column 9") << TrimGrid::Calibration << int(kTmC16) << 1 << 9;
    QTest::newRow("coefficient row 9 of TM-B8") << TrimGrid::Calibration << int(kTmB8) << 9 << 1;
}

void TrimRulesTest::cellsOutsideTheGridChangeNothing()
{
    QFETCH(TrimGrid, grid);
    QFETCH(int, modelCode);
    QFETCH(int, row);
    QFETCH(int, column);
    ModuleRecord module = filledModule(modelCode);
    const ModuleRecord before = module;
    QCOMPARE(typeIntoTrimCell(grid, module, row, column, QStringLiteral("1"), QStringLiteral("2")), EditResult{});
    QCOMPARE(module, before);
}

void TrimRulesTest::dragOverAColumnOutsideTheGridChangesNothing_data()
{
    QTest::addColumn<TrimGrid>("grid");
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("column");
    QTest::newRow("channel-name column") << TrimGrid::Adjust << int(kTmC16) << 0;
    QTest::newRow("adjust column 9") << TrimGrid::Adjust << int(kTmC16) << 9;
    QTest::newRow("coefficient column 9") << TrimGrid::Calibration << int(kTmC16) << 9;
    QTest::newRow("coefficient column 12 of TM-B8") << TrimGrid::Calibration << int(kTmB8) << 12;
}

void TrimRulesTest::dragOverAColumnOutsideTheGridChangesNothing()
{
    QFETCH(TrimGrid, grid);
    QFETCH(int, modelCode);
    QFETCH(int, column);
    ModuleRecord module = filledModule(modelCode);
    const ModuleRecord before = module;
    QCOMPARE(answerTrimRows(grid, module, RowSpan{1, 4}, column, QStringLiteral("2")), EditResult{});
    QCOMPARE(module, before);
}

void TrimRulesTest::dragOverRows2To5OfGainAdjustWith2000Stores1023()
{
    ModuleRecord module = filledModule(kTmC16);
    ModuleRecord expected = module;
    for (int row = 2; row <= 5; ++row)
        channelOf(expected, row).gainAdjustTable[1] = 1023;
    QVERIFY(trimRowsNeedPrompt(RowSpan{2, 5}));
    const EditResult result = answerTrimRows(TrimGrid::Adjust, module, RowSpan{2, 5}, 6, QStringLiteral("2000"));
    QCOMPARE(result, storedInRows(2, 5, 6, QStringLiteral("1023")));
    QCOMPARE(module, expected);
}

void TrimRulesTest::dragRowsGivenInEitherOrderGiveTheSameResult()
{
    ModuleRecord downward = filledModule(kTmC16);
    ModuleRecord upward = downward;
    const EditResult down = answerTrimRows(TrimGrid::Calibration, downward, RowSpan{3, 6}, 2, QStringLiteral("1.5"));
    const EditResult up = answerTrimRows(TrimGrid::Calibration, upward, RowSpan{6, 3}, 2, QStringLiteral("1.5"));
    QCOMPARE(down, storedInRows(3, 6, 2, QStringLiteral("1.5")));
    QCOMPARE(up, down);
    QCOMPARE(upward, downward);
    QCOMPARE(channelOf(upward, 3).gainCoef[1], 150);
    QCOMPARE(channelOf(upward, 6).gainCoef[1], 150);
}

void TrimRulesTest::singleRowDragAsksNothingAndStoresNothing()
{
    QVERIFY(!trimRowsNeedPrompt(RowSpan{3, 3}));
    QVERIFY(trimRowsNeedPrompt(RowSpan{3, 4}));
    ModuleRecord module = filledModule(kTmC16);
    const ModuleRecord before = module;
    QCOMPARE(answerTrimRows(TrimGrid::Adjust, module, RowSpan{3, 3}, 1, QStringLiteral("7")), EditResult{});
    QCOMPARE(answerTrimRows(TrimGrid::Calibration, module, RowSpan{3, 3}, 1, QStringLiteral("7")), EditResult{});
    QCOMPARE(module, before);
}

void TrimRulesTest::emptyAnswerCancels_data()
{
    QTest::addColumn<TrimGrid>("grid");
    QTest::addColumn<QString>("answer");
    QTest::newRow("adjust, empty") << TrimGrid::Adjust << "";
    QTest::newRow("adjust, blanks") << TrimGrid::Adjust << "   ";
    QTest::newRow("coefficient, empty") << TrimGrid::Calibration << "";
    QTest::newRow("coefficient, blanks") << TrimGrid::Calibration << " \t ";
}

void TrimRulesTest::emptyAnswerCancels()
{
    QFETCH(TrimGrid, grid);
    QFETCH(QString, answer);
    ModuleRecord module = filledModule(kTmC16);
    const ModuleRecord before = module;
    QCOMPARE(answerTrimRows(grid, module, RowSpan{1, 4}, 2, answer), EditResult{});
    QCOMPARE(module, before);
}

void TrimRulesTest::adjustAnswerIsRoundedAndCappedAtTheColumnLimit_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("300 capped at 255") << 1 << "300" << 255 << "255";
    QTest::newRow("255 stays") << 4 << "255" << 255 << "255";
    QTest::newRow("255.6 rounds past 255, capped") << 2 << "255.6" << 255 << "255";
    QTest::newRow("255.4 rounds to 255, shown as typed") << 2 << "255.4" << 255 << "255.4";
    QTest::newRow("1023 stays") << 5 << "1023" << 1023 << "1023";
    QTest::newRow("1024 capped at 1023") << 8 << "1024" << 1023 << "1023";
    QTest::newRow("12.5 to even 12, shown as typed") << 3 << "12.5" << 12 << "12.5";
    QTest::newRow("negative not checked") << 1 << "-5" << -5 << "-5";
    QTest::newRow("letters read 0") << 6 << "abc" << 0 << "abc";
}

void TrimRulesTest::adjustAnswerIsRoundedAndCappedAtTheColumnLimit()
{
    QFETCH(int, column);
    QFETCH(QString, answer);
    QFETCH(int, value);
    QFETCH(QString, shown);
    ModuleRecord module = filledModule(kTmC16);
    ModuleRecord expected = module;
    for (int row = 9; row <= 10; ++row)
        adjustEntry(channelOf(expected, row), column) = value;
    const EditResult result = answerTrimRows(TrimGrid::Adjust, module, RowSpan{9, 10}, column, answer);
    QCOMPARE(result, storedInRows(9, 10, column, shown));
    QCOMPARE(module, expected);
}

void TrimRulesTest::coefficientAnswerIsScaledLikeTyping_data()
{
    addCoefficientColumns();
    QTest::newRow("gain in hundredths") << int(kTmC16) << 2 << "1.5" << false << 1 << 150;
    QTest::newRow("zero in tenths") << int(kTmC16) << 7 << "1.5" << true << 2 << 15;
    QTest::newRow("zero 0.25 to even 2") << int(kTmC16) << 5 << "0.25" << true << 0 << 2;
    QTest::newRow("no cap") << int(kTmC16) << 1 << "5000" << false << 0 << 500000;
    QTest::newRow("TM-B8 column 9") << int(kTmB8) << 9 << "2" << false << 8 << 200;
}

void TrimRulesTest::coefficientAnswerIsScaledLikeTyping()
{
    const CoefficientRow row = fetchCoefficientRow();
    ModuleRecord module = filledModule(row.modelCode);
    const ModuleRecord expected = withCoefficient(module, 1, 3, row);
    const EditResult result = answerTrimRows(TrimGrid::Calibration, module, RowSpan{1, 3}, row.column, row.text);
    QCOMPARE(result, storedInRows(1, 3, row.column, row.text));
    QCOMPARE(module, expected);
}

void TrimRulesTest::dragStopsAtTheModulesLastChannel()
{
    ModuleRecord module = filledModule(kTmA4);
    ModuleRecord expected = module;
    for (int row = 2; row <= 4; ++row)
        channelOf(expected, row).zeroAdjustTable[0] = 9;
    const EditResult result = answerTrimRows(TrimGrid::Adjust, module, RowSpan{2, 6}, 1, QStringLiteral("9"));
    QCOMPARE(result, storedInRows(2, 4, 1, QStringLiteral("9")));
    QCOMPARE(module, expected);
}

void TrimRulesTest::promptTextsDifferBetweenTheGrids_data()
{
    QTest::addColumn<TrimGrid>("grid");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("adjust, English") << TrimGrid::Adjust << Language::English << "Input" << "Input number: ";
    QTest::newRow("coefficient, English") << TrimGrid::Calibration << Language::English << "Input"
                                          << "Input Number:";
    QTest::newRow("adjust, Chinese") << TrimGrid::Adjust << Language::Chinese << "输入参数"
                                     << "在下面文本框中输入整数值：";
    QTest::newRow("coefficient, Chinese") << TrimGrid::Calibration << Language::Chinese << "输入参数"
                                          << "在下面文本框中输入整数值：";
}

void TrimRulesTest::promptTextsDifferBetweenTheGrids()
{
    QFETCH(TrimGrid, grid);
    QFETCH(Language, language);
    QFETCH(QString, title);
    QFETCH(QString, text);
    const TrimPrompt prompt = trimPrompt(grid, language);
    QCOMPARE(prompt.title, title);
    QCOMPARE(prompt.text, text);
}

QTEST_APPLESS_MAIN(TrimRulesTest)
#include "trim_rules_test.moc"
