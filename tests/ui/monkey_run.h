#pragma once

#include "monkey_hands.h"
#include "monkey_liveness.h"
#include "monkey_watch.h"
#include "window_rig.h"

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QStringList>
#include <QTimer>

#include <memory>

namespace velmor::testing {

// A run of random operator events on the main window. Events are sent one
// after the other; while one waits (an exchange in flight, the balance
// settling, a modal dialog open) the operator goes on with more, as an
// impatient one does, and those land on a locked window or in the dialog.
// File > Exit closes the window: the next one is opened in its place, in the
// other language. Every window's first event is a search, and so is the
// event after a few commands in a row that nothing answered.
class MonkeyRun : public QObject {
    Q_OBJECT
public:
    struct Figures {
        int events = 0;
        int eventsWhileWaiting = 0;  // sent while another event was still being handled
        int windows = 0;
        int searchesDue = 0;  // searches the run made the next event
        QMap<QString, int> dialogsMet;  // modal dialogs and popups, by class
        int messages = 0;     // message boxes
        int questions = 0;    // OK/Cancel questions
        int prompts = 0;      // text prompts
        qint64 slowestEventMs = 0;
        QString slowestEvent;
    };

    // `neverPicked`: object names of controls and menu entries left alone.
    MonkeyRun(quint32 seed, int firstLanguageMode, const QStringList& neverPicked);
    ~MonkeyRun() override;

    // Sends `count` events, or fewer when a check fails first.
    void run(int count);

    // The first check that failed: a hang, two exchanges at once, a record
    // that took a refused reply's values. Empty while all hold.
    QString failure() const;
    const Figures& figures() const { return figures_; }
    const ExchangeWatch& exchanges() const { return watch_; }
    const Liveness& liveness() const { return liveness_; }

private:
    void step();
    void send(const OperatorEvent& event);
    // The popup, the modal dialog, or the window.
    QWidget* front() const;
    OperatorEvent nextFor(QWidget* front);
    // A search, one line after another or all lines at once.
    OperatorEvent search(const QString& why);
    // After an event: whether it had a reply accepted, or a wait that ran out.
    void noteAnswers(bool answered, bool timedOut);
    void openWindow();
    void closeWindow();
    QString during() const { return during_.join(QStringLiteral(" > ")); }

    QRandomGenerator random_;
    Liveness liveness_;
    ExchangeWatch watch_;
    OperatorHands hands_;
    std::unique_ptr<WindowRig> rig_;
    int languageMode_;
    QString searchDue_;  // why, when a search is the next event
    int unanswered_ = 0;  // events in a row whose exchanges all timed out
    int depth_ = 0;
    QStringList during_;
    QPointer<QWidget> lastFront_;
    int eventsOnFront_ = 0;
    QElapsedTimer sinceWaitingEvent_;  // the last event on a window that was busy
    QTimer watchdog_;
    Figures figures_;
};

}  // namespace velmor::testing
