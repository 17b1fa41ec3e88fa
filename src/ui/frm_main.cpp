#include "frm_main.h"

#include "cell_grid.h"
#include "config/config_location.h"
#include "control_hints.h"
#include "file_chooser.h"
#include "flow_summary.h"
#include "frame_display.h"
#include "frame_log_pane.h"
#include "frame_page.h"
#include "history/flow_entries.h"
#include "history_keeper.h"
#include "main_menus.h"
#include "module_info_fields.h"
#include "module_view.h"
#include "operation_panels.h"
#include "port_search_bar.h"
#include "serial/port_list.h"
#include "tab_strip.h"
#include "texts/desktop.h"
#include "texts/message.h"
#include "texts/window.h"
#include "twips.h"
#include "unsent_edits.h"
#include "widget_dialogs.h"
#include "window_placement.h"
#include "window_title.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>

namespace velmor {
namespace {

// The given helper, or one of the window's own kind.
template <typename Own, typename Interface>
Interface& chosen(Interface* given, std::unique_ptr<Interface>& own, QWidget* owner)
{
    if (given)
        return *given;
    own = std::make_unique<Own>(owner);
    return *own;
}

// A state that knows its language before any panel is built.
SetupState startState(int languageMode)
{
    SetupState state;
    state.languageMode = languageMode;
    return state;
}

}  // namespace

frmMain::frmMain(int languageMode, OperatorDialogs* dialogs, FileChooser* files, QWidget* parent)
    : QMainWindow(parent)
    , state_(startState(languageMode))
    , dialogs_(chosen<WidgetDialogs>(dialogs, ownDialogs_, this))
    , files_(chosen<SystemFileChooser>(files, ownFiles_, this))
    , configPath_(defaultConfigPath())
    , operations_(state_, port_, dialogs_)
    , bar_(new PortSearchBar(language()))
    , tabStripCom_(new QTabBar)
    , tabStrip1_(new QTabBar)
    , frames_(new QStackedWidget)
    , frame1_(new ChannelSetupPanel(language()))
    , frame2_(new AdjustPanel(language()))
    , frame3_(new ModuleInfoPanel(state_, dialogs_, language()))
    , menus_(new MainMenus(menuBar(), language()))
    , frameLog_(new FrameLogPane(operations_.exchange(), files_, dialogs_, language(), this))
    , display_(frame1_, frame2_, frame3_)
    , view_(state_, frame1_, frame2_, frame3_, bar_)
    , editing_(state_, dialogs_, frame1_, frame2_, display_)
    , unsent_(new UnsentEdits(state_, frame1_, frame2_, frame3_->fields()))
{
    setObjectName(QStringLiteral("frmMain"));
    setAcceptDrops(true);
    // Form_Resize's first rule: never narrower than 8000 twips.
    setMinimumWidth(twipsToPixels(twips::kMinimumWidth, this));
    showTitle();

    tabStripCom_->setObjectName(QStringLiteral("TabStripCom"));
    tabStripCom_->setAccessibleName(pick(texts::window::kModuleTabsName, language()));
    tabStripCom_->setExpanding(false);

    auto* centre = new QWidget;
    auto* layout = new QVBoxLayout(centre);
    // The module tabs span the inner width less 210 twips, centred.
    const int side = twipsToPixels(twips::kModuleTabsMargin, this) / 2;
    layout->setContentsMargins(side, side, twipsToPixels(twips::kModuleTabsMargin, this) - side, side);
    layout->addWidget(bar_);
    layout->addWidget(tabStripCom_);
    layout->addWidget(buildFrames(), 1);
    setCentralWidget(centre);
    wireMenus();
    wirePanels();

    connect(bar_, &PortSearchBar::searchClicked, this, &frmMain::cmdSearch_Click);
    connect(bar_, &PortSearchBar::portChosen, this, &frmMain::cmbComPort_Click);
    connect(bar_, &PortSearchBar::addNetworkPortChosen, this, &frmMain::addNetworkPort);
    connect(bar_, &PortSearchBar::addressChosen, this, &frmMain::cmbModuleIndex_Click);
    followTabs(tabStripCom_, this, [this](int index) { TabStripCom_Click(index); });
    // Within a flow the window stays locked from its first request to the end
    // of its last: unlocking between two requests of a chain would only
    // flicker (and cost a redraw per request).
    connect(&operations_, &Operations::commandsEnabled, this, [this](bool enabled) {
        if (!enabled || !flowRunning_)
            EnableCommands(enabled);
    });
    connect(&watcher_, &PortWatcher::portsChanged, this, &frmMain::applyPorts);
    statusBar()->setObjectName(QStringLiteral("StatusBar"));
    statusBar()->addPermanentWidget(unsent_);
    connect(&view_, &ModuleView::shown, unsent_, &UnsentEdits::refresh);
    connect(&editing_, &GridEditing::edited, unsent_, &UnsentEdits::refresh);
    connect(frame3_->fields(), &ModuleInfoFields::edited, unsent_, &UnsentEdits::refresh);
    connect(&operations_, &Operations::lineBusy, this, [this](const PortEntry& port, const LineHolder& holder) {
        notify(Operations::lineBusyText(port.name, holder, language()));
    });
    connect(&operations_, &Operations::writeStoppedPartway, this,
            [this](const WriteProgress& progress) { notify(writeProgressText(progress, language())); });
    connect(&operations_.exchange(), &Exchange::frameLogged, this, &frmMain::countFrame);
    giveHints(*this, language());
}

void frmMain::notify(const QString& text)
{
    noticed_ = true;
    statusBar()->showMessage(text);
}

void frmMain::countFrame(const FrameRow& row)
{
    if (row.direction == FrameDirection::Out)
        ++framesSent_;
}

void frmMain::showTitle()
{
    const bool moduleKnown = state_.moduleCount > 0 || !documentPath_.isEmpty();
    setWindowTitle(velmor::windowTitle(moduleKnown ? &state_.current() : nullptr, documentPath_, language()));
}

frmMain::~frmMain() = default;

QWidget* frmMain::buildFrames()
{
    tabStrip1_->setObjectName(QStringLiteral("TabStrip1"));
    tabStrip1_->setAccessibleName(pick(texts::window::kFrameTabsName, language()));
    tabStrip1_->setExpanding(false);
    for (const Text* caption : texts::window::kFrameTabs)
        tabStrip1_->addTab(pick(*caption, language()));
    for (QWidget* frame : std::initializer_list<QWidget*>{frame1_, frame2_, frame3_})
        frames_->addWidget(new FramePage(frame));
    followTabs(tabStrip1_, this, [this](int index) { TabStrip1_Click(index); });

    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    // The frames start 240 twips from the window's left edge and span its
    // inner width less 455 twips.
    const int outer = twipsToPixels(twips::kModuleTabsMargin, this);
    const int left = twipsToPixels(twips::kFrameLeft, this) - outer / 2;
    layout->setContentsMargins(left, 0, twipsToPixels(twips::kFrameMargin, this) - outer - left, 0);
    layout->addWidget(tabStrip1_);
    layout->addWidget(frames_, 1);
    return box;
}

OperationPanel* frmMain::panelOf(Block block) const
{
    switch (block.kind) {
    case Block::Kind::ChannelGroup:
    case Block::Kind::Balance: return frame1_;
    case Block::Kind::AdjustBlock:
    case Block::Kind::CalibrationPair: return frame2_;
    case Block::Kind::Information: return frame3_;
    }
    return frame3_;
}

void frmMain::requestStarted(const Request& request)
{
    tabStrip1_->setEnabled(false);
    panelOf(request.block)->setEnabled(false);
    display_.showRequest(request);
}

void frmMain::replyStored(const Request& request, const QByteArray& frame)
{
    display_.showReply(request, frame, state_.current());
    unsent_->held().replyStored(state_.currentModule, request, frame);
    view_.showSoon(request);
}

void frmMain::requestEnded(const Request& request, bool portOpened)
{
    if (portOpened) {
        if (OperationPanel* panel = panelOf(request.block); !lockedPanels_.contains(panel))
            lockedPanels_.append(panel);
        if (!flowRunning_)
            unlockPanels();
        return;
    }
    lockedPanels_.clear();
    tabStrip1_->setEnabled(true);
    // Deliberate: after a port that would not open the frames come back as
    // Frame1 and Frame2 enabled, Frame3 disabled, whichever frame sent.
    frame1_->setEnabled(true);
    frame2_->setEnabled(true);
    frame3_->setEnabled(false);
}

void frmMain::operationsEnabled(bool enabled)
{
    operationsOn_ = enabled;
    for (QWidget* frame : std::initializer_list<QWidget*>{frame1_, frame2_, frame3_})
        frame->setEnabled(enabled);
    menus_->setModulesFound(enabled);
}

void frmMain::TabStrip1_Click(int index)
{
    if (index < 0 || index >= frames_->count())
        return;
    showTab(tabStrip1_, index);
    frames_->setCurrentIndex(index);
}

void frmMain::Form_Load()
{
    const int languageMode = state_.languageMode;
    state_.reset();
    state_.languageMode = languageMode;
    unsent_->allHeld();
    // The first port listed is the current module's (applyPorts).
    applyPorts(listPorts());
    if (lines_.isEmpty())
        dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::message::kNoComPort, language()));
    view_.showAll();
    frame3_->fields()->clearBoxes();
    showTitle();
}

