#include "concurrent_search.h"

#include "line_threads.h"
#include "module_search.h"

namespace velmor {

struct ConcurrentSearch::Line {
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
    QList<LineWork> work;
    for (const PortEntry& port : ports)
        work.append({port, state});
    runLines(lines, work);
    state.searching = false;
    operations_.exchange().setOverInterval(Exchange::kOverAfterSearch);

    merge(lines, work);
    emit progress(0);
    emit operationsEnabled(state.moduleCount > 0);
    if (!operations_.abandoned())
        ModuleSearch::report(everyModule_ ? static_cast<int>(found_.size()) : state.moduleCount,
                             languageOf(state.languageMode), dialogs_);
    state.currentModule = 0;
    return state.moduleCount;
}

// Every line's search and reads in a thread of its own; returns when all have ended.
void ConcurrentSearch::runLines(QList<Line>& lines, QList<LineWork>& work)
{
    LineThreads::run(operations_, work, this, [this](const FrameRow& row) { emit frameLogged(row); },
                     [this, &lines](qsizetype i, Operations& operations) {
        Line& line = lines[i];
        ModuleSearch search(operations, operations.dialogs());
        operations.keepNotices(&line.searchNotices);
        search.stopWith(stopAsking_);
        connect(&search, &ModuleSearch::modulesFound, [&] { operations.keepNotices(&line.readNotices); });
        connect(&search, &ModuleSearch::asking, this, &ConcurrentSearch::asking);
        // Queued to this object's thread, where the lines' counts are added up.
        connect(&search, &ModuleSearch::progress, this, [this, &lines, i](int value) {
            lines[i].asked = std::max(lines[i].asked, value);
            int asked = 0;
            for (const Line& l : lines)
                asked += l.asked;
            emit progress(asked);
        });
        const PortEntry& port = operations.port().ports().first();
        search.searchLines({port}, port.number);
        line.unread = search.unreadModules();
    });
}

// The lines' tables into the front end's, in line order, as far as the table
// holds; their messages in the order the one-by-one search says them.
void ConcurrentSearch::merge(const QList<Line>& lines, const QList<LineWork>& work)
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
    found_.clear();
    for (qsizetype i = 0; i < lines.size(); ++i)
        for (int j = 0; j < work[i].state.moduleCount; ++j)
            found_.append({work[i].port, work[i].state.table[static_cast<size_t>(j)], !lines[i].unread.contains(j)});
    QList<int> offsets;
    bool full = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        const SetupState& lineState = work[i].state;
        if (full && !everyModule_)
            break;
        say(line.searchNotices);
        offsets.append(state.moduleCount);
        for (int j = 0; j < lineState.moduleCount && !full; ++j) {
            const auto to = static_cast<size_t>(state.moduleCount++);
            state.table[to] = lineState.table[static_cast<size_t>(j)];
            state.channelMask[to] = lineState.channelMask[static_cast<size_t>(j)];
            full = state.moduleCount >= kModuleSlots;
        }
        if (full && !everyModule_)
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
