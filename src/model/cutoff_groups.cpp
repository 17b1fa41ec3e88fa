#include "cutoff_groups.h"

#include "models.h"

#include <utility>

namespace velmor {

namespace {

constexpr RowSpan kTmC16Groups[] = {{1, 3}, {4, 6}, {7, 8}, {9, 11}, {12, 14}, {15, 16}};

}  // namespace

RowSpan cutoffGroupOf(int row)
{
    for (const RowSpan& group : kTmC16Groups) {
        if (row >= group.first && row <= group.last)
            return group;
    }
    return {row, row};
}

RowSpan cutoffRows(int modelCode, RowSpan selection)
{
    if (selection.first > selection.last)
        std::swap(selection.first, selection.last);
    if (modelCode != kTmC16)
        return selection;
    return {cutoffGroupOf(selection.first).first, cutoffGroupOf(selection.last).last};
}

}  // namespace velmor
