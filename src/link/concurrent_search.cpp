#include "concurrent_search.h"

#include "module_search.h"
#include "texts/message.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <optional>
#include <memory>

namespace velmor {
namespace {

// How often a line's thread looks whether the front end has gone away.
constexpr int kAbandonCheckMs = 50;

// Something a line's search said, kept to be said again in the order the
// one-by-one search would have said it.
struct Said {
    bool portNotOpened = false;
    QString title;  // or, for a port not opened, the system's reason
    QString text;
    OpenFailure failure = OpenFailure::None;
    std::optional<LineHolder> busy;  // the port's line was held by another program
};

// A line's messages, split where its search ends and its reads begin.
class HeldDialogs : public OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override { now().append({false, title, text, {}, {}}); }
    bool confirm(const QString&, const QString&) override { return false; }  // a search asks nothing
    void portNotOpened(const ComPort& port) { now().append({true, port.openFailureReason(), {}, port.openFailure(), {}}); }
    void lineBusy(const LineHolder& holder) { now().append({true, {}, {}, OpenFailure::None, holder}); }
    void readsBegin() { reading = true; }

    QList<Said> search;
    QList<Said> reads;

private:
    QList<Said>& now() { return reading ? reads : search; }
    bool reading = false;
};

}  // namespace

struct ConcurrentSearch::Line {
    PortEntry port;
    SetupState state;  // the line's own copy of the table
    HeldDialogs said;
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
            Operations operations(line.state, port, line.said);
            ModuleSearch search(operations, line.said);
            connect(&search, &ModuleSearch::portNotOpened, [&line, &port] { line.said.portNotOpened(port); });
            connect(&search, &ModuleSearch::lineBusy,
                    [&line](const PortEntry&, const LineHolder& holder) { line.said.lineBusy(holder); });
            connect(&search, &ModuleSearch::modulesFound, [&line] { line.said.readsBegin(); });
            // Queued to this object's thread, like the counts below.
            connect(&operations.exchange(), &Exchange::frameLogged, this, &ConcurrentSearch::frameLogged);
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
    const Language language = languageOf(state.languageMode);
    const auto sayAgain = [this](const Line& line, const QList<Said>& said) {
        for (const Said& s : said) {
            if (s.busy)
                emit lineBusy(line.port, *s.busy);
            else if (s.portNotOpened)
                emit portNotOpened(line.port, s.failure, s.title);
            else
                dialogs_.showMessage(s.title, s.text);
        }
    };
    QList<int> offsets;
    bool full = false;
    for (const Line& line : lines) {
        if (full)
            break;
        sayAgain(line, line.said.search);
        offsets.append(state.moduleCount);
        for (int j = 0; j < line.state.moduleCount && !full; ++j) {
            const auto to = static_cast<size_t>(state.moduleCount++);
            state.table[to] = line.state.table[static_cast<size_t>(j)];
            state.channelMask[to] = line.state.channelMask[static_cast<size_t>(j)];
            full = state.moduleCount >= kModuleSlots;
        }
        if (full)
            dialogs_.showMessage(pick(texts::message::kTitle, language), pick(texts::message::kModuleTableFull, language));
    }
    emit modulesFound(state.moduleCount);
    unread_.clear();
    for (qsizetype i = 0; i < offsets.size(); ++i) {
        sayAgain(lines[i], lines[i].said.reads);
        for (const int u : lines[i].unread)
            if (offsets[i] + u < state.moduleCount)
                unread_.append(offsets[i] + u);
    }
}

}  // namespace velmor
