// The window's lines beyond the machine's own ports: "Add network port..." in
// the port chooser, remembered for the next start, and "Search all lines at
// once" from the Operate menu against simulated lines.

#include "texts/message.h"
#include "texts/network.h"
#include "window_rig.h"

#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QSettings>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

const QString kServer = QStringLiteral("tcp://127.0.0.1:4999");

QStringList itemTexts(QComboBox* box)
{
    QStringList out;
    for (int i = 0; i < box->count(); ++i)
        out << box->itemText(i);
    return out;
}

// The operator picks the chooser's last entry with the keyboard.
void chooseAddNetworkPort(frmMain& window)
{
    auto* ports = child<QComboBox>(window, "cmbComPort");
    ports->setFocus();
    QTest::keyClick(ports, Qt::Key_End);
}

}  // namespace

class NetworkLinesTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void addNetworkPortIsTheChoosersLastEntryInBothLanguages();
    void addedNetworkPortIsSelectedAndRememberedForTheNextStart();
    void anAddressThatIsNoNetworkPortIsRefused();
    void cancelAddsNothing();
    void searchAllLinesAtOnceGivesTheSearchsTabsAndLocksTheWindow();
};

void NetworkLinesTest::init()
{
    QSettings(QStringLiteral("velmor"), QStringLiteral("velmor")).clear();
}

void NetworkLinesTest::addNetworkPortIsTheChoosersLastEntryInBothLanguages()
{
    for (const int mode : {kEnglish, kChinese}) {
        WindowRig rig(mode);
        auto* ports = child<QComboBox>(rig.window, "cmbComPort");
        QCOMPARE(ports->itemText(ports->count() - 1), pick(texts::network::kAddNetworkPort, languageOf(mode)));
        QCOMPARE(child<QAction>(rig.window, "MnuOperate_SearchAll")->text(),
                 pick(texts::network::kMnuOperateSearchAll, languageOf(mode)));
        // The chooser starts on a port, never on the entry that adds one.
        QVERIFY(ports->currentText() != pick(texts::network::kAddNetworkPort, languageOf(mode)));
    }
}

void NetworkLinesTest::addedNetworkPortIsSelectedAndRememberedForTheNextStart()
{
    {
        WindowRig rig;
        auto* ports = child<QComboBox>(rig.window, "cmbComPort");
        const int before = ports->count();
        rig.dialogs.typedAnswers = {QStringLiteral("  ") + kServer};
        chooseAddNetworkPort(rig.window);
        QCOMPARE(rig.dialogs.prompts.size(), 1);
        QCOMPARE(rig.dialogs.prompts.first().second, pick(texts::network::kAddNetworkPortPrompt, Language::English));
        QCOMPARE(ports->currentText(), kServer);
        QCOMPARE(ports->count(), before + 1);
        QCOMPARE(ports->itemText(ports->count() - 1), pick(texts::network::kAddNetworkPort, Language::English));
        // The current module now talks over that line.
        QCOMPARE(rig.window.state().current().portNumber, ports->currentData().toInt());
        VELMOR_COMPARE_SAID(rig.dialogs.texts());
        // Added twice, listed once.
        rig.dialogs.typedAnswers = {kServer};
        chooseAddNetworkPort(rig.window);
        QCOMPARE(itemTexts(ports).count(kServer), 1);
    }
    WindowRig next;
    QVERIFY(itemTexts(child<QComboBox>(next.window, "cmbComPort")).contains(kServer));
}

void NetworkLinesTest::anAddressThatIsNoNetworkPortIsRefused()
{
    WindowRig rig;
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    const QStringList before = itemTexts(ports);
    const QString shown = ports->currentText();
    for (const char* typed : {"ttyS9", "tcp://127.0.0.1", "http://127.0.0.1:80", "rfc2217://:4000"}) {
        rig.dialogs.messages.clear();
        rig.dialogs.typedAnswers = {QString::fromLatin1(typed)};
        chooseAddNetworkPort(rig.window);
        VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{pick(texts::network::kNotANetworkPort, Language::English)});
        QCOMPARE(itemTexts(ports), before);
        QCOMPARE(ports->currentText(), shown);
    }
    QVERIFY(QSettings(QStringLiteral("velmor"), QStringLiteral("velmor")).allKeys().isEmpty());
}

void NetworkLinesTest::cancelAddsNothing()
{
    WindowRig rig;
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    const QStringList before = itemTexts(ports);
    const QString shown = ports->currentText();
    chooseAddNetworkPort(rig.window);  // no typed answer: Cancel
    QCOMPARE(rig.dialogs.prompts.size(), 1);
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    QCOMPARE(itemTexts(ports), before);
    QCOMPARE(ports->currentText(), shown);
}

void NetworkLinesTest::searchAllLinesAtOnceGivesTheSearchsTabsAndLocksTheWindow()
{
    SimLine first({sim::ModuleAt{2, 2}, sim::ModuleAt{5, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({sim::ModuleAt{1, 3}}, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(first.isReady() && second.isReady());
    WindowRig rig;
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    QVERIFY(ports->findText(QStringLiteral("SIM1")) >= 0 && ports->findText(QStringLiteral("SIM2")) >= 0);

    child<QPushButton>(rig.window, "cmdSearch")->click();
    const QStringList oneByOne = moduleTabTexts(rig.window);
    const QStringList saidOneByOne = rig.dialogs.texts();
    QCOMPARE(oneByOne, (QStringList{QStringLiteral("1 TM-C16"), QStringLiteral("2 TM-A4"), QStringLiteral("3 TM-B8")}));
    QCOMPARE(saidOneByOne.last(), QStringLiteral("Found 3 modules."));
    rig.dialogs.messages.clear();

    bool lockedDuring = false;
    QTimer::singleShot(50, &rig.window, [&] {
        lockedDuring = child<QPushButton>(rig.window, "cmdSearch")->text() == QStringLiteral("&Stop")
                    && !child<QComboBox>(rig.window, "cmbComPort")->isEnabled()
                    && !child<QAction>(rig.window, "MnuOperate_SearchAll")->isEnabled();
    });
    child<QAction>(rig.window, "MnuOperate_SearchAll")->trigger();
    QVERIFY(lockedDuring);
    QCOMPARE(moduleTabTexts(rig.window), oneByOne);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), saidOneByOne);
    QCOMPARE(child<QTabBar>(rig.window, "TabStripCom")->currentIndex(), 0);
    QVERIFY(child<QPushButton>(rig.window, "cmdSearch")->isEnabled());
}

QTEST_MAIN(NetworkLinesTest)
#include "network_lines_test.moc"
