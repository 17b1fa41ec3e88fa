// Two setups of a module compared cell by cell, in the texts the grids and
// the information panel show.
#include "edit/setup_differences.h"
#include "edit_testkit.h"
#include "model/reference.h"
#include "sim/sim_values.h"

#include <set>

#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr qint32 kAllChosen = -1;

QList<CellDifference> differences(const ModuleRecord& from, const ModuleRecord& to, Language language = Language::English)
{
    return setupDifferences(from, to, kAllChosen, language);
}

}  // namespace

class SetupDifferencesTest : public QObject {
    Q_OBJECT
private slots:
    void aSetupIsTheSameAsItself();
    void oneChannelParameterIsOneCellNamedByItsRowAndHeading();
    void referenceColumnsAreToldAndNeverSent();
    void informationRowsAreNamedByTheirLabels();
    void adjustAndCoefficientCellsAreTheirGridsOwn();
    void aCellOnlyOneLayoutHasReadsEmptyInTheOther();
    void thePartsComeInPanelOrder();
    void aWriteSendsEachGroupOfADifferenceOnceAndNoReferenceColumn();
    void everyCellThatReadsOtherwiseIsADifference_data();
    void everyCellThatReadsOtherwiseIsADifference();
};

void SetupDifferencesTest::aSetupIsTheSameAsItself()
{
    for (int model : {kTmA4, kTmC16, kTmB8, kTmB16}) {
        const ModuleRecord module = moduleOf(model);
        QVERIFY(differences(module, module).isEmpty());
        QVERIFY(differences(module, module, Language::Chinese).isEmpty());
    }
}

void SetupDifferencesTest::oneChannelParameterIsOneCellNamedByItsRowAndHeading()
{
    ModuleRecord from = moduleOf(kTmC16);
    ModuleRecord to = from;
    channel(to, 1).gain = static_cast<qint16>(channel(from, 1).gain + 1);
    const QList<CellDifference> found = differences(from, to);
    QCOMPARE(found.size(), 1);
    const CellDifference& d = found.first();
    QCOMPARE(d.part, SetupPart::Channels);
    QCOMPARE(d.row, 2);
    QCOMPARE(d.column, kGainColumn);
    QCOMPARE(d.name, QStringLiteral("CH2 Gain"));
    QCOMPARE(d.before, channelCellText(from, 1, kGainColumn, kAllChosen, Language::English));
    QCOMPARE(d.after, channelCellText(to, 1, kGainColumn, kAllChosen, Language::English));
    QVERIFY(d.before != d.after);
    QVERIFY(!d.reference);
    QCOMPARE(sentDifferences(from, to, kAllChosen, Language::English), found);
    QCOMPARE(differences(from, to, Language::Chinese).first().name, QStringLiteral("CH2 放大倍数"));
}

void SetupDifferencesTest::referenceColumnsAreToldAndNeverSent()
{
    ModuleRecord from = moduleOf(kTmB8);
    channel(from, 0).isStrain = false;  // a sensor channel shows its sensitivity
    ModuleRecord to = from;
    channel(to, 0).sensitivity = channel(from, 0).sensitivity + 1.5f;
    const QList<CellDifference> found = differences(from, to);
    QVERIFY(!found.isEmpty());
    bool sensitivity = false;
    for (const CellDifference& d : found) {
        QCOMPARE(d.part, SetupPart::Channels);
        QVERIFY2(d.column >= kFirstReferenceColumn, qPrintable(d.name));
        QVERIFY(d.reference);
        sensitivity = sensitivity || d.column == kSensitivityColumn;
    }
    QVERIFY(sensitivity);
    QVERIFY(sentDifferences(from, to, kAllChosen, Language::English).isEmpty());
}

void SetupDifferencesTest::informationRowsAreNamedByTheirLabels()
{
    ModuleRecord from = moduleOf(kTmC16);
    from.moduleNumber = 1234;
    ModuleRecord to = from;
    to.moduleNumber = 42;
    const QList<CellDifference> found = differences(from, to);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first(), (CellDifference{SetupPart::Information, 3, 0, QStringLiteral("serial num."),
                                            QStringLiteral("1234"), QStringLiteral("42")}));
    QCOMPARE(differences(from, to, Language::Chinese).first().name, QStringLiteral("产品序号"));

    to = from;
    to.busAddress = static_cast<qint16>(from.busAddress + 3);
    QCOMPARE(differences(from, to).first().row, kInfoAddressRow);
}

void SetupDifferencesTest::adjustAndCoefficientCellsAreTheirGridsOwn()
{
    ModuleRecord from = moduleOf(kTmC16);
    ModuleRecord to = from;
    channel(to, 3).zeroAdjustTable[2] = channel(from, 3).zeroAdjustTable[2] + 7;
    channel(to, 0).gainCoef[0] = channel(from, 0).gainCoef[0] + 25;
    const QList<CellDifference> found = differences(from, to);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found[0].part, SetupPart::Adjust);
    QCOMPARE(found[0].row, 4);
    QCOMPARE(found[0].column, 3);  // zero adjust entries 0..3 in columns 1-4
    QCOMPARE(found[0].after, adjustCellText(channel(to, 3), 3));
    QCOMPARE(found[1].part, SetupPart::Calibration);
    QCOMPARE(found[1].row, 1);
    QCOMPARE(found[1].column, 1);
    QCOMPARE(found[1].after, calibrationCellText(kTmC16, channel(to, 0), 1));
    QCOMPARE(found[1].name, QStringLiteral("CH1 Gain Coef1"));
}

