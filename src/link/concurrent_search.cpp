#include "concurrent_search.h"

#include "module_search.h"

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

// A line's search says nothing itself: its notices are kept (Operations::
// keepNotices) and said by the front end's flows once every line has ended.
class NothingSaid : public OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override
    {
        qWarning("a search line said \"%s: %s\" instead of keeping it", qPrintable(title), qPrintable(text));
    }
    bool confirm(const QString&, const QString&) override { return false; }  // a search asks nothing
};

}  // namespace

struct ConcurrentSearch::Line {
    PortEntry port;
    SetupState state;  // the line's own copy of the table
    // What the line's search and then its reads had to tell, in order.
    QList<Notice> searchNotices;
    QList<Notice> readNotices;
    QList<int> unread;
    int asked = 0;
};

ConcurrentSearch::ConcurrentSearch(Operations& operations, OperatorDialogs& dialogs, QObject* parent)
    : QObject(parent), operations_(operations), dialogs_(dialogs)
{
}

int ConcurrentSearch::searchAllAtOnce(const QList<PortEntry>& ports, int selectedPort)
{
    if (ports.isEmpty())  // "No COM port in the computer.", as the one-by-one search says it
        return ModuleSearch(operations_, dialogs_).searchLinesAndReport(ports, selectedPort);
    SetupState& state = operations_.state();
    state.current().portNumber = static_cast<qint16>(selectedPort);
    emit operationsEnabled(false);
    state.searching = true;
    state.currentModule = 0;
    state.moduleCount = 0;
    emit progressMaximum(static_cast<int>(ports.size()) * ModuleSearch::kAddresses);

    QList<Line> lines(ports.size());
    for (qsizetype i = 0; i < ports.size(); ++i) {
        lines[i].port = ports[i];
        lines[i].state = state;
    }
    runLines(lines);
    state.searching = false;
    operations_.exchange().setOverInterval(Exchange::kOverAfterSearch);

    merge(lines);
    emit progress(0);
    emit operationsEnabled(state.moduleCount > 0);
    if (!operations_.abandoned())
        ModuleSearch::report(state, dialogs_);
    state.currentModule = 0;
    return state.moduleCount;
}

// Every line in a thread of its own; returns when all have ended. The wait
// runs the event loop, so the window keeps painting and the progress moves.
void ConcurrentSearch::runLines(QList<Line>& lines)
{
    std::atomic<bool> stop = false;
    std::vector<std::unique_ptr<QThread>> threads;
    QEventLoop loop;
    qsizetype running = lines.size();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        Line& line = lines[i];
        threads.emplace_back(QThread::create([this, &line, &stop, &lines, i] {
            ComPort port;
            port.setPorts({line.port});
            NothingSaid nothing;
            Operations operations(line.state, port, nothing);
            ModuleSearch search(operations, nothing);
            operations.keepNotices(&line.searchNotices);
            search.stopWith(stopAsking_);
            connect(&search, &ModuleSearch::modulesFound, [&] { operations.keepNotices(&line.readNotices); });
            // Queued to this object's thread, like the counts below.
            connect(&operations.exchange(), &Exchange::frameLogged, this, &ConcurrentSearch::frameLogged);
            connect(&search, &ModuleSearch::asking, this, &ConcurrentSearch::asking);
            // Queued to this object's thread, where the lines' counts are added up.
            connect(&search, &ModuleSearch::progress, this, [this, &lines, i](int value) {
                lines[i].asked = std::max(lines[i].asked, value);
                int asked = 0;
                for (const Line& l : lines)
                    asked += l.asked;
                emit progress(asked);
            });
            QTimer watch;
            connect(&watch, &QTimer::timeout, [&] {
                if (stop)
                    operations.abandonAfterExchange();
            });
            watch.start(kAbandonCheckMs);
            search.searchLines({line.port}, line.port.number);
            line.unread = search.unreadModules();
        }));
        connect(threads.back().get(), &QThread::finished, &loop, [&] {
            if (--running == 0)
                loop.quit();
        });
    }
    QTimer watch;
    connect(&watch, &QTimer::timeout, [&] { stop = operations_.abandoned(); });
    watch.start(kAbandonCheckMs);
    for (auto& thread : threads)
        thread->start();
    loop.exec();
    for (auto& thread : threads)
        thread->wait();
    // The last counts and rows, while the lines still exist.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

// The lines' tables into the front end's, in line order, as far as the table
// holds; their messages in the order the one-by-one search says them.
void ConcurrentSearch::merge(const QList<Line>& lines)
{
    SetupState& state = operations_.state();
    const auto say = [this](const QList<Notice>& notices) {
        for (const Notice& notice : notices) {
            operations_.say(notice);
            if (notice.kind == Notice::Kind::LineBusy)
                emit lineBusy(notice.port, notice.holder);
            else if (notice.kind == Notice::Kind::PortNotOpened)
                emit portNotOpened(notice.port, notice.openFailure, notice.reason);
        }
    };
    QList<int> offsets;
    bool full = false;
    for (const Line& line : lines) {
        if (full)
            break;
        say(line.searchNotices);
        offsets.append(state.moduleCount);
        for (int j = 0; j < line.state.moduleCount && !full; ++j) {
            const auto to = static_cast<size_t>(state.moduleCount++);
            state.table[to] = line.state.table[static_cast<size_t>(j)];
            state.channelMask[to] = line.state.channelMask[static_cast<size_t>(j)];
            full = state.moduleCount >= kModuleSlots;
        }
        if (full)
            operations_.say(Notice::tableFull());
    }
    emit modulesFound(state.moduleCount);
    unread_.clear();
    for (qsizetype i = 0; i < offsets.size(); ++i) {
        say(lines[i].readNotices);
        for (const int u : lines[i].unread)
            if (offsets[i] + u < state.moduleCount)
                unread_.append(offsets[i] + u);
    }
}

}  // namespace velmor
