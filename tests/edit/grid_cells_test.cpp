// Cell texts of the channel, adjust and coefficient grids, against answers
// worked out by hand from the records' values.
#include "edit/grid_cells.h"
#include "model/capabilities.h"
#include "model/models.h"
#include "model/reference.h"

#include <QTest>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::Language)

namespace {

constexpr qint32 kAllChosen = -1;
const QString kChosen = QStringLiteral("●");
const QString kLeftOut = QStringLiteral("○");

ModuleRecord recordOfModel(int modelCode)
{
    ModuleRecord record = defaultModule();
    recognizeModel(record, modelCode);
    record.modelCode = static_cast<quint8>(modelCode);
    return record;
}

QStringList numbered(const QString& heading, int count)
{
    QStringList out;
    for (int i = 1; i <= count; ++i)
        out << heading + QString::number(i);
    return out;
}

// The last six cells of a row of the channel grid.
QStringList referenceCells(const QStringList& row)
{
    return row.mid(kFirstReferenceColumn);
}

}  // namespace

class GridCellsTest : public QObject {
    Q_OBJECT

private slots:
    void channelHeadingsOfTmC16_data();
    void channelHeadingsOfTmC16();
    void defaultRecordShowsStartTextsInSixteenRows_data();
    void defaultRecordShowsStartTextsInSixteenRows();
    void setValuesShowTheirParameterTexts_data();
    void setValuesShowTheirParameterTexts();
    void codesOutsideTheirListsShowUnknown();
    void autoBalanceColumnFollowsTheMaskBits();
    void tmB8HasGreyReferenceColumns_data();
    void tmB8HasGreyReferenceColumns();
    void referenceCellsOfStrainAndPressureChannels();
    void tmB16ShowsReferenceColumnsInSixteenRows();
    void tmA4HasFourRowsAndNoReferenceColumns();
    void otherModelsEndAtColumnTen();
    void channelCountOutsideZeroToSixteenIsClamped();
    void cellTextOfAColumnTheGridLacksIsEmpty();
    void adjustGridHeadings_data();
    void adjustGridHeadings();
    void adjustGridShowsFirstFourTableEntries();
    void adjustGridOfTmA4HasFourRows();
    void coefficientGridHeadings_data();
    void coefficientGridHeadings();
    void coefficientsAreShownInHundredthsAndTenths();
    void tmB8ShowsElevenGainCoefficientsAndNoZeroCoefficients();
    void informationRowsNameTheLineTheModelAndTheCapabilitiesInPanelOrder();
    void tmB16KeepsFourAndFourCoefficientColumns();
    void everyRowHasOneCellPerHeading();
};

void GridCellsTest::channelHeadingsOfTmC16_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("headings");
    QTest::newRow("Chinese") << Language::Chinese
                             << QStringList{"CH",       "激励",     "桥平衡",   "自动平衡", "AC耦合", "放大倍数",
                                            "截止频率", "同步采保", "零点调整", "增益调整", "积分"};
    QTest::newRow("English") << Language::English
                             << QStringList{"CH",      "Excitation", "Balance",     "Auto",       "Coupling", "Gain",
                                            "Cut off", "SSH",        "Zero Adjust", "Gain Adjust", "Integral"};
}

void GridCellsTest::channelHeadingsOfTmC16()
{
    QFETCH(Language, language);
    QFETCH(QStringList, headings);
    const GridCells cells = channelGridCells(defaultModule(), language, kAllChosen);
    QCOMPARE(cells.headings, headings);
    QVERIFY(cells.greyColumns.isEmpty());
    QVERIFY(cells.firstColumnNamesRows);
}

void GridCellsTest::defaultRecordShowsStartTextsInSixteenRows_data()
{
    // TM-C16 defaults: excitationType 1 with code 0, no balance, AC coupling,
    // gain list "1,2,5,10" at position 0, continuous cut-off at code 100
    // (100000 / 100), division 2^0, no zero adjust, no adjust converter, no integration.
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("firstRow");
    QTest::newRow("Chinese") << Language::Chinese
                             << QStringList{"CH1", "断开", "无程序设置", kChosen, "AC耦合", "1", "1000.00000", "1",
                                            "无程序设置", "无程序设置", "无程序设置"};
    // Without bridge balance the English text is "Unknown", not "No Setup".
    QTest::newRow("English") << Language::English
                             << QStringList{"CH1", "Open", "Unknown", kChosen, "AC Coupling", "1", "1000.00000", "1",
                                            "No Setup", "No Setup", "No Setup"};
}

