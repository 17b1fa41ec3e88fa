#pragma once

#include "model/module_table.h"
#include "protocol/requests.h"
#include "texts/language.h"

#include <QObject>

namespace velmor {

class AdjustPanel;
class ChannelSetupPanel;
class ModuleInfoPanel;
class PortSearchBar;

// Shows the current module's record: the channel frame's title, the three
// grids, the information panel and the address. After a reply only what it
// changed is redrawn, once the next request is on its way, so that drawing
// never holds up the line.
class ModuleView : public QObject {
    Q_OBJECT
public:
    ModuleView(SetupState& state, ChannelSetupPanel* frame1, AdjustPanel* frame2,
               ModuleInfoPanel* frame3, PortSearchBar* bar);

    // Everything, now.
    void showAll();
    // What a stored reply changed, as soon as the event loop turns.
    void showSoon(const Request& request);
    // Whatever is still waiting to be drawn, now.
    void flush();

signals:
    // The record has been drawn anew.
    void shown();

private:
    enum Part { Information = 1, Channels = 2, Adjust = 4, Calibration = 8, Everything = 15 };
    void show(int parts);

    SetupState& state_;
    ChannelSetupPanel* frame1_;
    AdjustPanel* frame2_;
    ModuleInfoPanel* frame3_;
    PortSearchBar* bar_;
    int pending_ = 0;
};

}  // namespace velmor
