#include "rack_restore.h"

#include "history/flow_entries.h"
#include "link/line_threads.h"
#include "texts/desktop.h"
#include "texts/rack.h"
#include "write_groups.h"

#include <QFileInfo>

#include <map>

namespace velmor {
namespace {

// A module of the rack that something is to be written to.
struct Planned {
    qsizetype result = 0;  // its place in the restore's result
    ModuleRecord wanted;   // the file's setup, at its line and address
};

QString groupNames(const QList<WriteGroup>& groups, Language language)
{
    QStringList names;
    for (const WriteGroup& group : groups)
        names << writeGroupName(group, language);
    return names.join(pick(texts::desktop::kNameSeparator, language));
}

QString cellNames(const QList<CellDifference>& cells, Language language)
{
    QStringList names;
    for (const CellDifference& cell : cells)
        names << cellChangeText(cell);
    return names.join(pick(texts::desktop::kNameSeparator, language));
}

QString failureText(Failure failure, Language language) { return shownWord(failureName(failure), language); }

bool portFailed(Failure failure) { return failure == Failure::PortNotOpened || failure == Failure::LineBusy; }

// How many modules each line has, in the file and answering.
std::map<QString, int> modulesPerLine(const QList<CheckedModule>& checked)
{
    std::map<QString, int> count;
    for (const CheckedModule& c : checked) {
        if (c.status == RackStatus::Extra || c.status == RackStatus::Foreign)
            ++count[c.live.line];
        if (c.status != RackStatus::Extra)
            ++count[c.kept.line];
        if (c.status == RackStatus::Foreign && c.live.line == c.kept.line)
            --count[c.kept.line];  // one place, counted once
    }
    return count;
}

}  // namespace

const Text& restoreOutcomeText(RestoreOutcome outcome)
{
    switch (outcome) {
    case RestoreOutcome::Unchanged: return texts::rack::kUnchanged;
    case RestoreOutcome::Restored: return texts::rack::kRestored;
    case RestoreOutcome::RestoredInPart: return texts::rack::kRestoredInPart;
    case RestoreOutcome::NotRestored: return texts::rack::kNotRestored;
    case RestoreOutcome::Skipped: break;
    }
    return texts::rack::kSkipped;
}

QList<WriteGroup> groupsToRestore(const CheckedModule& checked, Language language)
{
    const ModuleRecord wanted = rackRecord(checked.kept);
    // A missing module's memory is unknown: all of it goes out.
    if (checked.status == RackStatus::Missing)
        return everyWriteGroup(wanted);
    return groupsToSend(sentDifferences(rackRecord(checked.live), wanted, -1, language));
}

RackRestore::RackRestore(Operations& frontEnd, QObject* parent) : QObject(parent), frontEnd_(frontEnd) {}

QList<RestoredModule> RackRestore::restore(const QList<CheckedModule>& checked, const QList<PortEntry>& lines,
                                           const RestoreChoices& choices, Language language)
{
    using namespace texts::rack;
    QList<RestoredModule> restored;
    const std::map<QString, int> perLine = modulesPerLine(checked);
    std::map<QString, QList<Planned>> planned;
    for (const CheckedModule& c : checked) {
        RestoredModule r;
        r.checked = c;
        r.after = rackRecord(c.status == RackStatus::Missing ? c.kept : c.live);
        r.readBack = c.status != RackStatus::Missing;
        const qsizetype at = restored.size();
        restored.append(r);
        RestoredModule& m = restored.last();
        switch (c.status) {
        case RackStatus::Same: continue;
        case RackStatus::Extra:
            m.outcome = RestoreOutcome::Skipped;
            m.why = pick(kWhyExtra, language);
            continue;
        case RackStatus::Missing:
            if (!choices.force) {
                m.outcome = RestoreOutcome::Skipped;
                m.why = pick(kWhyMissing, language);
                continue;
            }
            break;
        case RackStatus::Foreign:
            if (c.live.model != c.kept.model) {
                m.outcome = RestoreOutcome::Skipped;
                m.why = pick(kWhyOtherModel, language).arg(c.live.model, c.kept.model);
                continue;
            }
            if (!choices.force) {
                m.outcome = RestoreOutcome::Skipped;
                m.why = pick(kWhyForeign, language).arg(c.live.model).arg(c.live.moduleNumber);
                continue;
            }
            break;
        case RackStatus::Different: break;
        }
        ModuleRecord wanted = rackRecord(c.kept);
        const qsizetype line = std::find_if(lines.begin(), lines.end(),
                                            [&](const PortEntry& p) { return p.name == c.kept.line; }) - lines.begin();
        wanted.portNumber = static_cast<qint16>(line < lines.size() ? lines[line].number : 0);
        wanted.busAddress = static_cast<quint8>(c.kept.address);
        m.planned = groupsToRestore(c, language);
        if (m.planned.contains(WriteGroup{SetupPart::Information, 0})) {
            const bool alone = perLine.at(c.kept.line) == 1;
            if (!alone || !choices.onlyOneModule) {
                m.planned.removeAll(WriteGroup{SetupPart::Information, 0});
                m.why = pick(alone ? kWhyInformationUnconfirmed : kWhyInformationShared, language).arg(c.kept.line);
            }
        }
        if (m.planned.isEmpty()) {
            m.outcome = RestoreOutcome::NotRestored;
            continue;
        }
        planned[c.kept.line].append({at, wanted});
    }

    QList<LineWork> work;
    for (const PortEntry& port : lines)
        if (planned.contains(port.name))
            work.append({port, frontEnd_.state()});
    RestoredModule* results = restored.data();
    LineThreads::run(frontEnd_, work, this, [this](const FrameRow& row) { emit frameLogged(row); },
                     [&](qsizetype, Operations& operations) {
        const PortEntry port = operations.port().ports().first();
        const QList<Planned>& modules = planned.at(port.name);
        QList<Notice> notices;  // every failure is told in the result
        operations.keepNotices(&notices);
        SetupState& state = operations.state();
        state.currentModule = 0;
        state.moduleCount = 1;
        QString stopped;  // why the line stopped
        int done = 0;
        const auto progress = [&] {
            QMetaObject::invokeMethod(this, [this, port, d = ++done, n = modules.size()] {
                emit lineProgress(port, d, static_cast<int>(n));
            }, Qt::QueuedConnection);
        };
        for (const Planned& p : modules) {
            RestoredModule& m = results[p.result];
            if (!stopped.isEmpty() || stop_ || operations.abandoned()) {
                m.outcome = RestoreOutcome::Skipped;
                m.why = stopped.isEmpty() ? pick(kWhyStopped, language) : stopped;
                progress();
                continue;
            }
            state.current() = p.wanted;
            for (const WriteGroup& group : m.planned) {
                if (!sendWriteGroup(operations, group)) {
                    m.failure = operations.exchange().failure();
                    break;
                }
                m.sent.append(group);
            }
            if (portFailed(m.failure))
                stopped = pick(kWhyLineStopped, language)
                              .arg(port.name)
                              .arg(p.wanted.busAddress)
                              .arg(failureText(m.failure, language));
            progress();
        }
        // The read-back: what each module written to holds now.
        for (const Planned& p : modules) {
            RestoredModule& m = results[p.result];
            if (m.sent.isEmpty() || !stopped.isEmpty() || operations.abandoned())
                continue;
            state.current() = p.wanted;
            if (operations.readEverything()) {
                m.after = state.current();
                m.readBack = true;
            } else {
                m.readBack = false;
                m.after = p.wanted;
                m.failure = operations.exchange().failure();
            }
        }
        // How it went, module by module.
        for (const Planned& p : modules) {
            RestoredModule& m = results[p.result];
            if (m.outcome == RestoreOutcome::Skipped)
                continue;
            QStringList why;
            if (!m.why.isEmpty())
                why << m.why;
            if (m.sent.size() < m.planned.size())
                why << pick(kWhyFailedAt, language)
                           .arg(writeGroupName(m.planned[m.sent.size()], language), failureText(m.failure, language));
            if (!m.sent.isEmpty() && m.sent.size() < m.planned.size())
                why << pick(kWhySent, language).arg(groupNames(m.sent, language));
            bool confirmed = false;
            if (!m.sent.isEmpty() && !m.readBack) {
                const QString reason = stopped.isEmpty() ? failureText(m.failure, language) : stopped;
                why << pick(m.sent.size() == m.planned.size() ? kWhyNotReadBack : kWhyReadBackFailed, language).arg(reason);
            }
            else if (!m.sent.isEmpty()) {
                const QList<CellDifference> left = sentDifferences(m.after, p.wanted, -1, language);
                // An information left out stays different by design; the rest must match.
                QList<CellDifference> unexpected;
                for (const CellDifference& d : left)
                    if (d.part != SetupPart::Information || m.sent.contains(WriteGroup{SetupPart::Information, 0}))
                        unexpected << d;
                confirmed = unexpected.isEmpty();
                if (!confirmed)
                    why << pick(kWhyReadBackDiffers, language).arg(cellNames(unexpected, language));
            }
            m.why = why.join(QStringLiteral("; "));
            if (m.sent.isEmpty())
                m.outcome = RestoreOutcome::NotRestored;
            else if (confirmed && m.sent.size() == m.planned.size() && why.isEmpty())
                m.outcome = RestoreOutcome::Restored;
            else
                m.outcome = RestoreOutcome::RestoredInPart;
        }
    });
    return restored;
}

QList<HistoryEntry> restoreEntries(const QList<RestoredModule>& restored, const QString& rackPath)
{
    // Which rack file each write came from, for whoever reads the history later.
    const QString flow = QStringLiteral("rack restore %1").arg(QFileInfo(rackPath).absoluteFilePath());
    QList<HistoryEntry> entries;
    for (const RestoredModule& m : restored) {
        if (m.sent.isEmpty())
            continue;
        // A module read back is kept with what it holds; one that could not
        // be read back, as the failure that stopped it.
        const QString failure = m.readBack ? QString() : failureName(m.failure);
        if (std::optional<HistoryEntry> entry = flowEntry(m.after, m.checked.kept.line, EntryKind::Write, failure, flow)) {
            entry->detail = flow;
            entries.append(*entry);
        }
    }
    return entries;
}

}  // namespace velmor
