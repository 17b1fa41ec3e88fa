#include "model/capabilities.h"
#include "model/gain_steps.h"
#include "model/models.h"

#include <QTest>

using namespace velmor;

Q_DECLARE_METATYPE(velmor::Capability)
Q_DECLARE_METATYPE(velmor::Language)

class CapabilitiesTest : public QObject {
    Q_OBJECT

private slots:
    void optionList_data();
    void optionList();
    void unknownCodeIsLastItem_data();
    void unknownCodeIsLastItem();
    void shownIndex_data();
    void shownIndex();
    void capabilityCodeReadsItsOwnField();
    void gainStepsOutsideOneToSevenAreEmpty();
    void defaultModuleShowsDefaultItems_data();
    void defaultModuleShowsDefaultItems();
    void modelCode7ShowsTmA8dWithEightChannels();
    void gainType200ShowsUnknownAndKeepsCode();
    void modelCode9KeepsNameAndChannelsAndShowsTenthEntry();
    void englishModelListEndsWithUnknown();
};

void CapabilitiesTest::optionList_data()
{
    QTest::addColumn<Capability>("capability");
    QTest::addColumn<Language>("language");
    QTest::addColumn<QStringList>("items");

    const QStringList models{"TM-A4", "TM-A8", "TM-C16", "TM-B8", "TM-B16", "TM-A8B", "TM-C8", "TM-A8D", "TM-C16D"};
    QTest::newRow("model zh") << Capability::Model << Language::Chinese << (models + QStringList{"未知"});
    QTest::newRow("model en") << Capability::Model << Language::English << (models + QStringList{"Unknown"});

    QTest::newRow("excitation zh")
        << Capability::Excitation << Language::Chinese
        << QStringList{"无", "4mA恒流源", "10V,5.0V,2.5V,1.25V", "4mA,100uA,10V,5.0V,2.5V,1.25V,断开", "未知"};
    QTest::newRow("excitation en")
        << Capability::Excitation << Language::English
        << QStringList{"No", "4mA", "10V,5.0V,2.5V,1.25V", "4mA,100uA,10V,5.0V,2.5V,1.25V,断开", "Unknown"};

    const Capability presence[] = {Capability::Balance, Capability::AcCoupling, Capability::Hold,
                                   Capability::Zero, Capability::Integral};
    const char* presenceNames[] = {"balance", "ac coupling", "hold", "zero", "integral"};
    for (int i = 0; i < 5; ++i) {
        QTest::addRow("%s zh", presenceNames[i]) << presence[i] << Language::Chinese << QStringList{"无", "有", "未知"};
        QTest::addRow("%s en", presenceNames[i]) << presence[i] << Language::English << QStringList{"No", "Yes", "Unknown"};
    }

    const QStringList gains{"1,2,4,8",
                            "1,2,5,10",
                            "1,10,100,1000",
                            "1,2,5,10,100,200,500,1000,2000,5000,10000",
                            "500,1000,2500,5000",
                            "1,2,5,10,20,50,100",
                            "1,2,5,10,20,50,100,200,500,1000,2000,5000,10000"};
    QTest::newRow("gain zh") << Capability::Gain << Language::Chinese << (QStringList{"无"} + gains + QStringList{"未知"});
    QTest::newRow("gain en") << Capability::Gain << Language::English << (QStringList{"No"} + gains + QStringList{"Unknown"});

    QTest::newRow("filter zh") << Capability::Filter << Language::Chinese
                               << QStringList{"无", "连续截止频率", "直通,10Hz,1KHz", "50k连续", "30k连续", "未知"};
    QTest::newRow("filter en") << Capability::Filter << Language::English
                               << QStringList{"No", "Continue", "Bypass,10Hz,1KHz", "50k", "30k", "Unknown"};

    QTest::newRow("adjust zh") << Capability::Adjust << Language::Chinese
                               << QStringList{"无", "10位", "12位", "8位", "未知"};
    QTest::newRow("adjust en") << Capability::Adjust << Language::English
                               << QStringList{"No", "10 bit", "12 bit", "8 bit", "Unknown"};
}

void CapabilitiesTest::optionList()
{
    QFETCH(Capability, capability);
    QFETCH(Language, language);
    QFETCH(QStringList, items);
    QCOMPARE(velmor::optionList(capability, language), items);
}