void frmMain::placeOnScreen()
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    if (restorePlacement(*this, findChildren<CellGrid*>(), screens))
        return;
    fitFirstStart(*this, *findChild<CellGrid*>(QStringLiteral("MSHGridOperate")), screen()->availableGeometry());
    fittedSize_ = size();
}

void frmMain::unlockPanels()
{
    tabStrip1_->setEnabled(true);
    for (OperationPanel* panel : lockedPanels_)
        panel->setEnabled(operationsOn_);
    lockedPanels_.clear();
}

QString frmMain::did(const Text& done) const { return pick(done, language()).arg(moduleOnLine(state_, lines_, language())); }

QString frmMain::didBeckon() const { return pick(texts::desktop::kDidBeckon, language()).arg(lineName(state_, lines_)); }

void frmMain::useHistory(const HistoryTarget& target)
{
    history_.reset();
    historyTarget_ = target;
    if (target.kind == HistoryTarget::Kind::Off)
        return;
    history_ = std::make_unique<HistoryKeeper>(target, language());
    connect(history_.get(), &HistoryKeeper::told, this, &frmMain::notify);
}

void frmMain::settleHistory()
{
    if (history_)
        history_->settle();
}

void frmMain::keep(const HistoryEntry& entry)
{
    if (history_)
        history_->keep(entry);
}

