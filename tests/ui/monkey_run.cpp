#include "monkey_run.h"

#include "monkey_answers.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTest>

#include <utility>

namespace velmor::testing {
namespace {

// While an event waits, a dialog or popup that it opened gets the next
// event this soon; the window itself, locked while an exchange runs, gets
// one this often.
constexpr int kImpatienceMs = 30;
constexpr int kLockedWindowEveryMs = 250;
// A dialog or popup takes this many events, then Escape; if it is still
// there a few events later, it is closed as a window manager closes it.
constexpr int kPatience = 8;
constexpr int kCloseAfter = kPatience + 3;
// Some events cost seconds: a search (a one-by-one search of three lines
// takes about 13 s, the machine's own port included), a balance (3 s of
// settling, then a whole read), or any command after the port or address
// chooser or File > Open pointed the module where nothing answers (each
// waits out its 2 s time-out). Exit ends the window. They are taken one
// time in so many that they come up, so that the default run stays within
// a minute and a half.
constexpr int kSearchOdds = 60;
constexpr int kBalanceOdds = 3;
constexpr int kExitOdds = 30;
constexpr int kMisdirectingOdds = 25;
// An operator whose commands all go unanswered (the module pointed where
// nothing answers, or gone quiet) searches again after so many of them.
constexpr int kUnansweredBeforeSearch = 4;
// A silence this much longer than it may be will not end: the run stops there.
constexpr int kGiveUpMs = 30000;
constexpr int kWatchdogMs = 200;
constexpr int kWindowWidth = 1000;
constexpr int kWindowHeight = 760;

QHash<QString, int> rarelyTaken(const QStringList& never)
{
    QHash<QString, int> odds;
    for (const char* search : {"cmdSearch", "MnuOperate_Search", "MnuOperate_SearchAll"})
        odds.insert(QLatin1String(search), kSearchOdds);
    for (const char* balance : {"cmdBalance", "MnuOperate_Balance"})
        odds.insert(QLatin1String(balance), kBalanceOdds);
    for (const char* chooser : {"cmbComPort", "cmbModuleIndex", "MnuFile_Open"})
        odds.insert(QLatin1String(chooser), kMisdirectingOdds);
    odds.insert(QStringLiteral("MnuFile_Exit"), kExitOdds);
    for (const QString& name : never)
        odds.insert(name, 0);
    return odds;
}

}  // namespace

MonkeyRun::MonkeyRun(quint32 seed, int firstLanguageMode, const QStringList& neverPicked)
    : random_(seed)
    , watch_(liveness_, [this] { return during(); })
    , hands_(random_, rarelyTaken(neverPicked))
    , languageMode_(firstLanguageMode)
{
    watchdog_.setInterval(kWatchdogMs);
    connect(&watchdog_, &QTimer::timeout, this, [this] {
        liveness_.look(during());
        if (liveness_.overdueMs() > kGiveUpMs)
            qFatal("monkey: the window hangs: %s", qPrintable(liveness_.firstHang()));
    });
}

MonkeyRun::~MonkeyRun() = default;

QString MonkeyRun::failure() const
{
    return !watch_.failure().isEmpty() ? watch_.failure() : liveness_.firstHang();
}

void MonkeyRun::run(int count)
{
    liveness_.start();
    watchdog_.start();
    openWindow();
    while (figures_.events < count && failure().isEmpty()) {
        step();
        QCoreApplication::processEvents();
        if (!rig_->window.isVisible()) {  // File > Exit
            closeWindow();
            openWindow();
        }
    }
    watchdog_.stop();
    closeWindow();
}

void MonkeyRun::openWindow()
{
    rig_ = std::make_unique<WindowRig>(languageMode_);
    languageMode_ = languageMode_ == kEnglish ? kChinese : kEnglish;
    ++figures_.windows;
    rig_->window.resize(kWindowWidth, kWindowHeight);
    rig_->window.activateWindow();
    if (!QTest::qWaitForWindowActive(&rig_->window))
        qWarning("monkey: the window did not become active; keys go to its focus widget all the same");
    prepareFolder(*rig_, random_);
    watch_.follow(rig_->window);
    searchDue_ = QStringLiteral("the window's first event");
    liveness_.beat(QStringLiteral("window %1 opened").arg(figures_.windows));
}

void MonkeyRun::closeWindow()
{
    if (!rig_)
        return;
    // As an operator closes it: it saves into its own folder.
    if (rig_->window.isVisible())
        rig_->window.close();
    figures_.messages += static_cast<int>(rig_->dialogs.messages.size());
    figures_.questions += static_cast<int>(rig_->dialogs.questions.size());
    figures_.prompts += static_cast<int>(rig_->dialogs.prompts.size());
    watch_.letGo();
    rig_.reset();
}

QWidget* MonkeyRun::front() const
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return &rig_->window;
}