void CapabilitiesTest::unknownCodeIsLastItem_data()
{
    QTest::addColumn<Capability>("capability");
    QTest::addColumn<int>("code");
    QTest::newRow("model") << Capability::Model << 9;
    QTest::newRow("excitation") << Capability::Excitation << 4;
    QTest::newRow("balance") << Capability::Balance << 2;
    QTest::newRow("ac coupling") << Capability::AcCoupling << 2;
    QTest::newRow("gain") << Capability::Gain << 8;
    QTest::newRow("filter") << Capability::Filter << 5;
    QTest::newRow("hold") << Capability::Hold << 2;
    QTest::newRow("zero") << Capability::Zero << 2;
    QTest::newRow("adjust") << Capability::Adjust << 4;
    QTest::newRow("integral") << Capability::Integral << 2;
}

void CapabilitiesTest::unknownCodeIsLastItem()
{
    QFETCH(Capability, capability);
    QFETCH(int, code);
    QCOMPARE(unknownCode(capability), code);
    QCOMPARE(velmor::optionList(capability, Language::English).size(), code + 1);
    QCOMPARE(velmor::optionList(capability, Language::English).last(), QStringLiteral("Unknown"));
}

void CapabilitiesTest::shownIndex_data()
{
    QTest::addColumn<Capability>("capability");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("index");
    QTest::newRow("model 0") << Capability::Model << 0 << 0;
    QTest::newRow("model 8") << Capability::Model << 8 << 8;
    QTest::newRow("model 9 is the tenth item") << Capability::Model << 9 << 9;
    QTest::newRow("model 10 is the tenth item") << Capability::Model << 10 << 9;
    QTest::newRow("model 255") << Capability::Model << 255 << 9;
    QTest::newRow("excitation 3") << Capability::Excitation << 3 << 3;
    QTest::newRow("excitation 4") << Capability::Excitation << 4 << 4;
    QTest::newRow("excitation 9") << Capability::Excitation << 9 << 4;
    QTest::newRow("balance 1") << Capability::Balance << 1 << 1;
    QTest::newRow("balance 2") << Capability::Balance << 2 << 2;
    QTest::newRow("balance 77") << Capability::Balance << 77 << 2;
    QTest::newRow("gain 7") << Capability::Gain << 7 << 7;
    QTest::newRow("gain 8") << Capability::Gain << 8 << 8;
    QTest::newRow("gain 200") << Capability::Gain << 200 << 8;
    QTest::newRow("filter 4") << Capability::Filter << 4 << 4;
    QTest::newRow("filter 5") << Capability::Filter << 5 << 5;
    QTest::newRow("adjust 3") << Capability::Adjust << 3 << 3;
    QTest::newRow("adjust 4") << Capability::Adjust << 4 << 4;
    QTest::newRow("integral 0") << Capability::Integral << 0 << 0;
    QTest::newRow("negative code is unknown") << Capability::Filter << -1 << 5;
}

void CapabilitiesTest::shownIndex()
{
    QFETCH(Capability, capability);
    QFETCH(int, code);
    QFETCH(int, index);
    QCOMPARE(velmor::shownIndex(capability, code), index);
}

void CapabilitiesTest::capabilityCodeReadsItsOwnField()
{
    ModuleRecord module;
    module.modelCode = 11;
    module.version = 12;
    module.excitationType = 13;
    module.balanceType = 14;
    module.acCouplingType = 15;
    module.gainType = 16;
    module.filterType = 17;
    module.holdType = 18;
    module.zeroType = 19;
    module.adjustType = 20;
    module.integralType = 21;
    QCOMPARE(capabilityCode(module, Capability::Model), quint8(11));
    QCOMPARE(capabilityCode(module, Capability::Excitation), quint8(13));
    QCOMPARE(capabilityCode(module, Capability::Balance), quint8(14));
    QCOMPARE(capabilityCode(module, Capability::AcCoupling), quint8(15));
    QCOMPARE(capabilityCode(module, Capability::Gain), quint8(16));
    QCOMPARE(capabilityCode(module, Capability::Filter), quint8(17));
    QCOMPARE(capabilityCode(module, Capability::Hold), quint8(18));
    QCOMPARE(capabilityCode(module, Capability::Zero), quint8(19));
    QCOMPARE(capabilityCode(module, Capability::Adjust), quint8(20));
    QCOMPARE(capabilityCode(module, Capability::Integral), quint8(21));
}

