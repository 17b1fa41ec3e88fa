#pragma once

namespace velmor {

// A span of channel-grid rows (1-based, rows 1..16 are channels 1..16).
struct RowSpan {
    int first;
    int last;

    bool operator==(const RowSpan&) const = default;
};

// "TM-C16" (model code 2) shares one cut-off per group of rows 1-3, 4-6, 7-8,
// 9-11, 12-14, 15-16: uneven on purpose. A row outside 1..16 is its own group.
RowSpan cutoffGroupOf(int row);

// The selected rows from the upper to the lower; on "TM-C16" each end is
// widened to its whole group. Ends outside 1..16 stay as they are.
RowSpan cutoffRows(int modelCode, RowSpan selection);

}  // namespace velmor