void MonkeyRun::step()
{
    QWidget* shown = front();
    if (!failure().isEmpty()) {
        // No more events; what is open is put away so that the run can end.
        if (shown != &rig_->window)
            shown->close();
        return;
    }
    if (depth_ > 0 && shown == &rig_->window) {
        if (sinceWaitingEvent_.isValid() && sinceWaitingEvent_.elapsed() < kLockedWindowEveryMs)
            return;
        sinceWaitingEvent_.start();
    }
    if (!searchDue_.isEmpty() && depth_ == 0 && shown == &rig_->window) {
        send(search(std::exchange(searchDue_, QString())));
        return;
    }
    send(nextFor(shown));
}

OperatorEvent MonkeyRun::search(const QString& why)
{
    // The run's first search goes one line after another; the later ones
    // search all lines at once, which takes half as long.
    if (figures_.searchesDue++ == 0) {
        QPushButton* button = child<QPushButton>(rig_->window, "cmdSearch");
        return {QStringLiteral("click cmdSearch, %1").arg(why), [button] { QTest::mouseClick(button, Qt::LeftButton); }};
    }
    QAction* searchAll = child<QAction>(rig_->window, "MnuOperate_SearchAll");
    return {QStringLiteral("menu MnuOperate_SearchAll, %1").arg(why), [searchAll] { searchAll->trigger(); }};
}

OperatorEvent MonkeyRun::nextFor(QWidget* shown)
{
    if (shown != lastFront_) {
        lastFront_ = shown;
        eventsOnFront_ = 0;
        if (shown != &rig_->window)
            ++figures_.dialogsMet[QString::fromLatin1(shown->metaObject()->className())];
    }
    ++eventsOnFront_;
    if (shown == &rig_->window || eventsOnFront_ <= kPatience)
        return hands_.choose(shown);
    if (eventsOnFront_ <= kCloseAfter)
        return hands_.escape(shown);
    return {QStringLiteral("close %1").arg(shown->objectName()), [shown] { shown->close(); }};
}

void MonkeyRun::noteAnswers(bool answered, bool timedOut)
{
    if (answered)
        unanswered_ = 0;
    else if (timedOut)
        ++unanswered_;
    if (unanswered_ < kUnansweredBeforeSearch)
        return;
    unanswered_ = 0;
    searchDue_ = QStringLiteral("after %1 commands in a row that nothing answered").arg(kUnansweredBeforeSearch);
}

void MonkeyRun::send(const OperatorEvent& event)
{
    const bool outer = depth_ == 0;
    ++figures_.events;
    if (!outer)
        ++figures_.eventsWhileWaiting;
    during_.append(QStringLiteral("event %1 (%2)").arg(figures_.events).arg(event.description));
    scriptAnswers(*rig_, random_);
    if (outer)
        liveness_.beat(during());

    // The operator goes on while this event waits.
    QTimer impatience;
    impatience.setInterval(kImpatienceMs);
    connect(&impatience, &QTimer::timeout, this, &MonkeyRun::step);
    impatience.start();
    const int acceptedBefore = watch_.accepted();
    const int timedOutBefore = watch_.timedOut();
    ++depth_;
    QElapsedTimer clock;
    clock.start();
    event.send();
    const qint64 took = clock.elapsed();
    --depth_;
    impatience.stop();

    if (outer) {
        watch_.checkRecord();
        liveness_.beat(during());
        noteAnswers(watch_.accepted() > acceptedBefore, watch_.timedOut() > timedOutBefore);
    }
    if (took > figures_.slowestEventMs) {
        figures_.slowestEventMs = took;
        figures_.slowestEvent = during_.last();
    }
    during_.removeLast();
}

}  // namespace velmor::testing
