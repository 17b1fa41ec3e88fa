// The module-information panel of Frame3: the ten lists and their texts, the
// module number and version boxes, against modules on a simulated line.
#include "accessible_reading.h"
#include "window_rig.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

QComboBox* list(frmMain& window, const char* name) { return child<QComboBox>(window, name); }
QLineEdit* box(frmMain& window, const char* name) { return child<QLineEdit>(window, name); }

void readInformation(frmMain& window)
{
    QTest::mouseClick(child<QPushButton>(window, "cmdModuleInfoReceive"), Qt::LeftButton);
}

}  // namespace

class ModuleInfoTest : public QObject {
    Q_OBJECT

private slots:
    void startUpShowsTheDefaultsWithEmptyBoxes();
    void modelCode7ShowsTMA8D();
    void unknownGainTypeShowsUnknownAndIsKept_data();
    void unknownGainTypeShowsUnknownAndIsKept();
    void modelCode9KeepsNameAndChannelsAndShowsTheTenthEntry();
    void aChoiceIsStoredAndShownBesideTheList();
    void numberBoxesTakeDigitsOnlyAndStoreAtOnce();
    void numbersOutOfRangeAreToldAndNotStored();
    void choosingAnAddressRebuildsThePanel();
    void everyLabelAndListHasItsName();
};

void ModuleInfoTest::startUpShowsTheDefaultsWithEmptyBoxes()
{
    WindowRig rig(kChinese);
    QCOMPARE(list(rig.window, "cmbModuleType")->currentText(), QStringLiteral("TM-C16"));
    QCOMPARE(list(rig.window, "cmbModuleType")->count(), 10);
    QCOMPARE(list(rig.window, "cmbModuleType")->itemText(9), QStringLiteral("未知"));
    QCOMPARE(list(rig.window, "cmbExcitationType")->currentText(), QStringLiteral("4mA恒流源"));
    QCOMPARE(list(rig.window, "cmbGainType")->currentText(), QStringLiteral("1,2,5,10"));
    QCOMPARE(box(rig.window, "txtVer")->text(), QString());
    QCOMPARE(box(rig.window, "txtModuleNumber")->text(), QString());
    QCOMPARE(box(rig.window, "txtModulePar[0]")->text(), QString());
}

void ModuleInfoTest::modelCode7ShowsTMA8D()
{
    SimLine line({{3, 7}});
    WindowRig rig;
    chooseModule(rig.window, line, 3);
    readInformation(rig.window);
    const ModuleRecord& record = rig.window.state().current();
    QCOMPARE(record.channelCount, 8);
    QCOMPARE(list(rig.window, "cmbModuleType")->currentText(), QStringLiteral("TM-A8D"));
    QCOMPARE(box(rig.window, "txtModulePar[0]")->text(), QStringLiteral("TM-A8D"));
    QCOMPARE(box(rig.window, "txtVer")->text(), QString::number(line.memory(3).version));
    QCOMPARE(box(rig.window, "txtModuleNumber")->text(), QString::number(line.memory(3).moduleNumber));
}

void ModuleInfoTest::unknownGainTypeShowsUnknownAndIsKept_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("unknown");
    QTest::newRow("Chinese") << kChinese << QStringLiteral("未知");
    QTest::newRow("English") << kEnglish << QStringLiteral("Unknown");
}

void ModuleInfoTest::unknownGainTypeShowsUnknownAndIsKept()
{
    QFETCH(int, languageMode);
    QFETCH(QString, unknown);
    SimLine line({{4, 2}});
    line.memory(4).gainType = 200;
    WindowRig rig(languageMode);
    chooseModule(rig.window, line, 4);
    readInformation(rig.window);
    QCOMPARE(list(rig.window, "cmbGainType")->currentText(), unknown);
    QCOMPARE(box(rig.window, "txtModulePar[4]")->text(), unknown);
    QCOMPARE(rig.window.state().current().gainType, quint8(200));
    // Choosing the unknown item again keeps the module's own code.
    QComboBox* gains = list(rig.window, "cmbGainType");
    emit gains->activated(gains->currentIndex());
    QCOMPARE(rig.window.state().current().gainType, quint8(200));
}

void ModuleInfoTest::modelCode9KeepsNameAndChannelsAndShowsTheTenthEntry()
{
    SimLine line({{5, 0}});
    line.memory(5).modelCode = 9;
    WindowRig rig;
    chooseModule(rig.window, line, 5);
    readInformation(rig.window);
    const ModuleRecord& record = rig.window.state().current();
    QCOMPARE(record.modelCode, quint8(9));
    QCOMPARE(record.channelCount, 16);  // the default's, as before the read
    QCOMPARE(list(rig.window, "cmbModuleType")->currentIndex(), 9);
    QCOMPARE(list(rig.window, "cmbModuleType")->currentText(), QStringLiteral("Unknown"));
}

