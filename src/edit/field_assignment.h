#pragma once

#include "edit/cell_updates.h"
#include "model/cutoff_groups.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QList>
#include <QString>

#include <optional>

namespace velmor {

// A field of the channels, named as velmor-cli edit names it ("gain",
// "cutoff", "zero-adjust", ...), and the value it is to take.
struct FieldAssignment {
    QString name;
    QString value;
};

// The assignment into `module` over runs of the channel grid's rows, through
// the grid's own rules as an operator would use them: the list item chosen
// (by its text in either language, or its code), the prompt answered, an
// adjust typed cell by cell, the frequency dialog driven to the frequency.
// The reason when the grid would refuse it. A refused assignment may leave
// `module` half changed: the caller works on a copy.
std::optional<QString> assignField(ModuleRecord& module, const FieldAssignment& assignment, const QList<RowSpan>& runs,
                                   Language language, EditResult& result);

// Each contiguous run of the channels chosen in `mask` (bit n for channel
// n + 1) as one selection of the grid's rows.
QList<RowSpan> runsOfMask(quint32 mask);

}  // namespace velmor
