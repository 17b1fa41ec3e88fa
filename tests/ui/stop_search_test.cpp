// Stopping a search, by the button that reads "Stop" while it runs or by Esc:
// the exchange in flight ends, no address after it is asked, the modules found
// so far are read and reported as at the end of a search.

#include "model/models.h"
#include "protocol/requests.h"
#include "support/record_checks.h"
#include "ui/operator_settings.h"
#include "window_rig.h"

#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

enum class Stop { Button, Escape };

// The addresses a line was asked for its information, in order.
QList<int> infoAddressesAsked(const SimLine& line)
{
    QList<int> asked;
    for (const QByteArray& request : line.requests())
        for (int a = 0; a <= kBroadcastAddress; ++a)
            if (request == readInfoRequest(a).frame())
                asked << a;
    return asked;
}

}  // namespace

class StopSearchTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void aStoppedSearchReadsAndReportsWhatItFound_data();
    void aStoppedSearchReadsAndReportsWhatItFound();
};

void StopSearchTest::init() { OperatorSettings().clear(); }

void StopSearchTest::aStoppedSearchReadsAndReportsWhatItFound_data()
{
    QTest::addColumn<int>("stop");
    QTest::addColumn<bool>("allAtOnce");
    QTest::newRow("Stop button") << int(Stop::Button) << false;
    QTest::newRow("Esc") << int(Stop::Escape) << false;
    QTest::newRow("Stop button, all lines at once") << int(Stop::Button) << true;
}

void StopSearchTest::aStoppedSearchReadsAndReportsWhatItFound()
{
    QFETCH(int, stop);
    QFETCH(bool, allAtOnce);
    SimLine first({{2, kTmA4}, {9, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({{1, kTmB8}}, Pacing::Fast, QStringLiteral("SIM2"));
    WindowRig rig;
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    auto* button = child<QPushButton>(rig.window, "cmdSearch");
    QString caption;
    // The operator stops once SIM1 has heard the request for address 4.
    int heard = 0;
    QObject::connect(&first.line(), &sim::VirtualLine::frameLogged, &rig.window,
                     [&](sim::Direction direction, const QByteArray&) {
                         if (direction != sim::Direction::Received || ++heard != 5)
                             return;
                         QTimer::singleShot(0, &rig.window, [&] {
                             caption = button->text();
                             if (Stop(stop) == Stop::Button)
                                 QTest::mouseClick(button, Qt::LeftButton);
                             else
                                 QTest::keyClick(&rig.window, Qt::Key_Escape);
                         });
                     });
    if (allAtOnce)
        child<QAction>(rig.window, "MnuOperate_SearchAll")->trigger();
    else
        QTest::mouseClick(button, Qt::LeftButton);

    QCOMPARE(caption, QStringLiteral("&Stop"));
    // SIM1: addresses 0 to 4, then only the found module's whole read.
    const QList<int> asked = infoAddressesAsked(first);
    QVERIFY2(asked.mid(0, 5) == (QList<int>{0, 1, 2, 3, 4}), qPrintable(QString::number(asked.size())));
    for (int a : asked.mid(5))
        QCOMPARE(a, 2);
    for (const QByteArray& request : first.requests())
        QVERIFY(static_cast<quint8>(request.at(3)) != 9);
    if (!allAtOnce)
        QVERIFY(second.requests().isEmpty());  // its turn never came
    // Read wholly and reported, as a search that ran to its end.
    QVERIFY(moduleTabTexts(rig.window).contains(QStringLiteral("1 TM-A4")));
    QVERIFY(!moduleTabTexts(rig.window).contains(QStringLiteral("2 TM-C16")) && moduleTabTexts(rig.window).size() <= 2);
    VELMOR_VERIFY_SAME(wholeReadDifference(rig.window.state().table[0], first.module(2).memory()));
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("Found %1 modules.").arg(moduleTabTexts(rig.window).size()));
    QCOMPARE(button->text(), QStringLiteral("&Search"));
    QVERIFY(button->isEnabled());
}

QTEST_MAIN(StopSearchTest)
#include "stop_search_test.moc"
