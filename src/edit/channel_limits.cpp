// The bounds the channel rules share: the balance cap, the rows the grid has,
// and what counts as a number.
#include "channel_rules.h"

#include "model/limits.h"
#include "model/models.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

int balanceCap(const ModuleRecord& module)
{
    if (module.version > kNarrowFirmwareHighest)
        return module.modelCode == kTmC8 ? kBalanceHighestNewTmC8 : kBalanceHighestNew;
    return kBalanceHighestOld;
}

RowSpan gridRows(const ModuleRecord& module, RowSpan rows)
{
    if (rows.first > rows.last)
        std::swap(rows.first, rows.last);
    // A channel count from a module or a file may be anything; only wired rows exist.
    const int lastRow = std::clamp<int>(module.channelCount, 0, kWiredChannels);
    return {std::max(rows.first, 1), std::min(rows.last, lastRow)};
}

std::optional<double> wholeTextNumber(const QString& text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

}  // namespace velmor
