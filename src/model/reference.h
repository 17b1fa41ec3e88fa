#pragma once

#include "module_table.h"
#include "texts/language.h"

#include <QString>

namespace velmor {

// The six reference columns, in grid order from column 11.
enum class ReferenceColumn { Bridge, Coef, Sensitivity, Range, Unit, Type };

inline constexpr int kFirstReferenceColumn = 11;
inline constexpr ReferenceColumn kReferenceColumns[] = {
    ReferenceColumn::Bridge, ReferenceColumn::Coef, ReferenceColumn::Sensitivity,
    ReferenceColumn::Range,  ReferenceColumn::Unit, ReferenceColumn::Type,
};

// Only "TM-B8" (3) and "TM-B16" (4) show the reference columns.
bool hasReferenceColumns(int modelCode);

// The title of the frame around the channel grid.
QString channelFrameTitle(int modelCode, Language language);

QString referenceHeader(ReferenceColumn column, Language language);

// A cell's text; reads the channel only. Coefficient and sensitivity are
// empty for the other object type, and the unit follows `isStrain`, not `unitText`.
QString referenceCell(ReferenceColumn column, const ChannelRecord& channel, Language language);

// Sets the object type together with the unit it implies ("με" or "V").
void setStrain(ChannelRecord& channel, bool strain);

}  // namespace velmor