void CapabilitiesTest::gainStepsOutsideOneToSevenAreEmpty()
{
    QVERIFY(gainSteps(0).empty());
    QVERIFY(gainSteps(8).empty());
    QVERIFY(gainSteps(-1).empty());
    QCOMPARE(gainStepsText(0), QString());
    QCOMPARE(gainSteps(4).size(), size_t(11));
    QCOMPARE(gainSteps(7).back(), 10000);
}

void CapabilitiesTest::defaultModuleShowsDefaultItems_data()
{
    QTest::addColumn<Capability>("capability");
    QTest::addColumn<QString>("zh");
    QTest::addColumn<QString>("en");
    QTest::newRow("model") << Capability::Model << "TM-C16" << "TM-C16";
    QTest::newRow("excitation") << Capability::Excitation << "4mA恒流源" << "4mA";
    QTest::newRow("balance") << Capability::Balance << "无" << "No";
    QTest::newRow("ac coupling") << Capability::AcCoupling << "有" << "Yes";
    QTest::newRow("gain") << Capability::Gain << "1,2,5,10" << "1,2,5,10";
    QTest::newRow("filter") << Capability::Filter << "连续截止频率" << "Continue";
    QTest::newRow("hold") << Capability::Hold << "有" << "Yes";
    QTest::newRow("zero") << Capability::Zero << "无" << "No";
    QTest::newRow("adjust") << Capability::Adjust << "无" << "No";
    QTest::newRow("integral") << Capability::Integral << "无" << "No";
}

void CapabilitiesTest::defaultModuleShowsDefaultItems()
{
    QFETCH(Capability, capability);
    QFETCH(QString, zh);
    QFETCH(QString, en);
    const ModuleRecord module = defaultModule();
    QCOMPARE(capabilityText(module, capability, Language::Chinese), zh);
    QCOMPARE(capabilityText(module, capability, Language::English), en);
}

void CapabilitiesTest::modelCode7ShowsTmA8dWithEightChannels()
{
    ModuleRecord module = defaultModule();
    recognizeModel(module, 7);
    module.modelCode = 7;
    QCOMPARE(trimmedText(module.modelName), QStringLiteral("TM-A8D"));
    QCOMPARE(module.channelCount, qint16(8));
    QCOMPARE(velmor::shownIndex(Capability::Model, module.modelCode), 7);
    QCOMPARE(capabilityText(module, Capability::Model, Language::Chinese), QStringLiteral("TM-A8D"));
}

void CapabilitiesTest::gainType200ShowsUnknownAndKeepsCode()
{
    ModuleRecord module = defaultModule();
    module.gainType = 200;
    QCOMPARE(capabilityText(module, Capability::Gain, Language::Chinese), QStringLiteral("未知"));
    QCOMPARE(capabilityText(module, Capability::Gain, Language::English), QStringLiteral("Unknown"));
    QCOMPARE(module.gainType, quint8(200));
}

void CapabilitiesTest::modelCode9KeepsNameAndChannelsAndShowsTenthEntry()
{
    ModuleRecord module = defaultModule();
    recognizeModel(module, 4);
    module.modelCode = 4;
    recognizeModel(module, 9);
    module.modelCode = 9;
    QCOMPARE(trimmedText(module.modelName), QStringLiteral("TM-B16"));
    QCOMPARE(module.channelCount, qint16(16));
    QCOMPARE(module.modelCode, quint8(9));
    QCOMPARE(velmor::shownIndex(Capability::Model, module.modelCode), 9);
    QCOMPARE(capabilityText(module, Capability::Model, Language::Chinese), QStringLiteral("未知"));
}

void CapabilitiesTest::englishModelListEndsWithUnknown()
{
    ModuleRecord module = defaultModule();
    module.modelCode = 9;
    QCOMPARE(capabilityText(module, Capability::Model, Language::English), QStringLiteral("Unknown"));
}

QTEST_APPLESS_MAIN(CapabilitiesTest)
#include "capabilities_test.moc"
