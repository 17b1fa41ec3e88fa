#include "grid_editing.h"

#include "cell_grid.h"
#include "channel_grid_editor.h"
#include "frame_display.h"
#include "operation_panels.h"
#include "trim_grid_editor.h"

namespace velmor {

GridEditing::GridEditing(SetupState& state, OperatorDialogs& dialogs, ChannelSetupPanel* frame1,
                         AdjustPanel* frame2, FrameDisplay& display)
    : channels_(new ChannelGridEditor(frame1->channelGrid(), state, dialogs))
    , adjust_(new TrimGridEditor(TrimGrid::Adjust, frame2->adjustGrid(), state, dialogs))
    , calibration_(new TrimGridEditor(TrimGrid::Calibration, frame1->calibrationGrid(), state, dialogs))
{
    frame1->addEditorStrip(channels_->strip());
    for (GridEditor* editor : {static_cast<GridEditor*>(channels_), static_cast<GridEditor*>(adjust_),
                               static_cast<GridEditor*>(calibration_)})
        connect(editor, &GridEditor::stored, this, &GridEditing::edited);
    connect(channels_, &ChannelGridEditor::stored, this, [&state, &display](const QList<int>& rows) {
        display.showEdit(state.current(), Block::Kind::ChannelGroup, rows);
    });
    connect(adjust_, &TrimGridEditor::stored, this, [&state, &display](const QList<int>& rows) {
        display.showEdit(state.current(), Block::Kind::AdjustBlock, rows);
    });
}

void GridEditing::close()
{
    channels_->close();
    adjust_->close();
    calibration_->close();
}

}  // namespace velmor
