#include "frm_main.h"

#include "model/messages.h"
#include "model/window_texts.h"
#include "port_search_bar.h"
#include "widget_dialogs.h"

#include <QMenuBar>
#include <QProgressBar>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>

namespace velmor {
namespace {

OperatorDialogs& chosenDialogs(OperatorDialogs* given, std::unique_ptr<OperatorDialogs>& own, QWidget* owner)
{
    if (given)
        return *given;
    own = std::make_unique<WidgetDialogs>(owner);
    return *own;
}

}  // namespace

frmMain::frmMain(int languageMode, OperatorDialogs* dialogs, QWidget* parent)
    : QMainWindow(parent)
    , language_(languageOf(languageMode))
    , dialogs_(chosenDialogs(dialogs, ownDialogs_, this))
    , operations_(state_, port_, dialogs_)
    , bar_(new PortSearchBar(language_))
    , tabStripCom_(new QTabBar)
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(pick(win::kWindowTitle, language_));
    state_.languageMode = languageMode;

    tabStripCom_->setObjectName(QStringLiteral("TabStripCom"));
    tabStripCom_->setAccessibleName(pick(win::kModuleTabsName, language_));
    tabStripCom_->setExpanding(false);

    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    layout->addWidget(bar_);
    layout->addWidget(tabStripCom_);
    layout->addStretch(1);
    setCentralWidget(centre);
    buildMenus();

    connect(bar_, &PortSearchBar::searchClicked, this, &frmMain::cmdSearch_Click);
    connect(bar_, &PortSearchBar::portChosen, this, &frmMain::cmbComPort_Click);
    connect(bar_, &PortSearchBar::addressChosen, this, &frmMain::cmbModuleIndex_Click);
    connect(tabStripCom_, &QTabBar::tabBarClicked, this, &frmMain::TabStripCom_Click);
    connect(&operations_, &Operations::commandsEnabled, this, &frmMain::EnableCommands);
    connect(&watcher_, &PortWatcher::portsChanged, this, &frmMain::portsChanged);
}

frmMain::~frmMain() = default;

void frmMain::buildMenus()
{
    QMenu* operate = menuBar()->addMenu(pick(win::kMnuOperate, language_));
    operate->setObjectName(QStringLiteral("MnuOperate"));
    mnuOperateSearch_ = operate->addAction(pick(win::kMnuOperateSearch, language_), this, &frmMain::cmdSearch_Click);
    mnuOperateSearch_->setObjectName(QStringLiteral("MnuOperate_Search"));
}

void frmMain::Form_Load()
{
    const int languageMode = state_.languageMode;
    state_.reset();
    state_.languageMode = languageMode;
    applyPorts(listPorts());
    if (ports_.isEmpty())
        dialogs_.showMessage(pick(msg::kTitle, language_), pick(msg::kNoComPort, language_));
    else
        state_.current().portNumber = static_cast<qint16>(bar_->selectedPortNumber());
    bar_->showAddress(state_.current().busAddress);
}

template <typename Flow>
void frmMain::runFlow(Flow flow)
{
    if (flowRunning_)  // the commands are locked; a queued click finds nothing to do
        return;
    flowRunning_ = true;
    EnableCommands(false);
    flow();
    EnableCommands(true);
    flowRunning_ = false;
    if (pendingPorts_) {
        applyPorts(*pendingPorts_);
        pendingPorts_.reset();
    }
}

void frmMain::cmdSearch_Click()
{
    runFlow([this] {
        ModuleSearch search(operations_, dialogs_);
        QProgressBar* progress = bar_->progressBar();
        connect(&search, &ModuleSearch::progressMaximum, progress, &QProgressBar::setMaximum);
        connect(&search, &ModuleSearch::progress, progress, &QProgressBar::setValue);
        connect(&search, &ModuleSearch::modulesFound, this, &frmMain::showModuleTabs);
        const int found = search.cmdSearch_Click(ports_, bar_->selectedPortNumber());
        // As if the operator had clicked the first module's tab.
        if (found > 0)
            TabStripCom_Click(0);
    });
}

void frmMain::showModuleTabs(int count)
{
    while (tabStripCom_->count() > 0)
        tabStripCom_->removeTab(0);
    for (int i = 0; i < count; ++i) {
        const ModuleRecord& module = state_.table.at(static_cast<size_t>(i));
        tabStripCom_->addTab(QString::number(i + 1) + QLatin1Char(' ') + trimmedText(module.modelName));
    }
    if (count > 0)
        tabStripCom_->setCurrentIndex(0);
}

void frmMain::TabStripCom_Click(int index)
{
    if (index < 0 || index >= state_.moduleCount)
        return;
    tabStripCom_->setCurrentIndex(index);
    state_.currentModule = index;
    bar_->showAddress(state_.current().busAddress);
}

void frmMain::portsChanged(const QList<PortEntry>& ports)
{
    // Never under a running flow: the ports it talks to keep their numbers.
    if (flowRunning_)
        pendingPorts_ = ports;
    else
        applyPorts(ports);
}

void frmMain::applyPorts(const QList<PortEntry>& ports)
{
    // A port's number is its place in the list, which a new port may shift:
    // the modules found keep their port by its device, not by its number.
    for (ModuleRecord& module : state_.table) {
        const PortEntry* before = findPort(ports_, module.portNumber);
        const auto after = before ? std::find_if(ports.begin(), ports.end(),
                                                 [&](const PortEntry& p) { return p.device == before->device; })
                                  : ports.end();
        if (after != ports.end())
            module.portNumber = static_cast<qint16>(after->number);
    }
    ports_ = ports;
    watcher_.setKnown(ports);
    port_.setPorts(ports);
    bar_->setPorts(ports);
    if (!ports.isEmpty())
        state_.current().portNumber = static_cast<qint16>(bar_->selectedPortNumber());
}

void frmMain::cmbComPort_Click(int number)
{
    state_.current().portNumber = static_cast<qint16>(number);
}

void frmMain::cmbModuleIndex_Click(int address)
{
    state_.current().busAddress = static_cast<qint16>(address);
}

void frmMain::EnableCommands(bool enabled)
{
    // The search's own controls and the module tabs too: a click during an
    // exchange would start a second one.
    bar_->setEnabled(enabled);
    tabStripCom_->setEnabled(enabled);
    mnuOperateSearch_->setEnabled(enabled);
}

}  // namespace velmor