void GridCellsTest::defaultRecordShowsStartTextsInSixteenRows()
{
    QFETCH(Language, language);
    QFETCH(QStringList, firstRow);
    const GridCells cells = channelGridCells(defaultModule(), language, kAllChosen);
    QCOMPARE(cells.rows.size(), 16);
    QCOMPARE(cells.rows.first(), firstRow);
    QStringList lastRow = firstRow;
    lastRow[0] = QStringLiteral("CH16");
    QCOMPARE(cells.rows.last(), lastRow);
}

void GridCellsTest::setValuesShowTheirParameterTexts_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("row");
    QTest::newRow("Chinese") << Language::Chinese
                             << QStringList{"CH5", "4mA恒流源", "77", kChosen, "DC耦合", "10", "333.33333", "8",
                                            "12", "1000", "二次积分"};
    QTest::newRow("English") << Language::English
                             << QStringList{"CH5", "4mA", "77", kChosen, "DC Coupling", "10", "333.33333", "8",
                                            "12", "1000", "Two Integral"};
}

void GridCellsTest::setValuesShowTheirParameterTexts()
{
    QFETCH(Language, language);
    QFETCH(QStringList, row);
    ModuleRecord record = defaultModule();
    record.balanceType = 1;
    record.zeroType = 1;
    record.adjustType = 2;  // 12 bit
    record.integralType = 1;
    ChannelRecord& channel = record.channels[4];
    channel.excitation = 1;      // the 4 mA source
    channel.balanceValue = 77;
    channel.coupling = 0;
    channel.gain = 3;            // fourth of "1,2,5,10"
    channel.cutoff = 300;        // 100000 / 300 = 333.333...
    channel.holdExponent = 3;    // 2^3
    channel.zeroAdjust = 12;
    channel.gainAdjust = 1000;
    channel.integral = 2;

    const GridCells cells = channelGridCells(record, language, kAllChosen);
    QCOMPARE(cells.rows.at(4), row);
    // Neighbours keep their start values.
    QCOMPARE(cells.rows.at(3).at(5), QStringLiteral("1"));
    QCOMPARE(cells.rows.at(5).at(2), QStringLiteral("0"));
}

void GridCellsTest::codesOutsideTheirListsShowUnknown()
{
    ModuleRecord record = defaultModule();
    record.channels[0].gain = 4;     // "1,2,5,10" has positions 0..3
    record.channels[0].cutoff = 5;   // continuous cut-off starts at code 10
    record.channels[0].excitation = 2;  // excitationType 1 has codes 0 and 1
    const QStringList zh = channelGridCells(record, Language::Chinese, kAllChosen).rows.first();
    const QStringList en = channelGridCells(record, Language::English, kAllChosen).rows.first();
    for (int column : {1, 5, 6}) {
        QCOMPARE(zh.at(column), QStringLiteral("未知"));
        QCOMPARE(en.at(column), QStringLiteral("Unknown"));
    }
}

void GridCellsTest::autoBalanceColumnFollowsTheMaskBits()
{
    // Channels 1 and 3 (bits 0 and 2) and channel 16 (bit 15).
    const qint32 mask = 0x8005;
    const GridCells cells = channelGridCells(defaultModule(), Language::English, mask);
    QStringList marks;
    for (const QStringList& row : cells.rows)
        marks << row.at(kAutoBalanceColumn);
    QStringList expected(16, kLeftOut);
    expected[0] = expected[2] = expected[15] = kChosen;
    QCOMPARE(marks, expected);

    const GridCells none = channelGridCells(defaultModule(), Language::Chinese, 0);
    QCOMPARE(none.rows.at(7).at(kAutoBalanceColumn), kLeftOut);
}

