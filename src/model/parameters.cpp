#include "parameters.h"

#include "gain_steps.h"
#include "number_text.h"
#include "texts/option.h"
#include "texts/parameter.h"

#include <iterator>
#include <optional>
#include <span>

namespace velmor {

namespace {

using namespace texts::parameter;

constexpr Text kExcitationType1[] = {kExcitationOpen, texts::option::kExcitationCurrent};
constexpr Text kExcitationType2[] = {kExcitation10V, kExcitation5V, kExcitation2V5, kExcitation1V25};
constexpr Text kExcitationType3[] = {kExcitation4mA, kExcitation100uA, kExcitation10V, kExcitation5V,
                                     kExcitation2V5,  kExcitation1V25,  kExcitationOpenAll};
constexpr Text kCouplings[] = {kDcCoupling, kAcCoupling};
constexpr Text kCutoffSteps[] = {kCutoffBypass, kCutoff10Hz, kCutoff1KHz};
constexpr Text kIntegrals[] = {texts::option::kNo, kIntegralOne, kIntegralTwo};

// Continuous cut-off: the text is dividend / code. The 50 k scale starts at
// code 2 on purpose, the others at 10.
struct ContinuousCutoff {
    int filterType;
    double dividend;
    int lowestCode;
};

constexpr ContinuousCutoff kContinuousCutoffs[] = {
    {1, 100000.0, 10},
    {3, 100000.0, 2},
    {4, 150000.0, 10},
};
constexpr int kHighestCutoffCode = 65535;

// A power of two beyond 2^63 has no plain whole-number text.
constexpr int kHighestHoldExponent = 63;

constexpr quint8 ModuleRecord::*kGoverningCode[] = {
    &ModuleRecord::excitationType, &ModuleRecord::balanceType, &ModuleRecord::acCouplingType,
    &ModuleRecord::gainType,       &ModuleRecord::filterType,  &ModuleRecord::holdType,
    &ModuleRecord::integralType,   &ModuleRecord::zeroType,    &ModuleRecord::adjustType,
};
static_assert(std::size(kGoverningCode) == static_cast<size_t>(Parameter::GainAdjust) + 1);

using MaybeText = std::optional<QString>;

MaybeText item(std::span<const Text> items, int code, Language language)
{
    if (code < 0 || code >= static_cast<int>(items.size()))
        return std::nullopt;
    return pick(items[static_cast<size_t>(code)], language);
}

MaybeText excitationText(int excitationType, int code, Language language)
{
    switch (excitationType) {
    case 1: return item(kExcitationType1, code, language);
    case 2: return item(kExcitationType2, code, language);
    case 3: return item(kExcitationType3, code, language);
    default: return std::nullopt;
    }
}

MaybeText gainText(int gainType, int position)
{
    const std::span<const int> steps = gainSteps(gainType);
    if (position < 0 || position >= static_cast<int>(steps.size()))
        return std::nullopt;
    return QString::number(steps[static_cast<size_t>(position)]);
}

MaybeText cutoffText(int filterType, qint32 code, Language language)
{
    if (filterType == 2)
        return item(kCutoffSteps, code, language);
    for (const ContinuousCutoff& scale : kContinuousCutoffs) {
        if (scale.filterType != filterType)
            continue;
        if (code < scale.lowestCode || code > kHighestCutoffCode)
            return std::nullopt;
        return formatNumber(scale.dividend / code, kCutoffPicture);
    }
    return std::nullopt;
}

MaybeText holdText(int exponent)
{
    if (exponent > kHighestHoldExponent)
        return std::nullopt;
    return QString::number(quint64{1} << exponent);
}

// Everything but a capability code of 0, which parameterText settles first.
MaybeText knownText(Parameter parameter, int capabilityCode, const ChannelRecord& channel, Language language)
{
    const bool present = capabilityCode == 1;
    switch (parameter) {
    case Parameter::Excitation:
        return excitationText(capabilityCode, channel.excitation, language);
    case Parameter::Balance:
        return present ? MaybeText(QString::number(channel.balanceValue)) : std::nullopt;
    case Parameter::Coupling:
        return present ? item(kCouplings, channel.coupling, language) : std::nullopt;
    case Parameter::Gain:
        return gainText(capabilityCode, channel.gain);
    case Parameter::Cutoff:
        return cutoffText(capabilityCode, channel.cutoff, language);
    case Parameter::Hold:
        return present ? holdText(channel.holdExponent) : std::nullopt;
    case Parameter::Integral:
        return present ? item(kIntegrals, channel.integral, language) : std::nullopt;
    case Parameter::ZeroAdjust:
        return present ? MaybeText(QString::number(channel.zeroAdjust)) : std::nullopt;
    case Parameter::GainAdjust:
        // 8-bit converters (adjustType 3) read "Unknown" like an unknown code, as intended.
        return capabilityCode == 1 || capabilityCode == 2 ? MaybeText(QString::number(channel.gainAdjust))
                                                          : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

QString parameterText(Parameter parameter, const ModuleRecord& module, int channel, Language language)
{
    const int capabilityCode = module.*kGoverningCode[static_cast<size_t>(parameter)];
    if (capabilityCode == 0)
        return pick(parameter == Parameter::Balance ? kBalanceNoSetup : kNoSetup, language);
    const MaybeText text = knownText(parameter, capabilityCode, module.channels.at(static_cast<size_t>(channel)), language);
    return text ? *text : pick(texts::option::kUnknown, language);
}

}  // namespace velmor
