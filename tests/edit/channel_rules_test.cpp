// The channel grid's editors: which one a click opens, what opening the
// division list does, and the automatic-balance toggle.
#include "edit/channel_rules.h"
#include "edit_testkit.h"
#include "model/models.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace velmor {

// Readable failure messages (found by QTest through argument-dependent lookup).
char* toString(EditorKind kind)
{
    return QTest::toString(QString::number(static_cast<int>(kind)).prepend(QStringLiteral("EditorKind ")));
}
char* toString(Refusal refusal)
{
    return QTest::toString(QString::number(static_cast<int>(refusal)).prepend(QStringLiteral("Refusal ")));
}

}  // namespace velmor

Q_DECLARE_METATYPE(velmor::EditorKind)
Q_DECLARE_METATYPE(velmor::Refusal)

class ChannelRulesTest : public QObject {
    Q_OBJECT

private slots:
    void everyEditorKindReachesItsOwnHandler();
    // Which editor a click opens.
    void listColumnsOfferTheirItemsAndCaptions_data();
    void listColumnsOfferTheirItemsAndCaptions();
    void promptColumnsAskForNumbers_data();
    void promptColumnsAskForNumbers();
    void continuousCutOffOpensTheFrequencyDialog_data();
    void continuousCutOffOpensTheFrequencyDialog();
    void autoBalanceColumnIsAToggleEvenWithoutBalance();
    void columnWithoutItsCapabilityOpensNothing_data();
    void columnWithoutItsCapabilityOpensNothing();
    void integralListOpensWithoutIntegration();
    void referenceColumnsAreEditableOnTmB8Only_data();
    void referenceColumnsAreEditableOnTmB8Only();
    void columnsTheGridLacksOpenNothing_data();
    void columnsTheGridLacksOpenNothing();
    void unknownCapabilityCodesOpenNoList_data();
    void unknownCapabilityCodesOpenNoList();
    // Opening the division list.
    void openingDivisionListLowersExponentAboveSeven_data();
    void openingDivisionListLowersExponentAboveSeven();
    void openingOtherListsLeavesTheExponent();
    // Automatic-balance toggle.
    void toggleFlipsOnlyTheClickedRowsBit_data();
    void toggleFlipsOnlyTheClickedRowsBit();
    void toggleOutsideTheChannelsChangesNothing_data();
    void toggleOutsideTheChannelsChangesNothing();
};

// ---- Which editor a click opens ------------------------------------------