void SetupDifferencesTest::aCellOnlyOneLayoutHasReadsEmptyInTheOther()
{
    // "TM-B8" keeps eleven gain coefficients; "TM-C16" four and four zero ones.
    ModuleRecord from = moduleOf(kTmC16);
    const ModuleRecord to = moduleOf(kTmB8);
    bool eleventh = false;
    for (const CellDifference& d : differences(from, to))
        if (d.part == SetupPart::Calibration && d.column == 11) {
            QCOMPARE(d.before, QString());
            QCOMPARE(d.after, calibrationCellText(kTmB8, to.channels[static_cast<size_t>(d.row - 1)], 11));
            eleventh = true;
        }
    QVERIFY(eleventh);
}

void SetupDifferencesTest::thePartsComeInPanelOrder()
{
    ModuleRecord from = moduleOf(kTmC16);
    ModuleRecord to = from;
    channel(to, 15).gainCoef[1] = channel(from, 15).gainCoef[1] + 1;
    channel(to, 15).gainAdjustTable[0] = channel(from, 15).gainAdjustTable[0] + 1;
    channel(to, 15).excitation = static_cast<qint16>(channel(from, 15).excitation == 0 ? 1 : 0);
    to.version = static_cast<quint8>(from.version + 1);
    QList<SetupPart> parts;
    for (const CellDifference& d : differences(from, to))
        parts << d.part;
    QCOMPARE(parts, (QList<SetupPart>{SetupPart::Information, SetupPart::Channels, SetupPart::Adjust,
                                      SetupPart::Calibration}));
}

void SetupDifferencesTest::aWriteSendsEachGroupOfADifferenceOnceAndNoReferenceColumn()
{
    ModuleRecord from = moduleOf(kTmB8);
    channel(from, 0).isStrain = false;
    ModuleRecord to = from;
    to.version = static_cast<quint8>(from.version + 1);
    channel(to, 0).sensitivity = channel(from, 0).sensitivity + 1.0f;  // a reference column: never sent
    channel(to, 5).excitation = static_cast<qint16>(channel(from, 5).excitation == 0 ? 1 : 0);
    channel(to, 6).gainAdjustTable[1] = channel(from, 6).gainAdjustTable[1] + 1;
    channel(to, 7).gainAdjustTable[2] = channel(from, 7).gainAdjustTable[2] + 1;
    channel(to, 7).gainCoef[0] = channel(from, 7).gainCoef[0] + 1;
    QCOMPARE(groupsToSend(differences(from, to)),
             (QList<WriteGroup>{{SetupPart::Information, 0}, {SetupPart::Channels, 1}, {SetupPart::Adjust, 1},
                                {SetupPart::Calibration, 3}}));
    QVERIFY(groupsToSend(differences(from, from)).isEmpty());
}

void SetupDifferencesTest::everyCellThatReadsOtherwiseIsADifference_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<Language>("language");
    for (int model = 0; model < kModelCount; ++model)
        for (Language language : {Language::Chinese, Language::English})
            QTest::addRow("%s %s", qPrintable(QString::fromUtf16(kModels[model].name)), language == Language::Chinese ? "zh" : "en")
                << model << language;
}

// Two modules of the same model as two simulated lines would hold them:
// nearly every field differs. Each cell of each grid and each information
// row whose text differs is one difference, named by its row and heading,
// with both texts as the grids show them; no other cell is.
void SetupDifferencesTest::everyCellThatReadsOtherwiseIsADifference()
{
    QFETCH(int, model);
    QFETCH(Language, language);
    const ModuleRecord from = sim::simulatedModule(1, model, 1);
    const ModuleRecord to = sim::simulatedModule(1, model, 2);
    std::set<std::tuple<int, int, int>> found;
    for (const CellDifference& d : setupDifferences(from, to, kAllChosen, language))
        found.insert({static_cast<int>(d.part), d.row, d.column});
    std::set<std::tuple<int, int, int>> expected;
    const QList<InfoCell> infoFrom = moduleInfoCells(from, QString(), language);
    const QList<InfoCell> infoTo = moduleInfoCells(to, QString(), language);
    for (int row = 0; row < infoTo.size(); ++row)
        if (infoFrom[row].value != infoTo[row].value)
            expected.insert({static_cast<int>(SetupPart::Information), row, 0});
    const std::pair<SetupPart, std::pair<GridCells, GridCells>> grids[] = {
        {SetupPart::Channels, {channelGridCells(from, language, kAllChosen), channelGridCells(to, language, kAllChosen)}},
        {SetupPart::Adjust, {adjustGridCells(from, language), adjustGridCells(to, language)}},
        {SetupPart::Calibration, {calibrationGridCells(from, language), calibrationGridCells(to, language)}},
    };
    for (const auto& [part, cells] : grids)
        for (int row = 0; row < cells.second.rows.size(); ++row)
            for (int column = 1; column < cells.second.rows[row].size(); ++column)
                if (cells.first.rows.value(row).value(column) != cells.second.rows[row][column])
                    expected.insert({static_cast<int>(part), row + 1, column});
    QVERIFY(expected.size() > 20u);
    QCOMPARE(found, expected);
    for (const CellDifference& d : setupDifferences(from, to, kAllChosen, language)) {
        if (d.part != SetupPart::Channels)
            continue;
        QCOMPARE(d.before, channelCellText(from, d.row - 1, d.column, kAllChosen, language));
        QCOMPARE(d.after, channelCellText(to, d.row - 1, d.column, kAllChosen, language));
        QCOMPARE(d.name, channelGridCells(to, language, kAllChosen).rows[d.row - 1][0] + QLatin1Char(' ')
                             + channelGridCells(to, language, kAllChosen).headings[d.column].replace(QLatin1Char('\n'), QLatin1Char(' ')));
    }
}

QTEST_MAIN(SetupDifferencesTest)
#include "setup_differences_test.moc"
