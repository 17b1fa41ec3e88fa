// frmMain's lines: the port list with the remembered network ports, the
// port chooser, and the two searches (one line after another, or all at once).

#include "frm_main.h"

#include "cell_grid.h"
#include "frame_log_pane.h"
#include "history/flow_entries.h"
#include "link/concurrent_search.h"
#include "port_search_bar.h"
#include "remembered_ports.h"
#include "serial/network_port.h"
#include "texts/desktop.h"
#include "texts/message.h"
#include "texts/network.h"
#include "unsent_edits.h"
#include "window_placement.h"

#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTabBar>

#include <map>
#include <type_traits>

namespace velmor {

void frmMain::cmdSearch_Click()
{
    runSearch<ModuleSearch>(&ModuleSearch::searchLinesAndReport, lines_.ports(), searchDone());
}

void frmMain::cmdSearchAll_Click()
{
    runSearch<ConcurrentSearch>(&ConcurrentSearch::searchAllAtOnce, lines_.ports(), searchDone());
}

QString frmMain::searchDone() const { return pick(texts::desktop::kDidSearch, language()).arg(lines_.ports().size()); }

QList<ConcurrentSearch::Found> frmMain::searchRack(const QList<PortEntry>& ports, const QString& done)
{
    QList<ConcurrentSearch::Found> every;
    runSearch<ConcurrentSearch>(&ConcurrentSearch::searchAllAtOnce, ports, done, &every);
    return every;
}

template <typename Search>
void frmMain::runSearch(int (Search::*body)(const QList<PortEntry>&, int), const QList<PortEntry>& ports,
                        const QString& done, QList<ConcurrentSearch::Found>* every)
{
    runFlow(done, [this, body, &ports, every] {
        Search search(operations_, dialogs_);
        QProgressBar* progress = bar_->progressBar();
        connect(&search, &Search::progressMaximum, progress, &QProgressBar::setMaximum);
        connect(&search, &Search::progress, progress, &QProgressBar::setValue);
        connect(&search, &Search::modulesFound, this, &frmMain::showModuleTabs);
        connect(&search, &Search::operationsEnabled, this, &frmMain::operationsEnabled);
        // The one-by-one search talks over the window's own exchange, which
        // the pane follows already; a search of all lines at once over its own.
        if constexpr (std::is_same_v<Search, ConcurrentSearch>) {
            connect(&search, &ConcurrentSearch::frameLogged, &frameLog_->log(), &FrameLog::append);
            connect(&search, &ConcurrentSearch::frameLogged, this, &frmMain::countFrame);
            // A rack's search is not bounded by the table; the tabs show what it holds.
            if (every)
                search.keepEveryModule();
        }
        // Which line and address is asked, beside the progress bar; not a
        // notice. A rack's search tells where each of its lines is.
        std::map<QString, QString> asked;
        connect(&search, &Search::asking, this, [this, every, &asked](const PortEntry& port, int address) {
            const QString text = pick(texts::desktop::kAsking, language())
                                     .arg(port.name)
                                     .arg(address)
                                     .arg(address + 1)
                                     .arg(ModuleSearch::kAddresses);
            if (!every) {
                statusBar()->showMessage(text);
                return;
            }
            asked[port.name] = text;
            QStringList lines;
            for (const auto& [line, said] : asked)
                lines << said;
            statusBar()->showMessage(lines.join(QStringLiteral("; ")));
        });
        connect(&search, &Search::lineBusy, this, [this](const PortEntry& port, const LineHolder& holder) {
            notify(Operations::lineBusyText(port.name, holder, language()));
        });
        // Stop, or Esc, asks no address after the one in flight.
        bar_->setSearching(true);
        connect(bar_, &PortSearchBar::stopClicked, &search, &Search::stopAsking);
        const QShortcut escape(QKeySequence(Qt::Key_Escape), this);
        connect(&escape, &QShortcut::activated, &search, &Search::stopAsking);
        const int found = (search.*body)(ports, bar_->selectedPortNumber());
        bar_->setSearching(false);
        if constexpr (std::is_same_v<Search, ConcurrentSearch>)
            if (every)
                *every = search.everyModule();
        markUnreadModules(search.unreadModules());
        keepSearch(search.unreadModules());
        // The search read every module it found: they hold what they show.
        unsent_->allHeld();
        // As if the operator had clicked the first module's tab.
        if (found > 0)
            TabStripCom_Click(0);
    }, std::nullopt, true);
    if (!fittedSize_.isEmpty() && size() == fittedSize_) {
        growToShow(*this, *findChild<CellGrid*>(QStringLiteral("MSHGridOperate")), screen()->availableGeometry());
        fittedSize_ = size();
    }
}

void frmMain::keepSearch(const QList<int>& unread)
{
    QStringList lines;
    for (const PortEntry& port : lines_.ports())
        lines << port.name;
    QList<FoundModule> found;
    for (int i = 0; i < state_.moduleCount; ++i) {
        const ModuleRecord& module = state_.table.at(static_cast<size_t>(i));
        const PortEntry* port = lines_.find(module.portNumber);
        found.append({port ? port->name : QString::number(module.portNumber), &module, !unread.contains(i)});
    }
    for (const HistoryEntry& entry : searchEntries(lines, found, QString()))
        keep(entry);
}

void frmMain::markUnreadModules(const QList<int>& unread)
{
    QStringList said;
    for (const int i : unread) {
        const ModuleRecord& module = state_.table.at(static_cast<size_t>(i));
        const PortEntry* port = lines_.find(module.portNumber);
        const QString text = pick(texts::message::kNotReadWholly, language())
                                 .arg(QString::number(i + 1), port ? port->name : QString::number(module.portNumber),
                                      QString::number(module.busAddress));
        tabStripCom_->setTabToolTip(i, text);
        said << text;
    }
    if (!said.isEmpty())
        notify(said.join(QLatin1Char(' ')));
}

void frmMain::showModuleTabs(int count)
{
    // New tabs are not the operator's choice: the search makes its own.
    const QSignalBlocker quiet(tabStripCom_);
    while (tabStripCom_->count() > 0)
        tabStripCom_->removeTab(0);
    for (int i = 0; i < count; ++i) {
        const ModuleRecord& module = state_.table.at(static_cast<size_t>(i));
        tabStripCom_->addTab(QString::number(i + 1) + QLatin1Char(' ') + trimmedText(module.modelName));
    }
    if (count > 0)
        tabStripCom_->setCurrentIndex(0);
}

void frmMain::applyPorts(const QList<PortEntry>& systemPorts)
{
    // The watcher looks at the machine's ports only; the network lines follow them.
    watcher_.setKnown(systemPorts);
    lines_.update(systemPorts, rememberedNetworkPorts(), state_.table);
    port_.setPorts(lines_.ports());
    bar_->setPorts(lines_.ports());
    if (!lines_.isEmpty())
        state_.current().portNumber = static_cast<qint16>(bar_->selectedPortNumber());
}

void frmMain::cmbComPort_Click(int number)
{
    state_.current().portNumber = static_cast<qint16>(number);
}

void frmMain::addNetworkPort()
{
    const QString title = pick(texts::message::kTitle, language());
    const QString address = dialogs_.askText(title, pick(texts::network::kAddNetworkPortPrompt, language())).trimmed();
    if (address.isEmpty())  // Cancel
        return;
    if (!isNetworkPort(address)) {
        dialogs_.showMessage(title, pick(texts::network::kNotANetworkPort, language()));
        return;
    }
    rememberNetworkPort(address);
    applyPorts(listPorts());
    const std::optional<PortEntry> added = lines_.resolve(address);
    if (!added)
        return;
    bar_->showPort(added->number);
    cmbComPort_Click(added->number);
}

}  // namespace velmor