void ChannelRulesTest::listColumnsOfferTheirItemsAndCaptions_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("items");

    const ModuleRecord tmC16 = moduleOf(kTmC16);
    const ModuleRecord tmB8 = moduleOf(kTmB8);
    const auto excitation = [](int type) { return moduleOf(kTmC16, {{&ModuleRecord::excitationType, type}}); };
    const QStringList allExcitations{"4mA", "100uA", "10.0V", "5.0V", "2.5V", "1.25V", "断开"};

    QTest::newRow("excitation type 1, Chinese") << excitation(1) << Language::Chinese << 1 << "激励设置："
                                                << QStringList{"断开", "4mA恒流源"};
    QTest::newRow("excitation type 1, English") << excitation(1) << Language::English << 1 << "Excitation:"
                                                << QStringList{"Open", "4mA"};
    QTest::newRow("excitation type 2") << excitation(2) << Language::English << 1 << "Excitation:"
                                       << QStringList{"10.0V", "5.0V", "2.5V", "1.25V"};
    QTest::newRow("excitation type 3, Chinese") << excitation(3) << Language::Chinese << 1 << "激励设置："
                                                << allExcitations;
    QTest::newRow("excitation type 3, English keeps 断开") << excitation(3) << Language::English << 1 << "Excitation:"
                                                          << allExcitations;
    QTest::newRow("coupling, Chinese") << tmC16 << Language::Chinese << 4 << "AC耦合设置："
                                       << QStringList{"DC耦合", "AC耦合"};
    QTest::newRow("coupling, English") << tmC16 << Language::English << 4 << "AC Coupling:"
                                       << QStringList{"DC Coupling", "AC Coupling"};
    QTest::newRow("gain type 2, Chinese") << tmC16 << Language::Chinese << 5 << "增益设置："
                                          << QStringList{"1", "2", "5", "10"};
    QTest::newRow("gain type 7, English") << moduleOf(kTmC16, {{&ModuleRecord::gainType, 7}}) << Language::English
                                          << 5 << "Gain: "
                                          << QStringList{"1",   "2",   "5",    "10",   "20",   "50",   "100",
                                                         "200", "500", "1000", "2000", "5000", "10000"};
    const ModuleRecord steps = moduleOf(kTmC16, {{&ModuleRecord::filterType, 2}});
    QTest::newRow("cut-off steps, Chinese") << steps << Language::Chinese << 6 << "截止频率设置："
                                            << QStringList{"直通", "10Hz", "1KHz"};
    QTest::newRow("cut-off steps, English") << steps << Language::English << 6 << "Cut off F: "
                                            << QStringList{"Bypass", "10Hz", "1KHz"};
    const QStringList divisions{"1", "2", "4", "8", "16", "32", "64", "128"};
    QTest::newRow("division, Chinese") << tmC16 << Language::Chinese << 7 << "同步分频设置：" << divisions;
    QTest::newRow("division, English") << tmC16 << Language::English << 7 << "fre. division:" << divisions;
    QTest::newRow("integral, Chinese") << tmC16 << Language::Chinese << 10 << "积分设置："
                                       << QStringList{"无", "一次积分", "二次积分"};
    QTest::newRow("integral, English") << tmC16 << Language::English << 10 << "Integral: "
                                       << QStringList{"No", "One integral", "two integral"};
    QTest::newRow("bridge, Chinese") << tmB8 << Language::Chinese << 11 << "通道桥型设置："
                                     << QStringList{"全桥", "半桥", "1/4桥"};
    QTest::newRow("bridge, English") << tmB8 << Language::English << 11 << "Bridge Type:"
                                     << QStringList{"Full", "1/2", "1/4"};
    QTest::newRow("object type, Chinese") << tmB8 << Language::Chinese << 16 << "通道测量对象类型："
                                          << QStringList{"应变", "压力"};
    QTest::newRow("object type, English") << tmB8 << Language::English << 16 << "Object type: "
                                          << QStringList{"Strain", "Pressure"};
}

void ChannelRulesTest::listColumnsOfferTheirItemsAndCaptions()
{
    QFETCH(ModuleRecord, module);
    QFETCH(Language, language);
    QFETCH(int, column);
    QFETCH(QString, caption);
    QFETCH(QStringList, items);
    const ChannelEditor editor = channelEditor(module, column, language);
    QCOMPARE(editor.kind, EditorKind::List);
    QCOMPARE(editor.refusal, Refusal::None);
    QCOMPARE(editor.caption, caption);
    QCOMPARE(editor.items, items);
    QVERIFY(editor.promptTitle.isEmpty());
}

void ChannelRulesTest::promptColumnsAskForNumbers_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<int>("column");
    QTest::addColumn<EditorKind>("kind");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("prompt");
    for (int column : {2, 8, 9, 12, 13, 14}) {
        const EditorKind kind = column < 12 ? EditorKind::WholeNumberPrompt : EditorKind::NumberPrompt;
        QTest::addRow("column %d, Chinese", column) << Language::Chinese << column << kind << "输入参数"
                                                    << "在下面文本框中输入整数值：";
        QTest::addRow("column %d, English", column) << Language::English << column << kind << "Input"
                                                    << "Input number: ";
    }
}

void ChannelRulesTest::promptColumnsAskForNumbers()
{
    QFETCH(Language, language);
    QFETCH(int, column);
    QFETCH(EditorKind, kind);
    QFETCH(QString, title);
    QFETCH(QString, prompt);
    const ModuleRecord module = moduleOf(
        kTmB8, {{&ModuleRecord::balanceType, 1}, {&ModuleRecord::zeroType, 1}, {&ModuleRecord::adjustType, 1}});
    const ChannelEditor editor = channelEditor(module, column, language);
    QCOMPARE(editor.kind, kind);
    QCOMPARE(editor.promptTitle, title);
    QCOMPARE(editor.promptText, prompt);
    QVERIFY(editor.items.isEmpty());
}

