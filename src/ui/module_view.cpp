#include "module_view.h"

#include "cell_grid.h"
#include "edit/grid_cells.h"
#include "model/reference.h"
#include "module_info_fields.h"
#include "operation_panels.h"
#include "port_search_bar.h"

#include <QTimer>

namespace velmor {

ModuleView::ModuleView(SetupState& state, ChannelSetupPanel* frame1, AdjustPanel* frame2,
                       ModuleInfoPanel* frame3, PortSearchBar* bar)
    : state_(state), frame1_(frame1), frame2_(frame2), frame3_(frame3), bar_(bar)
{
}

void ModuleView::showAll() { show(Everything); }

void ModuleView::showSoon(const Request& request)
{
    int parts = Everything;  // the information may have changed the model
    switch (request.block.kind) {
    case Block::Kind::Balance: parts = 0; break;
    case Block::Kind::CalibrationPair: parts = Calibration; break;
    case Block::Kind::AdjustBlock: parts = Adjust; break;
    case Block::Kind::ChannelGroup: parts = Channels; break;
    case Block::Kind::Information: break;
    }
    if (pending_ == 0 && parts != 0)
        QTimer::singleShot(0, this, &ModuleView::flush);
    pending_ |= parts;
}

void ModuleView::flush()
{
    const int parts = pending_;
    pending_ = 0;
    show(parts);
}

void ModuleView::show(int parts)
{
    const ModuleRecord& record = state_.current();
    if (parts & Channels) {
        frame1_->setTitle(channelFrameTitle(record.modelCode, languageOf(state_.languageMode)));
        frame1_->channelGrid()->showCells(
            channelGridCells(record, languageOf(state_.languageMode), state_.currentMask()));
    }
    if (parts & Calibration)
        frame1_->calibrationGrid()->showCells(calibrationGridCells(record, languageOf(state_.languageMode)));
    if (parts & Adjust)
        frame2_->adjustGrid()->showCells(adjustGridCells(record, languageOf(state_.languageMode)));
    if (parts & Information) {
        frame3_->fields()->showModule();
        // The chooser shows the module's own line and address.
        bar_->showPort(record.portNumber);
        bar_->showAddress(record.busAddress);
    }
    emit shown();
}

}  // namespace velmor