void GridCellsTest::tmB8HasGreyReferenceColumns_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("referenceHeadings");
    QTest::newRow("Chinese") << Language::Chinese
                             << QStringList{"桥型", "应变系数", "灵敏度mv/V", "最大量程", "单位", "类型"};
    QTest::newRow("English") << Language::English
                             << QStringList{"Bridge", "Coef.", "S. (mv/V)", "Range", "Unit", "Type"};
}

void GridCellsTest::tmB8HasGreyReferenceColumns()
{
    QFETCH(Language, language);
    QFETCH(QStringList, referenceHeadings);
    const GridCells cells = channelGridCells(recordOfModel(3), language, kAllChosen);
    QCOMPARE(cells.headings.size(), 17);
    QCOMPARE(cells.headings.mid(kFirstReferenceColumn), referenceHeadings);
    QCOMPARE(cells.headings.at(10), language == Language::Chinese ? QStringLiteral("积分") : QStringLiteral("Integral"));
    QCOMPARE(cells.greyColumns, (QList<int>{11, 12, 13, 14, 15, 16}));
    QCOMPARE(cells.rows.size(), 8);
    QCOMPARE(cells.rows.last().first(), QStringLiteral("CH8"));
}

void GridCellsTest::referenceCellsOfStrainAndPressureChannels()
{
    ModuleRecord record = recordOfModel(3);
    ChannelRecord& pressure = record.channels[1];
    setStrain(pressure, false);
    pressure.sensitivity = 2.5f;
    pressure.fullRange = 12.3456f;
    pressure.bridgeType = 2;

    const GridCells en = channelGridCells(record, Language::English, kAllChosen);
    QCOMPARE(referenceCells(en.rows.at(0)), (QStringList{"Full", "2.00", "", "500000", "με", "Strain"}));
    QCOMPARE(referenceCells(en.rows.at(1)), (QStringList{"1/4", "", "2.50", "12.346", "V", "Pressure"}));

    const GridCells zh = channelGridCells(record, Language::Chinese, kAllChosen);
    QCOMPARE(referenceCells(zh.rows.at(0)), (QStringList{"全桥", "2.00", "", "500000", "με", "应变"}));
    QCOMPARE(referenceCells(zh.rows.at(1)), (QStringList{"1/4桥", "", "2.50", "12.346", "V", "压力"}));
}

void GridCellsTest::tmB16ShowsReferenceColumnsInSixteenRows()
{
    const GridCells cells = channelGridCells(recordOfModel(4), Language::English, kAllChosen);
    QCOMPARE(cells.rows.size(), 16);
    QCOMPARE(cells.headings.size(), 17);
    QCOMPARE(cells.greyColumns.size(), 6);
    QCOMPARE(cells.rows.at(15).at(14), QStringLiteral("500000"));
}

void GridCellsTest::tmA4HasFourRowsAndNoReferenceColumns()
{
    const GridCells cells = channelGridCells(recordOfModel(0), Language::English, kAllChosen);
    QCOMPARE(cells.rows.size(), 4);
    QCOMPARE(cells.headings.size(), 11);
    QVERIFY(cells.greyColumns.isEmpty());
    QCOMPARE(cells.rows.last().first(), QStringLiteral("CH4"));
    QCOMPARE(cells.rows.last().size(), 11);
}

void GridCellsTest::otherModelsEndAtColumnTen()
{
    for (int code : {0, 1, 2, 5, 6, 7, 8, 9}) {
        const GridCells cells = channelGridCells(recordOfModel(code), Language::English, kAllChosen);
        QVERIFY2(cells.headings.size() == 11, qPrintable(QStringLiteral("model code %1").arg(code)));
        QVERIFY(cells.greyColumns.isEmpty());
    }
}