void ChannelRulesTest::continuousCutOffOpensTheFrequencyDialog_data()
{
    QTest::addColumn<int>("filterType");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("caption");
    for (int filterType : {1, 3, 4}) {
        QTest::addRow("filter type %d, Chinese", filterType) << filterType << Language::Chinese << "频率选择：";
        QTest::addRow("filter type %d, English", filterType) << filterType << Language::English << "Frequence:";
    }
}

void ChannelRulesTest::continuousCutOffOpensTheFrequencyDialog()
{
    QFETCH(int, filterType);
    QFETCH(Language, language);
    QFETCH(QString, caption);
    const ChannelEditor editor = channelEditor(moduleOf(kTmC16, {{&ModuleRecord::filterType, filterType}}), 6, language);
    QCOMPARE(editor.kind, EditorKind::FrequencyDialog);
    QCOMPARE(editor.caption, caption);
    QVERIFY(editor.items.isEmpty());
}

void ChannelRulesTest::autoBalanceColumnIsAToggleEvenWithoutBalance()
{
    const ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::balanceType, 0}});
    QCOMPARE(channelEditor(module, 3, Language::English).kind, EditorKind::Toggle);
    QCOMPARE(channelEditor(module, 2, Language::English).kind, EditorKind::None);
}

void ChannelRulesTest::columnWithoutItsCapabilityOpensNothing_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<ModuleRecord>("module");
    const auto without = [](quint8 ModuleRecord::*code) {
        // Every capability present, then the one under test taken away.
        ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::balanceType, 1}, {&ModuleRecord::zeroType, 1},
                                                {&ModuleRecord::adjustType, 1}});
        module.*code = 0;
        return module;
    };
    QTest::newRow("excitation with excitationType 0") << 1 << without(&ModuleRecord::excitationType);
    QTest::newRow("balance with balanceType 0") << 2 << without(&ModuleRecord::balanceType);
    QTest::newRow("coupling with acCouplingType 0") << 4 << without(&ModuleRecord::acCouplingType);
    QTest::newRow("gain with gainType 0") << 5 << without(&ModuleRecord::gainType);
    QTest::newRow("cut-off with filterType 0") << 6 << without(&ModuleRecord::filterType);
    QTest::newRow("division with holdType 0") << 7 << without(&ModuleRecord::holdType);
    QTest::newRow("zero adjust with zeroType 0") << 8 << without(&ModuleRecord::zeroType);
    QTest::newRow("gain adjust with adjustType 0") << 9 << without(&ModuleRecord::adjustType);
}

void ChannelRulesTest::columnWithoutItsCapabilityOpensNothing()
{
    QFETCH(int, column);
    QFETCH(ModuleRecord, module);
    for (Language language : {Language::Chinese, Language::English}) {
        const ChannelEditor editor = channelEditor(module, column, language);
        QCOMPARE(editor.kind, EditorKind::None);
        QCOMPARE(editor.refusal, Refusal::NoCapability);
        QVERIFY(editor.items.isEmpty());
    }
    // With the capability back the same click opens an editor.
    ModuleRecord present = module;
    for (quint8 ModuleRecord::*code : kCapabilityFields)
        if (present.*code == 0)
            present.*code = 1;
    QVERIFY(channelEditor(present, column, Language::English).kind != EditorKind::None);
}

void ChannelRulesTest::integralListOpensWithoutIntegration()
{
    // Column 10 is not governed by integralType: the list opens all the same.
    const ChannelEditor editor = channelEditor(moduleOf(kTmC16, {{&ModuleRecord::integralType, 0}}), 10,
                                               Language::English);
    QCOMPARE(editor.kind, EditorKind::List);
    QCOMPARE(editor.items.size(), 3);
}

void ChannelRulesTest::referenceColumnsAreEditableOnTmB8Only_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<EditorKind>("onTmB8");
    QTest::newRow("bridge") << 11 << EditorKind::List;
    QTest::newRow("coefficient") << 12 << EditorKind::NumberPrompt;
    QTest::newRow("sensitivity") << 13 << EditorKind::NumberPrompt;
    QTest::newRow("range") << 14 << EditorKind::NumberPrompt;
    QTest::newRow("object type") << 16 << EditorKind::List;
}

