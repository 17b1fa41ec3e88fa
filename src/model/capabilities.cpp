#include "capabilities.h"

#include "gain_steps.h"
#include "models.h"
#include "texts/option.h"

#include <iterator>
#include <span>

namespace velmor {

namespace {

using namespace texts::option;

constexpr Text kExcitationItems[] = {kNo, kExcitationCurrent, kExcitationVoltages, kExcitationAll};
constexpr Text kPresenceItems[] = {kNo, kYes};
constexpr Text kFilterItems[] = {kNo, kFilterContinuous, kFilterSteps, kFilter50k, kFilter30k};
constexpr Text kAdjustItems[] = {kNo, kAdjust10Bit, kAdjust12Bit, kAdjust8Bit};

// Model names and gain steps are read from their own tables; `items` serves the rest.
struct CapabilityRow {
    Capability capability;
    quint8 ModuleRecord::*field;
    std::span<const Text> items;
};

constexpr CapabilityRow kRows[] = {
    {Capability::Model,      &ModuleRecord::modelCode,      {}},
    {Capability::Excitation, &ModuleRecord::excitationType, kExcitationItems},
    {Capability::Balance,    &ModuleRecord::balanceType,    kPresenceItems},
    {Capability::AcCoupling, &ModuleRecord::acCouplingType, kPresenceItems},
    {Capability::Gain,       &ModuleRecord::gainType,       {}},
    {Capability::Filter,     &ModuleRecord::filterType,     kFilterItems},
    {Capability::Hold,       &ModuleRecord::holdType,       kPresenceItems},
    {Capability::Zero,       &ModuleRecord::zeroType,       kPresenceItems},
    {Capability::Adjust,     &ModuleRecord::adjustType,     kAdjustItems},
    {Capability::Integral,   &ModuleRecord::integralType,   kPresenceItems},
};

constexpr bool rowsInEnumOrder()
{
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (static_cast<size_t>(kRows[i].capability) != i)
            return false;
    }
    return true;
}
static_assert(rowsInEnumOrder());

const CapabilityRow& rowOf(Capability capability)
{
    return kRows[static_cast<size_t>(capability)];
}

QStringList knownItems(Capability capability, Language language)
{
    QStringList items;
    switch (capability) {
    case Capability::Model:
        for (const ModelInfo& model : kModels)
            items << QString::fromUtf16(model.name);
        break;
    case Capability::Gain:
        items << pick(kNo, language);
        for (int gainType = 1; gainType < kGainTypeCount; ++gainType)
            items << gainStepsText(gainType);
        break;
    default:
        for (const Text& item : rowOf(capability).items)
            items << pick(item, language);
        break;
    }
    return items;
}

}  // namespace

quint8 capabilityCode(const ModuleRecord& module, Capability capability)
{
    return module.*rowOf(capability).field;
}

void setCapabilityCode(ModuleRecord& module, Capability capability, quint8 code)
{
    module.*rowOf(capability).field = code;
}

int unknownCode(Capability capability)
{
    switch (capability) {
    case Capability::Model:
        return kModelCount;
    case Capability::Gain:
        return kGainTypeCount;
    default:
        return static_cast<int>(rowOf(capability).items.size());
    }
}

QStringList optionList(Capability capability, Language language)
{
    QStringList items = knownItems(capability, language);
    items << pick(kUnknown, language);
    return items;
}

int shownIndex(Capability capability, int code)
{
    const int unknown = unknownCode(capability);
    return code >= 0 && code < unknown ? code : unknown;
}

QString capabilityText(const ModuleRecord& module, Capability capability, Language language)
{
    return optionList(capability, language).at(shownIndex(capability, capabilityCode(module, capability)));
}

}  // namespace velmor
