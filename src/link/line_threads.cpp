#include "line_threads.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

namespace velmor {
namespace {

// How often a line's thread looks whether the front end has gone away.
constexpr int kAbandonCheckMs = 50;

// A line's flows say nothing themselves: their notices are kept and said by
// the front end once every line has ended. A line asks nothing either: what
// needs the operator's answer was asked before the lines began.
class NothingSaid : public OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override
    {
        qWarning("a line said \"%s: %s\" instead of keeping it", qPrintable(title), qPrintable(text));
    }
    bool confirm(const QString&, const QString&) override { return false; }
};

}  // namespace

void LineThreads::run(Operations& frontEnd, QList<LineWork>& lines, QObject* context,
                      const std::function<void(const FrameRow&)>& frameLogged, const Work& work)
{
    std::atomic<bool> stop = false;
    std::vector<std::unique_ptr<QThread>> threads;
    QEventLoop loop;
    qsizetype running = lines.size();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        threads.emplace_back(QThread::create([&, i] {
            LineWork& line = lines[i];
            ComPort port;
            port.setPorts({line.port});
            NothingSaid nothing;
            Operations operations(line.state, port, nothing);
            // Queued to the context's thread.
            QObject::connect(&operations.exchange(), &Exchange::frameLogged, context, frameLogged);
            QTimer watch;
            QObject::connect(&watch, &QTimer::timeout, [&] {
                if (stop)
                    operations.abandonAfterExchange();
            });
            watch.start(kAbandonCheckMs);
            work(i, operations);
        }));
        QObject::connect(threads.back().get(), &QThread::finished, &loop, [&] {
            if (--running == 0)
                loop.quit();
        });
    }
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] { stop = frontEnd.abandoned(); });
    watch.start(kAbandonCheckMs);
    for (auto& thread : threads)
        thread->start();
    if (!lines.isEmpty())
        loop.exec();
    for (auto& thread : threads)
        thread->wait();
    // The last counts and rows, while the lines still exist.
    QCoreApplication::sendPostedEvents(context, QEvent::MetaCall);
}

}  // namespace velmor