void ModuleInfoTest::aChoiceIsStoredAndShownBesideTheList()
{
    WindowRig rig;
    QComboBox* filters = list(rig.window, "cmbFilterType");
    QTest::mouseClick(filters, Qt::LeftButton);
    filters->setCurrentIndex(2);
    emit filters->activated(2);
    QCOMPARE(rig.window.state().current().filterType, quint8(2));
    QCOMPARE(box(rig.window, "txtModulePar[5]")->text(), QStringLiteral("Bypass,10Hz,1KHz"));
    // What Send would send is what the panel shows.
    QCOMPARE(list(rig.window, "cmbFilterType")->currentText(), QStringLiteral("Bypass,10Hz,1KHz"));
}

void ModuleInfoTest::numberBoxesTakeDigitsOnlyAndStoreAtOnce()
{
    WindowRig rig;
    QLineEdit* number = box(rig.window, "txtModuleNumber");
    number->setFocus();
    QTest::keyClicks(number, "12a.3-4");
    QCOMPARE(number->text(), QStringLiteral("1234"));
    QCOMPARE(rig.window.state().current().moduleNumber, 1234);
    QTest::keyClick(number, Qt::Key_Backspace);
    QCOMPARE(rig.window.state().current().moduleNumber, 123);
    QLineEdit* version = box(rig.window, "txtVer");
    version->clear();
    QTest::keyClicks(version, "2x5+5");
    QCOMPARE(version->text(), QStringLiteral("255"));
    QCOMPARE(rig.window.state().current().version, quint8(255));
    // Pasted text is not typed: it passes the keys and is read as a number.
    version->selectAll();
    version->insert(QStringLiteral("7.5V"));
    emit version->textEdited(version->text());
    QCOMPARE(rig.window.state().current().version, quint8(8));
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
}

void ModuleInfoTest::numbersOutOfRangeAreToldAndNotStored()
{
    WindowRig rig;
    QLineEdit* number = box(rig.window, "txtModuleNumber");
    QTest::keyClicks(number, "65535");
    QCOMPARE(rig.window.state().current().moduleNumber, 65535);
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    QTest::keyClicks(number, "0");
    QCOMPARE(number->text(), QStringLiteral("655350"));
    QCOMPARE(rig.window.state().current().moduleNumber, 65535);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Input data error.")});
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("Module Setup"));

    WindowRig chinese(kChinese);
    QLineEdit* version = box(chinese.window, "txtVer");
    QTest::keyClicks(version, "256");
    QCOMPARE(chinese.window.state().current().version, quint8(25));
    VELMOR_COMPARE_SAID(chinese.dialogs.texts(), QStringList{QStringLiteral("输入数据错误")});
    QCOMPARE(chinese.dialogs.messages.first().first, QStringLiteral("模块参数设置"));
}

void ModuleInfoTest::choosingAnAddressRebuildsThePanel()
{
    SimLine line({{1, 3}, {2, 0}});
    WindowRig rig;
    chooseModule(rig.window, line, 1);
    readInformation(rig.window);
    QCOMPARE(list(rig.window, "cmbModuleType")->currentText(), QStringLiteral("TM-B8"));
    chooseModule(rig.window, line, 2);
    QCOMPARE(rig.window.state().current().busAddress, 2);
    readInformation(rig.window);
    QCOMPARE(list(rig.window, "cmbModuleType")->currentText(), QStringLiteral("TM-A4"));
    QCOMPARE(box(rig.window, "txtModulePar[0]")->text(), QStringLiteral("TM-A4"));
}

void ModuleInfoTest::everyLabelAndListHasItsName()
{
    WindowRig rig(kChinese);
    const QStringList labels = {"产品类型", "产品序号", "版本", "桥平衡",   "激励类型", "AC耦合",
                                "低通滤波", "同步采保", "零点调整", "增益调整", "放大倍数", "积分"};
    for (int i = 0; i < labels.size(); ++i) {
        auto* label = child<QLabel>(rig.window, QStringLiteral("lblModule[%1]").arg(i));
        QCOMPARE(label->text(), labels[i]);
        QVERIFY(label->buddy());
        // The caption reaches a screen reader as the control's label; a list
        // is read by its chosen item.
        QCOMPARE(accessibleLabel(label->buddy()), labels[i]);
        if (auto* list = qobject_cast<QComboBox*>(label->buddy()))
            QCOMPARE(accessibleText(list, QAccessible::Name), list->currentText());
    }
    for (int i = 0; i < 10; ++i)
        QVERIFY(!box(rig.window, qPrintable(QStringLiteral("txtModulePar[%1]").arg(i)))->accessibleName().isEmpty());
    WindowRig english;
    const QStringList english12 = {"Type",   "serial num.", "Ver.", "Balance",     "Excitation", "Coupling",
                                   "Filter", "SSH",         "Zero Adjust", "Gain Adjust", "Gain",  "Integral"};
    for (int i = 0; i < english12.size(); ++i)
        QCOMPARE(child<QLabel>(english.window, QStringLiteral("lblModule[%1]").arg(i))->text(), english12[i]);
}

QTEST_MAIN(ModuleInfoTest)
#include "module_info_test.moc"
