// Every way an operator changes a tab strip or a list reaches the same
// handler: the mouse, the keyboard (arrow keys, the wheel) and assistive
// technology (the accessibility actions a screen reader calls).
#include "window_rig.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

using namespace velmor;
using namespace velmor::testing;

namespace {

enum class Hand { Mouse, Keyboard, Wheel, Accessibility };

void addHands(bool wheel)
{
    QTest::addColumn<int>("hand");
    QTest::newRow("mouse") << int(Hand::Mouse);
    QTest::newRow("keyboard") << int(Hand::Keyboard);
    if (wheel)
        QTest::newRow("wheel") << int(Hand::Wheel);
    QTest::newRow("accessibility action") << int(Hand::Accessibility);
}

// Moves a tab strip from its current tab to the next one, by `hand`.
void nextTab(QTabBar* tabs, Hand hand)
{
    const int next = tabs->currentIndex() + 1;
    switch (hand) {
    case Hand::Mouse:
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(next).center());
        break;
    case Hand::Keyboard:
        tabs->setFocus();
        QTest::keyClick(tabs, Qt::Key_Right);
        break;
    case Hand::Wheel: {
        const QPointF at = tabs->tabRect(tabs->currentIndex()).center();
        QWheelEvent wheel(at, tabs->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(tabs, &wheel);
        break;
    }
    case Hand::Accessibility: {
        QAccessibleInterface* tab = QAccessible::queryAccessibleInterface(tabs)->child(next);
        QVERIFY(tab && tab->actionInterface());
        tab->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        break;
    }
    }
    QCOMPARE(tabs->currentIndex(), next);
}

// Chooses the next item of a list, by `hand`: a click in its pop-up, the down
// arrow on the closed list, or its accessibility action that opens the
// pop-up, then the keys a screen-reader user presses there.
void nextItem(QComboBox* list, Hand hand)
{
    const int next = list->currentIndex() + 1;
    switch (hand) {
    case Hand::Mouse: {
        QTest::mouseClick(list, Qt::LeftButton);
        QAbstractItemView* popup = list->view();
        QTRY_VERIFY(popup->isVisible());
        const QRect item = popup->visualRect(popup->model()->index(next, 0));
        // The item's middle row, at the middle of the pop-up: the offscreen
        // pop-up is narrower than its items' rectangles. A list takes no
        // release that comes within a double-click time of its opening.
        const QPoint at(popup->viewport()->width() / 2, item.center().y());
        QTest::mouseMove(popup->viewport(), at, QApplication::doubleClickInterval());
        QTest::mouseClick(popup->viewport(), Qt::LeftButton, {}, at);
        break;
    }
    case Hand::Keyboard:
    case Hand::Wheel:
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        break;
    case Hand::Accessibility: {
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(list);
        QVERIFY(face && face->actionInterface());
        face->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        QAbstractItemView* popup = list->view();
        QTRY_VERIFY(popup->isVisible());
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        break;
    }
    }
    QTRY_VERIFY(!list->view()->isVisible());
    QCOMPARE(list->currentIndex(), next);
}

}  // namespace

class InputPathsTest : public QObject {
    Q_OBJECT
private slots:
    void pagesFollowTheirTabs_data();
    void pagesFollowTheirTabs();
    void channelGroupLabelsFollowTheirTabs_data();
    void channelGroupLabelsFollowTheirTabs();
    void moduleTabsMakeTheirModuleCurrent_data();
    void moduleTabsMakeTheirModuleCurrent();
    void aClickOnTheCurrentModuleTabShowsTheModuleAgain();
    void portAndAddressListsReachTheRecord_data();
    void portAndAddressListsReachTheRecord();
    void moduleInformationListsReachTheRecord_data();
    void moduleInformationListsReachTheRecord();
};

void InputPathsTest::pagesFollowTheirTabs_data()
{
    addHands(true);
}

void InputPathsTest::channelGroupLabelsFollowTheirTabs_data()
{
    addHands(true);
}

void InputPathsTest::moduleTabsMakeTheirModuleCurrent_data()
{
    addHands(true);
}

void InputPathsTest::portAndAddressListsReachTheRecord_data()
{
    addHands(false);
}

void InputPathsTest::moduleInformationListsReachTheRecord_data()
{
    addHands(false);
}

void InputPathsTest::pagesFollowTheirTabs()
{
    QFETCH(int, hand);
    WindowRig rig;
    auto* tabs = child<QTabBar>(rig.window, "TabStrip1");
    const QStringList frames{QStringLiteral("Frame1"), QStringLiteral("Frame2"), QStringLiteral("Frame3")};
    for (int page = 1; page < frames.size(); ++page) {
        nextTab(tabs, Hand(hand));
        for (int f = 0; f < frames.size(); ++f)
            QVERIFY2(child<QWidget>(rig.window, frames[f])->isVisible() == (f == page), qPrintable(frames[f]));
    }
}