void ChannelRulesTest::referenceColumnsAreEditableOnTmB8Only()
{
    QFETCH(int, column);
    QFETCH(EditorKind, onTmB8);
    const ChannelEditor tmB8 = channelEditor(moduleOf(kTmB8), column, Language::English);
    QCOMPARE(tmB8.kind, onTmB8);
    QCOMPARE(tmB8.refusal, Refusal::None);
    // "TM-B16" shows the same columns but a click on them opens nothing.
    const ChannelEditor tmB16 = channelEditor(moduleOf(kTmB16), column, Language::English);
    QCOMPARE(tmB16.kind, EditorKind::None);
    QCOMPARE(tmB16.refusal, Refusal::ReferenceReadOnly);
}

void ChannelRulesTest::columnsTheGridLacksOpenNothing_data()
{
    QTest::addColumn<ModuleRecord>("module");
    QTest::addColumn<int>("column");
    QTest::addColumn<Refusal>("refusal");
    QTest::newRow("column 0 names the channel") << moduleOf(kTmB8) << 0 << Refusal::NoSuchColumn;
    QTest::newRow("column -1") << moduleOf(kTmB8) << -1 << Refusal::NoSuchColumn;
    QTest::newRow("column 17") << moduleOf(kTmB8) << 17 << Refusal::NoSuchColumn;
    QTest::newRow("column 17 on TM-B16") << moduleOf(kTmB16) << 17 << Refusal::NoSuchColumn;
    QTest::newRow("reference column on TM-C16") << moduleOf(kTmC16) << 12 << Refusal::NoSuchColumn;
    QTest::newRow("reference column on TM-C8") << moduleOf(kTmC8) << 16 << Refusal::NoSuchColumn;
    QTest::newRow("unit column follows the type") << moduleOf(kTmB8) << 15 << Refusal::NoEditor;
}

void ChannelRulesTest::columnsTheGridLacksOpenNothing()
{
    QFETCH(ModuleRecord, module);
    QFETCH(int, column);
    QFETCH(Refusal, refusal);
    const ChannelEditor editor = channelEditor(module, column, Language::Chinese);
    QCOMPARE(editor.kind, EditorKind::None);
    QCOMPARE(editor.refusal, refusal);
}

void ChannelRulesTest::unknownCapabilityCodesOpenNoList_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<ModuleRecord>("module");
    QTest::newRow("excitationType 4") << 1 << moduleOf(kTmC16, {{&ModuleRecord::excitationType, 4}});
    QTest::newRow("gainType 8") << 5 << moduleOf(kTmC16, {{&ModuleRecord::gainType, 8}});
    QTest::newRow("filterType 5") << 6 << moduleOf(kTmC16, {{&ModuleRecord::filterType, 5}});
    QTest::newRow("holdType 2") << 7 << moduleOf(kTmC16, {{&ModuleRecord::holdType, 2}});
}

void ChannelRulesTest::unknownCapabilityCodesOpenNoList()
{
    QFETCH(int, column);
    QFETCH(ModuleRecord, module);
    const ChannelEditor editor = channelEditor(module, column, Language::English);
    QCOMPARE(editor.kind, EditorKind::None);
    QCOMPARE(editor.refusal, Refusal::UnknownCapability);
}

// ---- Opening the division list -------------------------------------------

void ChannelRulesTest::openingDivisionListLowersExponentAboveSeven_data()
{
    QTest::addColumn<int>("exponent");
    QTest::addColumn<int>("afterOpening");
    QTest::newRow("8 becomes 7") << 8 << 7;
    QTest::newRow("15 becomes 7") << 15 << 7;
    QTest::newRow("7 stays") << 7 << 7;
    QTest::newRow("3 stays") << 3 << 3;
}

