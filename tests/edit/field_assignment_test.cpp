// A field of the channels set to a value through the channel grid's own
// rules, as velmor-cli edit sets it: without starting a process.
#include "edit_testkit.h"

#include "edit/channel_rules.h"
#include "edit/field_assignment.h"
#include "edit/grid_cells.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr RowSpan kAllSixteen{1, 16};

// The assignment into `module`: the refusal, empty when it was taken.
QString assigned(ModuleRecord& module, const QString& name, const QString& value,
                                const QList<RowSpan>& runs = {kAllSixteen})
{
    EditResult result;
    return assignField(module, {name, value}, runs, Language::English, result).value_or(QString());
}

}  // namespace

class FieldAssignmentTest : public QObject {
    Q_OBJECT

private slots:
    void aListItemIsNamedInEitherLanguageOrByItsCode_data();
    void aListItemIsNamedInEitherLanguageOrByItsCode();
    void aValueThatIsNoItemNamesTheItems();
    void anUnknownFieldListsTheFieldsButNotTheUnit();
    void anAdjustLandsInTheNamedRowsAndStopsAtItsHighest();
    void aNegativeNumberIsRefused();
    void theChosenChannelsRunInContiguousSelections();
};

void FieldAssignmentTest::aListItemIsNamedInEitherLanguageOrByItsCode_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<bool>("byCode");
    QTest::newRow("English item") << Language::English << false;
    QTest::newRow("Chinese item") << Language::Chinese << false;
    QTest::newRow("code") << Language::English << true;
}

void FieldAssignmentTest::aListItemIsNamedInEitherLanguageOrByItsCode()
{
    QFETCH(Language, language);
    QFETCH(bool, byCode);
    const ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::excitationType, 1}});
    const QString value = byCode ? QStringLiteral("1") : channelEditor(module, kExcitationColumn, language).items.at(1);
    ModuleRecord edited = module;
    QCOMPARE(assigned(edited, "excitation", value), QString());
    ModuleRecord expected = module;
    chooseListItem(expected, kExcitationColumn, 1, kAllSixteen, Language::English);
    QCOMPARE(edited, expected);
    QVERIFY(edited != module);
}

void FieldAssignmentTest::aValueThatIsNoItemNamesTheItems()
{
    ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::excitationType, 1}});
    const QStringList items = channelEditor(module, kExcitationColumn, Language::English).items;
    QCOMPARE(assigned(module, "excitation", "9 kV"),
             QStringLiteral("9 kV is not an item of excitation. The items are: %1.").arg(items.join(", ")));
}

void FieldAssignmentTest::anUnknownFieldListsTheFieldsButNotTheUnit()
{
    ModuleRecord module = moduleOf(kTmC16);
    QCOMPARE(assigned(module, "colour", "red"),
             QStringLiteral("There is no field colour. The fields are: excitation, balance, coupling, gain, cutoff, "
                            "division, zero-adjust, gain-adjust, integral, bridge, coef, sensitivity, range, type."));
    QCOMPARE(assigned(module, "unit", "V"), QStringLiteral("The channel grid of a TM-C16 has no unit column."));
    ModuleRecord tmB8 = moduleOf(kTmB8);
    QCOMPARE(assigned(tmB8, "unit", "V"), QStringLiteral("The unit follows the type and is not set on its own."));
}

void FieldAssignmentTest::anAdjustLandsInTheNamedRowsAndStopsAtItsHighest()
{
    const ModuleRecord module =
        moduleOf(kTmB8, {{&ModuleRecord::zeroType, 1}, {&ModuleRecord::adjustType, 1}});
    ModuleRecord edited = module;
    QCOMPARE(assigned(edited, "zero-adjust", "120", {{2, 2}, {4, 4}}), QString());
    QCOMPARE(edited.channels[1].zeroAdjust, 120);
    QCOMPARE(edited.channels[3].zeroAdjust, 120);
    QCOMPARE(edited.channels[2].zeroAdjust, module.channels[2].zeroAdjust);
    QCOMPARE(assigned(edited, "zero-adjust", "256"), QStringLiteral("zero-adjust takes a whole number from 0 to 255."));
    QCOMPARE(assigned(edited, "gain-adjust", "1024"), QStringLiteral("gain-adjust takes a whole number from 0 to 1023."));
}

void FieldAssignmentTest::aNegativeNumberIsRefused()
{
    ModuleRecord module = moduleOf(kTmB8);
    QCOMPARE(assigned(module, "sensitivity", "-1"), QStringLiteral("sensitivity takes a number of 0 or more."));
}

void FieldAssignmentTest::theChosenChannelsRunInContiguousSelections()
{
    QCOMPARE(runsOfMask(0b11111101), (QList<RowSpan>{{1, 1}, {3, 8}}));
    QCOMPARE(runsOfMask(0x8001), (QList<RowSpan>{{1, 1}, {16, 16}}));
    QCOMPARE(runsOfMask(0xFFFF), (QList<RowSpan>{{1, 16}}));
    QVERIFY(runsOfMask(0).isEmpty());
}

QTEST_APPLESS_MAIN(FieldAssignmentTest)
#include "field_assignment_test.moc"