void GridCellsTest::channelCountOutsideZeroToSixteenIsClamped()
{
    ModuleRecord record = defaultModule();
    record.channelCount = 40;  // a damaged file can bring anything
    QCOMPARE(channelGridCells(record, Language::English, kAllChosen).rows.size(), 16);
    QCOMPARE(adjustGridCells(record, Language::English).rows.size(), 16);
    QCOMPARE(calibrationGridCells(record, Language::English).rows.size(), 16);
    record.channelCount = -3;
    QCOMPARE(channelGridCells(record, Language::English, kAllChosen).rows.size(), 0);
    QCOMPARE(adjustGridCells(record, Language::English).rows.size(), 0);
    QCOMPARE(calibrationGridCells(record, Language::English).rows.size(), 0);
}

void GridCellsTest::cellTextOfAColumnTheGridLacksIsEmpty()
{
    const ModuleRecord tmC16 = defaultModule();
    QCOMPARE(channelCellText(tmC16, 0, 11, kAllChosen, Language::English), QString());
    QCOMPARE(channelCellText(recordOfModel(3), 0, 11, kAllChosen, Language::English), QStringLiteral("Full"));
    QCOMPARE(channelCellText(recordOfModel(3), 0, 17, kAllChosen, Language::English), QString());
    QCOMPARE(channelCellText(tmC16, 16, 1, kAllChosen, Language::English), QString());
    QCOMPARE(adjustCellText(tmC16.channels[0], 9), QString());
    QCOMPARE(calibrationCellText(2, tmC16.channels[0], 9), QString());
    QCOMPARE(calibrationCellText(3, tmC16.channels[0], 11), QStringLiteral("0.00"));
    QCOMPARE(calibrationCellText(3, tmC16.channels[0], 12), QString());
}

void GridCellsTest::adjustGridHeadings_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("headings");
    QTest::newRow("Chinese") << Language::Chinese
                             << QStringList{"CH"} + numbered("零点调整", 4) + numbered("增益调整", 4);
    QTest::newRow("English") << Language::English
                             << QStringList{"CH",           "Zero Adjust1", "Zero Adjust2", "Zero Adjust3", "Zero Adjust4",
                                            "Gain Adjust1", "Gain Adjust2", "Gain Adjust3", "Gain Adjust4"};
}

void GridCellsTest::adjustGridHeadings()
{
    QFETCH(Language, language);
    QFETCH(QStringList, headings);
    const GridCells cells = adjustGridCells(defaultModule(), language);
    QCOMPARE(cells.headings, headings);
    QVERIFY(cells.greyColumns.isEmpty());
    QCOMPARE(cells.rows.size(), 16);
    QCOMPARE(cells.rows.at(15), (QStringList{"CH16", "0", "0", "0", "0", "0", "0", "0", "0"}));
}

void GridCellsTest::adjustGridShowsFirstFourTableEntries()
{
    ModuleRecord record = defaultModule();
    record.channels[0].zeroAdjustTable = {10, 20, 30, 40, 99};
    record.channels[0].gainAdjustTable = {1023, 0, 5, 600, 77};
    record.channels[0].zeroAdjust = 11;  // the current value is not a column here
    const GridCells cells = adjustGridCells(record, Language::English);
    QCOMPARE(cells.rows.first(), (QStringList{"CH1", "10", "20", "30", "40", "1023", "0", "5", "600"}));
}

void GridCellsTest::adjustGridOfTmA4HasFourRows()
{
    const GridCells cells = adjustGridCells(recordOfModel(0), Language::Chinese);
    QCOMPARE(cells.rows.size(), 4);
    QCOMPARE(cells.rows.last().first(), QStringLiteral("CH4"));
}

void GridCellsTest::coefficientGridHeadings_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("headings");
    QTest::newRow("Chinese") << Language::Chinese
                             << QStringList{"CH"} + numbered("增益系数", 4) + numbered("零点偏移", 4);
    QTest::newRow("English") << Language::English
                             << QStringList{"CH",         "Gain Coef1", "Gain Coef2", "Gain Coef3", "Gain Coef4",
                                            "Zero Coef1", "Zero Coef2", "Zero Coef3", "Zero Coef4"};
}