void InputPathsTest::channelGroupLabelsFollowTheirTabs()
{
    QFETCH(int, hand);
    WindowRig rig(kChinese);
    for (const auto& [strip, sentCaption, labels] :
         {std::tuple{"TabStripOperate", "Label1", "lblModuleOperateString[%1]"},
          std::tuple{"TabStripNoOperate", "Label3", "lblModuleNoOperateString[%1]"}}) {
        auto* tabs = child<QTabBar>(rig.window, strip);
        // Each strip on the page that holds it.
        child<QTabBar>(rig.window, "TabStrip1")->setCurrentIndex(QLatin1String(strip) == QLatin1String("TabStripOperate") ? 0 : 1);
        const QStringList captions{"1-4通道发送字符串", "5-8通道发送字符串", "9-12通道发送字符串", "13-16通道发送字符串"};
        for (int g = 1; g < 4; ++g) {
            nextTab(tabs, Hand(hand));
            QCOMPARE(child<QLabel>(rig.window, sentCaption)->text(), captions[g]);
            for (int i = 0; i < 4; ++i)
                QVERIFY2(child<QLabel>(rig.window, QString::fromLatin1(labels).arg(i))->isVisible() == (i == g),
                         qPrintable(QString::fromLatin1(labels).arg(i)));
        }
    }
}

void InputPathsTest::moduleTabsMakeTheirModuleCurrent()
{
    QFETCH(int, hand);
    SimLine line({sim::ModuleAt{1, 2}, sim::ModuleAt{3, 0}, sim::ModuleAt{6, 3}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    child<QPushButton>(rig.window, "cmdSearch")->click();
    QCOMPARE(rig.window.state().moduleCount, 3);
    auto* tabs = child<QTabBar>(rig.window, "TabStripCom");
    auto* model = child<QComboBox>(rig.window, "cmbModuleType");
    for (const auto& [index, address, name] : {std::tuple{1, 3, "TM-A4"}, std::tuple{2, 6, "TM-B8"}}) {
        nextTab(tabs, Hand(hand));
        QCOMPARE(rig.window.state().currentModule, index);
        QCOMPARE(int(rig.window.state().current().busAddress), address);
        QCOMPARE(model->currentText(), QLatin1String(name));
    }
}

// A click on the tab that is current runs its handler as any click does:
// the module is shown again from its record.
void InputPathsTest::aClickOnTheCurrentModuleTabShowsTheModuleAgain()
{
    SimLine line({sim::ModuleAt{1, 2}, sim::ModuleAt{3, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    child<QPushButton>(rig.window, "cmdSearch")->click();
    auto* tabs = child<QTabBar>(rig.window, "TabStripCom");
    QCOMPARE(tabs->currentIndex(), 0);
    rig.window.state().current().version = 77;  // behind the window's back
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
    QCOMPARE(child<QLineEdit>(rig.window, "txtVer")->text(), QStringLiteral("77"));
}

void InputPathsTest::portAndAddressListsReachTheRecord()
{
    QFETCH(int, hand);
    SimLine first({sim::ModuleAt{1, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({sim::ModuleAt{1, 2}}, Pacing::Fast, QStringLiteral("SIM2"));
    WindowRig rig;
    child<QTabBar>(rig.window, "TabStrip1")->setCurrentIndex(2);
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    QCOMPARE(ports->currentText(), QStringLiteral("SIM1"));
    nextItem(ports, Hand(hand));
    QCOMPARE(ports->currentText(), QStringLiteral("SIM2"));
    QCOMPARE(int(rig.window.state().current().portNumber), ports->currentData().toInt());
    auto* addresses = child<QComboBox>(rig.window, "cmbModuleIndex");
    const int before = addresses->currentIndex();
    nextItem(addresses, Hand(hand));
    QCOMPARE(int(rig.window.state().current().busAddress), addresses->itemData(before + 1).toInt());
}

void InputPathsTest::moduleInformationListsReachTheRecord()
{
    QFETCH(int, hand);
    WindowRig rig;
    child<QTabBar>(rig.window, "TabStrip1")->setCurrentIndex(2);
    auto* gains = child<QComboBox>(rig.window, "cmbGainType");
    const int before = gains->currentIndex();
    nextItem(gains, Hand(hand));
    QCOMPARE(int(rig.window.state().current().gainType), before + 1);
    QCOMPARE(child<QLineEdit>(rig.window, "txtModulePar[4]")->text(), gains->currentText());
}

QTEST_MAIN(InputPathsTest)
#include "input_paths_test.moc"
