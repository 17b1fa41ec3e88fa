#pragma once

#include "held_setups.h"
#include "model/module_table.h"

#include <QLabel>

#include <array>

namespace velmor {

class AdjustPanel;
class ChannelSetupPanel;
class ModuleInfoFields;

// The edits shown and not yet sent to their module: the cells of the three
// grids and the rows of the information panel that read otherwise than the
// module holds them are marked, and a label of the status bar counts them in
// every module of the table. A group sent or read again holds what is shown,
// so its marks go.
class UnsentEdits : public QLabel {
    Q_OBJECT
public:
    UnsentEdits(const SetupState& state, ChannelSetupPanel* frame1, AdjustPanel* frame2, ModuleInfoFields* fields);

    // What each module holds, as its replies said.
    HeldSetups& held() { return held_; }
    // Every module holds what the table shows (at start, after a search).
    void allHeld();
    // The current module's marks and the count anew, after an edit or a redraw.
    void refresh();
    int count() const;
    // "TM-C16 at address 5: CH2 Gain, CH3 Cut off; …"; empty when nothing waits.
    QString summary() const;

private:
    const SetupState& state_;
    ChannelSetupPanel* frame1_;
    AdjustPanel* frame2_;
    ModuleInfoFields* fields_;
    HeldSetups held_;
    // Each module's unsent cells by name, as they stood when it was last shown.
    std::array<QStringList, kModuleSlots> names_;
};

}  // namespace velmor