void GridCellsTest::coefficientGridHeadings()
{
    QFETCH(Language, language);
    QFETCH(QStringList, headings);
    const GridCells cells = calibrationGridCells(defaultModule(), language);
    QCOMPARE(cells.headings, headings);
    QVERIFY(cells.greyColumns.isEmpty());
    QCOMPARE(cells.rows.at(0), (QStringList{"CH1", "0.00", "0.00", "0.00", "0.00", "0.0", "0.0", "0.0", "0.0"}));
}

void GridCellsTest::coefficientsAreShownInHundredthsAndTenths()
{
    ModuleRecord record = defaultModule();
    record.channels[2].gainCoef = {12345, 100, -5, 7, 999};
    record.channels[2].zeroCoef = {-15, 7, 1000, 3, 999};
    const GridCells cells = calibrationGridCells(record, Language::English);
    QCOMPARE(cells.rows.at(2),
             (QStringList{"CH3", "123.45", "1.00", "-0.05", "0.07", "-1.5", "0.7", "100.0", "0.3"}));
}

void GridCellsTest::tmB8ShowsElevenGainCoefficientsAndNoZeroCoefficients()
{
    ModuleRecord record = recordOfModel(3);
    record.channels[7].gainCoef = {100, 200, 300, 400, 12345, 0, 0, 0, 0, 0, 250, 99999};
    record.channels[7].zeroCoef = {-15, 7, 1000, 3};
    const GridCells en = calibrationGridCells(record, Language::English);
    QCOMPARE(en.headings, QStringList{"CH"} + numbered("Gain Coef", 11));
    QCOMPARE(en.rows.size(), 8);
    QCOMPARE(en.rows.at(7), (QStringList{"CH8", "1.00", "2.00", "3.00", "4.00", "123.45", "0.00", "0.00", "0.00",
                                         "0.00", "0.00", "2.50"}));
    const GridCells zh = calibrationGridCells(record, Language::Chinese);
    QCOMPARE(zh.headings, QStringList{"CH"} + numbered("增益系数", 11));
}

void GridCellsTest::tmB16KeepsFourAndFourCoefficientColumns()
{
    const GridCells cells = calibrationGridCells(recordOfModel(4), Language::English);
    QCOMPARE(cells.headings.size(), 9);
    QCOMPARE(cells.headings.at(5), QStringLiteral("Zero Coef1"));
}

void GridCellsTest::everyRowHasOneCellPerHeading()
{
    for (int code = 0; code <= 9; ++code) {
        const ModuleRecord record = recordOfModel(code);
        for (const GridCells& cells : {channelGridCells(record, Language::Chinese, kAllChosen),
                                       adjustGridCells(record, Language::Chinese),
                                       calibrationGridCells(record, Language::English)}) {
            QVERIFY(!cells.rows.isEmpty());
            for (const QStringList& row : cells.rows)
                QVERIFY2(row.size() == cells.headings.size(), qPrintable(QStringLiteral("model code %1").arg(code)));
        }
    }
}

void GridCellsTest::informationRowsNameTheLineTheModelAndTheCapabilitiesInPanelOrder()
{
    ModuleRecord record = defaultModule();
    record.busAddress = 7;
    record.moduleNumber = 4242;
    record.version = 3;
    const QList<InfoCell> cells = moduleInfoCells(record, QStringLiteral("SIM1"), Language::English);
    QStringList labels;
    for (const InfoCell& cell : cells)
        labels << cell.label;
    QCOMPARE(labels, (QStringList{"COM Port", "Module Index", "Type", "serial num.", "Ver.", "Balance", "Excitation",
                                  "Coupling", "Filter", "SSH", "Zero Adjust", "Gain Adjust", "Gain", "Integral"}));
    QCOMPARE(cells[0].value, QStringLiteral("SIM1"));
    QCOMPARE(cells[1].value, QStringLiteral("7"));
    QCOMPARE(cells[kInfoModelRow].value, capabilityText(record, Capability::Model, Language::English));
    QCOMPARE(cells[3].value, QStringLiteral("4242"));
    QCOMPARE(cells[4].value, QStringLiteral("3"));
    QCOMPARE(cells[6].value, capabilityText(record, Capability::Excitation, Language::English));
}

QTEST_APPLESS_MAIN(GridCellsTest)
#include "grid_cells_test.moc"