void ChannelRulesTest::openingDivisionListLowersExponentAboveSeven()
{
    QFETCH(int, exponent);
    QFETCH(int, afterOpening);
    ModuleRecord module = moduleOf(kTmC16);
    channel(module, 4).holdExponent = static_cast<quint16>(exponent);
    channel(module, 5).holdExponent = 9;
    openingList(module, 7, 5);
    QCOMPARE(int(channel(module, 4).holdExponent), afterOpening);
    QCOMPARE(int(channel(module, 5).holdExponent), 9);  // only the clicked row
}

void ChannelRulesTest::openingOtherListsLeavesTheExponent()
{
    ModuleRecord module = moduleOf(kTmC16);
    channel(module, 0).holdExponent = 8;
    openingList(module, 5, 1);
    QCOMPARE(int(channel(module, 0).holdExponent), 8);
    module.holdType = 0;  // the division list does not open at all
    openingList(module, 7, 1);
    QCOMPARE(int(channel(module, 0).holdExponent), 8);
}

// ---- Automatic-balance toggle --------------------------------------------

void ChannelRulesTest::toggleFlipsOnlyTheClickedRowsBit_data()
{
    QTest::addColumn<qint32>("mask");
    QTest::addColumn<int>("row");
    QTest::addColumn<qint32>("after");
    QTest::addColumn<QString>("mark");
    QTest::newRow("row 1 leaves all-chosen") << qint32(-1) << 1 << qint32(0xFFFFFFFE) << "○";
    QTest::newRow("row 16 joins none") << qint32(0) << 16 << qint32(0x8000) << "●";
    QTest::newRow("row 3 leaves 1, 3, 16") << qint32(0x8005) << 3 << qint32(0x8001) << "○";
    QTest::newRow("row 2 joins 1, 3, 16") << qint32(0x8005) << 2 << qint32(0x8007) << "●";
}

void ChannelRulesTest::toggleFlipsOnlyTheClickedRowsBit()
{
    QFETCH(qint32, mask);
    QFETCH(int, row);
    QFETCH(qint32, after);
    QFETCH(QString, mark);
    const EditResult result = toggleAutoBalance(mask, row, Language::English);
    QCOMPARE(mask, after);
    QCOMPARE(result.cells, (QList<CellUpdate>{{row, 3, mark}}));
    QVERIFY(!result.stored);  // the mask is not part of the record
}

void ChannelRulesTest::toggleOutsideTheChannelsChangesNothing_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("row 0") << 0;
    QTest::newRow("row 17") << 17;
}

void ChannelRulesTest::toggleOutsideTheChannelsChangesNothing()
{
    QFETCH(int, row);
    qint32 mask = 0x1234;
    QCOMPARE(toggleAutoBalance(mask, row, Language::Chinese), EditResult{});
    QCOMPARE(mask, qint32(0x1234));
}

void ChannelRulesTest::everyEditorKindReachesItsOwnHandler()
{
    // Both front ends go through withEditor; each kind to one handler.
    struct Named {
        QString list(const ChannelEditor&) { return QStringLiteral("list"); }
        QString prompt(const ChannelEditor&) { return QStringLiteral("prompt"); }
        QString toggle(const ChannelEditor&) { return QStringLiteral("toggle"); }
        QString frequencyDialog(const ChannelEditor&) { return QStringLiteral("frequency"); }
        QString none(const ChannelEditor&) { return QStringLiteral("none"); }
    };
    const QList<std::pair<EditorKind, QString>> kinds{
        {EditorKind::List, "list"},       {EditorKind::WholeNumberPrompt, "prompt"},
        {EditorKind::NumberPrompt, "prompt"}, {EditorKind::Toggle, "toggle"},
        {EditorKind::FrequencyDialog, "frequency"}, {EditorKind::None, "none"}};
    for (const auto& [kind, handler] : kinds) {
        ChannelEditor editor;
        editor.kind = kind;
        QCOMPARE(withEditor(editor, Named{}), handler);
    }
    // A real click: the gain column of a module with a gain list opens the list.
    const ModuleRecord module = moduleOf(kTmC16, {{&ModuleRecord::gainType, 1}});
    QCOMPARE(withEditor(channelEditor(module, kGainColumn, Language::English), Named{}), QStringLiteral("list"));
}

QTEST_APPLESS_MAIN(ChannelRulesTest)
#include "channel_rules_test.moc"
