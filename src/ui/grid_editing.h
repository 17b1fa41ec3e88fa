#pragma once

#include "link/operator_dialogs.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QObject>

namespace velmor {

class AdjustPanel;
class ChannelGridEditor;
class ChannelSetupPanel;
class FrameDisplay;
class TrimGridEditor;

// The editors of the three grids, and the rebuilt write frames an edit shows:
// the channel grid's under its group's send label, the adjust grid's under
// its block's. Coefficient edits show no frame, as calibration frames never do.
class GridEditing : public QObject {
    Q_OBJECT
public:
    GridEditing(SetupState& state, OperatorDialogs& dialogs, ChannelSetupPanel* frame1,
                AdjustPanel* frame2, FrameDisplay& display);

    // Every editor put away without storing (another module is shown).
    void close();

signals:
    // An editor stored an edit into the current module's record.
    void edited();

private:
    ChannelGridEditor* channels_;
    TrimGridEditor* adjust_;
    TrimGridEditor* calibration_;
};

}  // namespace velmor
