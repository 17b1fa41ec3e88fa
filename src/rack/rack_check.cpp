#include "rack_check.h"

#include "config/config_image.h"
#include "config/image_layout.h"
#include "model/fixed_text.h"
#include "texts/rack.h"

namespace velmor {

RackModule rackModuleOf(const ConcurrentSearch::Found& found)
{
    return {found.port.name, found.record.busAddress, trimmedText(found.record.modelName), found.record.moduleNumber,
            configImage(found.record).left(kStoredBytes)};
}

const Text& rackStatusText(RackStatus status)
{
    switch (status) {
    case RackStatus::Same: return texts::rack::kSame;
    case RackStatus::Different: return texts::rack::kDifferent;
    case RackStatus::Missing: return texts::rack::kMissing;
    case RackStatus::Foreign: return texts::rack::kForeign;
    case RackStatus::Extra: break;
    }
    return texts::rack::kExtra;
}

ModuleRecord rackRecord(const RackModule& module) { return recordFromImage(module.image); }

QList<CheckedModule> checkRack(const Rack& rack, const QList<RackModule>& live, Language language)
{
    QList<RackModule> unmatched = live;
    QList<CheckedModule> checked;
    for (const RackModule& kept : rack.modules) {
        const auto at = std::find_if(unmatched.begin(), unmatched.end(), [&](const RackModule& m) {
            return m.line == kept.line && m.address == kept.address;
        });
        if (at == unmatched.end()) {
            checked.append({RackStatus::Missing, kept, {}, {}});
            continue;
        }
        const RackModule now = *at;
        unmatched.erase(at);
        if (now.model != kept.model || now.moduleNumber != kept.moduleNumber) {
            checked.append({RackStatus::Foreign, kept, now, {}});
            continue;
        }
        // The automatic-balance marks belong to no setup.
        const QList<CellDifference> cells = sentDifferences(rackRecord(kept), rackRecord(now), -1, language);
        checked.append({cells.isEmpty() ? RackStatus::Same : RackStatus::Different, kept, now, cells});
    }
    for (const RackModule& extra : unmatched)
        checked.append({RackStatus::Extra, {}, extra, {}});
    return checked;
}

}  // namespace velmor