QString frmMain::currentLine() const
{
    const PortEntry* port = lines_.find(state_.current().portNumber);
    return port ? port->name : QString::number(state_.current().portNumber);
}

void frmMain::runFlow(const QString& done, const std::function<void()>& flow, std::optional<EntryKind> kept,
                      bool keepsItsOwn)
{
    if (flowRunning_)  // the commands are locked; a queued click finds nothing to do
        return;
    flowRunning_ = true;
    openedFrom_.clear();
    noticed_ = false;
    framesSent_ = 0;
    QElapsedTimer took;
    took.start();
    editing_.close();
    // The ports a flow talks to keep their numbers until it ends.
    watcher_.pause();
    EnableCommands(false);
    flow();
    view_.flush();
    unlockPanels();
    EnableCommands(true);
    flowRunning_ = false;
    watcher_.resume();
    showTitle();
    // A notice said during the flow stays; otherwise the status bar tells what was done.
    if (!noticed_)
        notify(flowSummary(done, framesSent_, took.elapsed(), language()));
    // Kept after the flow, never during it; a flow that sent nothing did nothing.
    const Failure failure = operations_.exchange().failure();
    if (!keepsItsOwn && framesSent_ > 0)
        if (const std::optional<HistoryEntry> entry = flowEntry(
                state_.current(), currentLine(), kept, failure == Failure::None ? QString() : failureName(failure), done))
            keep(*entry);
    if (closePending_)
        close();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (flowRunning_) {
        closePending_ = true;
        operations_.abandonAfterExchange();
        event->ignore();
        return;
    }
    rememberPlacement(*this, findChildren<CellGrid*>());
    // A failed save has shown its message; the window closes all the same.
    save(configPath_);
    if (unsent_->count() > 0)
        statusBar()->showMessage(pick(texts::desktop::kClosingWithUnsent, language())
                                     .arg(statusBar()->currentMessage(), unsent_->summary()));
    event->accept();
}

void frmMain::TabStripCom_Click(int index)
{
    if (index < 0 || index >= state_.moduleCount)
        return;
    showTab(tabStripCom_, index);
    editing_.close();
    state_.currentModule = index;
    openedFrom_.clear();
    view_.showAll();
    showTitle();
}

void frmMain::cmbModuleIndex_Click(int address)
{
    state_.current().busAddress = static_cast<qint16>(address);
    frame3_->fields()->showModule();
    showTitle();
}

void frmMain::EnableCommands(bool enabled)
{
    // The search's own controls and the module tabs too: a click during an
    // exchange would start a second one.
    bar_->setCommandsEnabled(enabled);
    tabStripCom_->setEnabled(enabled);
    for (OperationPanel* panel : {static_cast<OperationPanel*>(frame1_), static_cast<OperationPanel*>(frame2_),
                                  static_cast<OperationPanel*>(frame3_)})
        for (QWidget* control : panel->lockedDuringExchanges())
            control->setEnabled(enabled);
    menus_->setCommandsEnabled(enabled);
}

}  // namespace velmor
