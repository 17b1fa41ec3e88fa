// frmMain's File > Rack: every module on every line at once, saved as a rack
// file, checked against one, restored to one, or reported.

#include "frm_main.h"

#include "config/rack_file.h"
#include "file_chooser.h"
#include "frame_log_pane.h"
#include "model/fixed_text.h"
#include "port_search_bar.h"
#include "rack/rack_restore.h"
#include "report/rack_report.h"
#include "report/report_file.h"
#include "report/setup_report.h"
#include "texts/desktop.h"
#include "texts/message.h"
#include "texts/rack.h"
#include "texts/report.h"
#include "unsent_edits.h"

#include <QFileInfo>
#include <QProgressBar>
#include <QShortcut>
#include <QStatusBar>

#include <map>

namespace velmor {
namespace {

QString fileName(const QString& path) { return QFileInfo(path).fileName(); }

RackResultRow rowOf(const RackModule& module, const QString& status, const QString& details, bool fine)
{
    return {module.line, module.address, module.model, module.moduleNumber, status, details, fine};
}

// "SIM1 4 TM-B8": a place of the rack as the restore's questions name it.
QString placeOf(const CheckedModule& c) { return QStringLiteral("%1 %2 %3").arg(c.kept.line).arg(c.kept.address).arg(c.kept.model); }

// "%1 modules: %2 same, ...": the total, then how many came out each way, in `order`.
template <typename State>
QString countedSummary(const QString& text, qsizetype total, const std::map<State, int>& count,
                       std::initializer_list<State> order)
{
    QString summary = text.arg(total);
    for (const State state : order)
        summary = summary.arg(count.contains(state) ? count.at(state) : 0);
    return summary;
}

QStringList cellTexts(const QList<CellDifference>& cells)
{
    QStringList texts;
    for (const CellDifference& cell : cells)
        texts << cellChangeText(cell);
    return texts;
}

}  // namespace

void frmMain::showRackResults(const QString& title, const QString& summary, const QList<RackResultRow>& rows)
{
    auto* dialog = new RackResultsDialog(title, summary, rows, language(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    notify(summary);
}

void frmMain::MnuFile_RackSave_Click()
{
    using namespace texts::rack;
    const QString path = files_.saveFileName();
    if (path.isEmpty())
        return;
    const QList<PortEntry> ports = lines_.ports();
    const QList<ConcurrentSearch::Found> every = searchRack(ports, pick(kDidRackSave, language()).arg(fileName(path)));
    Rack rack{QDateTime::currentDateTimeUtc(), QStringLiteral(VELMOR_VERSION), {}, {}};
    for (const PortEntry& port : ports)
        rack.lines << port.name;
    QList<RackResultRow> rows;
    for (const ConcurrentSearch::Found& found : every) {
        const RackModule module = rackModuleOf(found);
        if (found.wholly)
            rack.modules << module;
        rows << rowOf(module, pick(found.wholly ? kSaved : kNotSaved, language()), {}, found.wholly);
    }
    if (const QString failure = writeRackFile(path, rack); !failure.isEmpty()) {
        dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(kCannotWrite, language()).arg(path, failure));
        return;
    }
    showRackResults(pick(kSaveTitle, language()).arg(fileName(path)),
                    pick(kSavedSummary, language()).arg(rack.modules.size()).arg(path), rows);
}

std::optional<QList<CheckedModule>> frmMain::checkRackFile(const QString& path, QList<PortEntry>& ports)
{
    using namespace texts::rack;
    const QString title = pick(texts::message::kTitle, language());
    QString error;
    const std::optional<Rack> rack = readRackFile(path, language(), &error);
    if (!rack) {
        dialogs_.showMessage(title, error);
        return std::nullopt;
    }
    ports.clear();
    for (const QString& name : rack->lines) {
        const auto listed = std::find_if(lines_.ports().begin(), lines_.ports().end(),
                                         [&](const PortEntry& p) { return p.name == name; });
        if (listed == lines_.ports().end()) {
            dialogs_.showMessage(title, pick(kLineNotListed, language()).arg(path, name));
            return std::nullopt;
        }
        ports << *listed;
    }
    QList<RackModule> live;
    for (const ConcurrentSearch::Found& found : searchRack(ports, pick(kDidRackCheck, language()).arg(fileName(path))))
        live << rackModuleOf(found);
    return checkRack(*rack, live, language());
}

void frmMain::MnuFile_RackCheck_Click()
{
    using namespace texts::rack;
    const QString path = files_.openFileName();
    if (path.isEmpty())
        return;
    QList<PortEntry> ports;
    const std::optional<QList<CheckedModule>> checked = checkRackFile(path, ports);
    if (!checked)
        return;
    std::map<RackStatus, int> count;
    QList<RackResultRow> rows;
    for (const CheckedModule& c : *checked) {
        ++count[c.status];
        rows << rowOf(c.shown(), pick(rackStatusText(c.status), language()),
                      cellTexts(c.cells).join(pick(texts::desktop::kNameSeparator, language())),
                      c.status == RackStatus::Same);
    }
    showRackResults(pick(kCheckTitle, language()).arg(fileName(path)),
                    countedSummary(pick(kCheckSummary, language()), checked->size(), count,
                                   {RackStatus::Same, RackStatus::Different, RackStatus::Missing, RackStatus::Foreign,
                                    RackStatus::Extra}),
                    rows);
}

void frmMain::MnuFile_RackRestore_Click()
{
    using namespace texts::rack;
    const QString path = files_.openFileName();
    if (path.isEmpty())
        return;
    QList<PortEntry> ports;
    const std::optional<QList<CheckedModule>> checked = checkRackFile(path, ports);
    if (!checked)
        return;
    const QString title = pick(texts::message::kTitle, language());
    const QString separator = QStringLiteral("\n");
    QStringList differing, forcible;
    std::map<QString, int> perLine;
    for (const CheckedModule& c : *checked) {
        if (c.status != RackStatus::Extra)
            ++perLine[c.kept.line];
        const QString place = placeOf(c);
        if (c.status == RackStatus::Different)
            differing << place;
        else if (c.status == RackStatus::Missing || (c.status == RackStatus::Foreign && c.live.model == c.kept.model))
            forcible << place;
    }
    RestoreChoices choices;
    if (!forcible.isEmpty())
        choices.force = dialogs_.confirm(title, pick(kForceQuestion, language()).arg(forcible.join(separator)));
    if (differing.isEmpty() && !choices.force) {
        dialogs_.showMessage(title, pick(kNothingToRestore, language()).arg(path));
        return;
    }
    if (!dialogs_.confirm(title, pick(kRestoreQuestion, language())
                                     .arg(path)
                                     .arg(differing.size() + (choices.force ? forcible.size() : 0))
                                     .arg((differing + (choices.force ? forcible : QStringList())).join(separator))))
        return;
    // The information write reaches every module on a line: it goes out only
    // where the operator confirms the module is the only one there.
    QStringList alone;
    for (const CheckedModule& c : *checked) {
        const bool written = c.status == RackStatus::Different || (choices.force && forcible.contains(placeOf(c)));
        if (written && perLine[c.kept.line] == 1
            && groupsToRestore(c, language()).contains(WriteGroup{SetupPart::Information, 0}))
            alone << c.kept.line;
    }
    choices.onlyOneModule = !alone.isEmpty()
                            && dialogs_.confirm(title, pick(kOnlyOneOnLine, language())
                                                           .arg(alone.join(pick(texts::desktop::kNameSeparator, language())),
                                                                pick(texts::message::kOnlyOneModule, language())));

    QList<RestoredModule> restored;
    runFlow(pick(kDidRackRestore, language()).arg(fileName(path)), [&] {
        RackRestore restore(operations_);
        connect(&restore, &RackRestore::frameLogged, &frameLog_->log(), &FrameLog::append);
        connect(&restore, &RackRestore::frameLogged, this, &frmMain::countFrame);
        // Each line's progress in the status bar, the modules of all in the bar.
        std::map<QString, std::pair<int, int>> progress;
        QProgressBar* bar = bar_->progressBar();
        bar->setMaximum(0);
        connect(&restore, &RackRestore::lineProgress, this, [&](const PortEntry& port, int done, int total) {
            progress[port.name] = {done, total};
            QStringList said;
            int sum = 0, of = 0;
            for (const auto& [line, p] : progress) {
                said << pick(kLineProgress, language()).arg(line).arg(p.first).arg(p.second);
                sum += p.first;
                of += p.second;
            }
            bar->setMaximum(of);
            bar->setValue(sum);
            statusBar()->showMessage(said.join(QStringLiteral("; ")));
        });
        // Stop, or Esc, begins no module after those in flight, as in a search.
        bar_->setSearching(true);
        connect(bar_, &PortSearchBar::stopClicked, &restore, &RackRestore::stop);
        const QShortcut escape(QKeySequence(Qt::Key_Escape), this);
        connect(&escape, &QShortcut::activated, &restore, &RackRestore::stop);
        restored = restore.restore(*checked, ports, choices, language());
        bar_->setSearching(false);
        bar->setValue(0);
    }, std::nullopt, true);
    for (const HistoryEntry& entry : restoreEntries(restored, path))
        keep(entry);

    // The tabs show the rack's modules as they are now.
    for (const RestoredModule& m : restored)
        for (int i = 0; i < state_.moduleCount; ++i) {
            ModuleRecord& shown = state_.table[static_cast<size_t>(i)];
            const PortEntry* port = lines_.find(shown.portNumber);
            if (m.readBack && port && port->name == m.checked.kept.line && shown.busAddress == m.checked.kept.address)
                shown = m.after;
        }
    unsent_->allHeld();
    view_.showAll();

    std::map<RestoreOutcome, int> count;
    QList<RackResultRow> rows;
    for (const RestoredModule& m : restored) {
        ++count[m.outcome];
        QStringList details;
        if (!m.sent.isEmpty()) {
            QStringList groups;
            for (const WriteGroup& group : m.sent)
                groups << writeGroupName(group, language());
            details << pick(kWhySent, language()).arg(groups.join(pick(texts::desktop::kNameSeparator, language())));
        }
        if (!m.why.isEmpty())
            details << m.why;
        rows << rowOf(m.checked.shown(), pick(restoreOutcomeText(m.outcome), language()), details.join(QStringLiteral("; ")),
                      m.outcome == RestoreOutcome::Unchanged || m.outcome == RestoreOutcome::Restored);
    }
    showRackResults(pick(kRestoreTitle, language()).arg(fileName(path)),
                    countedSummary(pick(kRestoreSummary, language()), restored.size(), count,
                                   {RestoreOutcome::Unchanged, RestoreOutcome::Restored, RestoreOutcome::RestoredInPart,
                                    RestoreOutcome::NotRestored, RestoreOutcome::Skipped}),
                    rows);
}

void frmMain::MnuFile_RackReport_Click()
{
    using namespace texts::rack;
    const QString title = pick(texts::message::kTitle, language());
    const QString path = files_.openFileName();
    if (path.isEmpty())
        return;
    QString error;
    const std::optional<Rack> rack = readRackFile(path, language(), &error);
    if (!rack) {
        dialogs_.showMessage(title, error);
        return;
    }
    const QString out =
        files_.reportFileName(pick(texts::report::kPdfFilter, language()), pick(texts::report::kHtmlFilter, language()));
    if (out.isEmpty())
        return;
    const std::optional<ReportFormat> format = reportFormatFor(out);
    if (!format) {
        dialogs_.showMessage(title, pick(texts::report::kNeedsSuffix, language()).arg(out));
        return;
    }
    const QString html = rackReportHtml(*rack, QDateTime::currentDateTime(), reportSourceFile(path, language()), language());
    if (const QString failure = writeReportFile(out, *format, html, language()); !failure.isEmpty()) {
        dialogs_.showMessage(title, pick(texts::report::kCannotWrite, language()).arg(out, failure));
        return;
    }
    notify(pick(kReportWritten, language()).arg(out));
}

}  // namespace velmor
