#include "port_search_bar.h"

#include "protocol/frame.h"

#include "texts/grid.h"
#include "texts/hints.h"
#include "texts/network.h"
#include "texts/window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace velmor {
namespace {

// The item data of "Add network port...", which no port has.
constexpr int kAddNetworkPort = -1;

QLabel* labelFor(const Text& caption, QWidget* buddy, const char* name, Language language)
{
    auto* label = new QLabel(pick(caption, language));
    label->setObjectName(QLatin1String(name));
    label->setBuddy(buddy);
    return label;
}

}  // namespace

PortSearchBar::PortSearchBar(Language language, QWidget* parent)
    : QGroupBox(pick(texts::window::kFrame6, language), parent)
    , addCaption_(pick(texts::network::kAddNetworkPort, language))
    , cmbComPort_(new QComboBox)
    , cmbModuleIndex_(new QComboBox)
    , cmdSearch_(new QPushButton(pick(texts::window::kSearchButton, language)))
    , progress_(new QProgressBar)
{
    setObjectName(QStringLiteral("Frame6"));
    cmbComPort_->setObjectName(QStringLiteral("cmbComPort"));
    cmbModuleIndex_->setObjectName(QStringLiteral("cmbModuleIndex"));
    // Every address a module can be set to; 255 reaches them all.
    for (int address = 0; address <= kBroadcastAddress; ++address)
        cmbModuleIndex_->addItem(QString::number(address), address);
    cmdSearch_->setObjectName(QStringLiteral("cmdSearch"));
    progress_->setObjectName(QStringLiteral("ProgressBarModule"));
    progress_->setAccessibleName(pick(texts::window::kSearchProgressName, language));
    progress_->setTextVisible(false);
    progress_->setValue(0);

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(labelFor(texts::grid::kPortLabel, cmbComPort_, "lblComPort", language));
    layout->addWidget(cmbComPort_, 1);
    layout->addWidget(labelFor(texts::grid::kModuleLabel, cmbModuleIndex_, "lblModuleIndex", language));
    layout->addWidget(cmbModuleIndex_);
    layout->addWidget(cmdSearch_);
    layout->addWidget(progress_, 1);

    connect(cmbComPort_, &QComboBox::activated, this, &PortSearchBar::portActivated);
    connect(cmbModuleIndex_, &QComboBox::activated, this,
            [this] { emit addressChosen(cmbModuleIndex_->currentData().toInt()); });
    searchCaption_ = cmdSearch_->text();
    stopCaption_ = pick(texts::window::kStopSearchButton, language);
    stopHint_ = pick(texts::hints::kStopSearch, language);
    connect(cmdSearch_, &QPushButton::clicked, this, [this] {
        if (!searching_) {
            emit searchClicked();
            return;
        }
        stopAsked_ = true;
        refresh();
        emit stopClicked();
    });
}

void PortSearchBar::setCommandsEnabled(bool enabled)
{
    commandsOn_ = enabled;
    refresh();
}

void PortSearchBar::setSearching(bool searching)
{
    if (searching && !searching_)
        searchHint_ = cmdSearch_->toolTip();
    searching_ = searching;
    stopAsked_ = false;
    cmdSearch_->setText(searching ? stopCaption_ : searchCaption_);
    cmdSearch_->setToolTip(searching ? stopHint_ : searchHint_);
    refresh();
}

void PortSearchBar::refresh()
{
    cmbComPort_->setEnabled(commandsOn_);
    cmbModuleIndex_->setEnabled(commandsOn_);
    cmdSearch_->setEnabled(commandsOn_ || (searching_ && !stopAsked_));
}

void PortSearchBar::setPorts(const QList<PortEntry>& ports)
{
    // The chosen port stays chosen while it is there; otherwise the first.
    // Only a port's item counts: the separator's text is empty too.
    const QString chosen = shown_ >= 0 ? cmbComPort_->itemText(shown_) : QString();
    cmbComPort_->clear();
    shown_ = ports.isEmpty() ? -1 : 0;
    for (const PortEntry& port : ports) {
        if (port.name == chosen)
            shown_ = static_cast<int>(cmbComPort_->count());
        cmbComPort_->addItem(port.name, port.number);
    }
    cmbComPort_->insertSeparator(cmbComPort_->count());
    cmbComPort_->addItem(addCaption_, kAddNetworkPort);
    cmbComPort_->setCurrentIndex(shown_);
}

void PortSearchBar::portActivated(int index)
{
    if (cmbComPort_->itemData(index).toInt() == kAddNetworkPort) {
        cmbComPort_->setCurrentIndex(shown_);
        emit addNetworkPortChosen();
        return;
    }
    shown_ = index;
    emit portChosen(selectedPortNumber());
}

void PortSearchBar::selectFirstPort()
{
    if (shown_ >= 0) {
        shown_ = 0;
        cmbComPort_->setCurrentIndex(0);
    }
}

int PortSearchBar::selectedPortNumber() const
{
    return std::max(0, cmbComPort_->currentIndex() < 0 ? 0 : cmbComPort_->currentData().toInt());
}

void PortSearchBar::showAddress(int address)
{
    cmbModuleIndex_->setCurrentIndex(cmbModuleIndex_->findData(address));
}

void PortSearchBar::showPort(int number)
{
    const int index = cmbComPort_->findData(number);
    if (index >= 0 && number != kAddNetworkPort) {
        shown_ = index;
        cmbComPort_->setCurrentIndex(index);
    }
}

}  // namespace velmor
