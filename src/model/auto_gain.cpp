#include "auto_gain.h"

#include "gain_steps.h"
#include "number_text.h"
#include "parameters.h"

#include <cmath>
#include <span>

namespace velmor {

namespace {

// A module without a known gain list is treated as having the single step 1.
constexpr int kSingleStep[] = {1};

double fullScale(const ChannelRecord& channel, double excitation, int step)
{
    if (!channel.isStrain)
        return step * double(channel.sensitivity) * excitation / 1000.0;
    double value = excitation * step * double(channel.gaugeCoef);
    if (value > 0.0)
        value = 10000000.0 / value;
    return std::ldexp(value, channel.bridgeType);
}

}  // namespace

void chooseGain(ModuleRecord& module, int channel)
{
    ChannelRecord& record = module.channels.at(static_cast<size_t>(channel));
    std::span<const int> steps = gainSteps(module.gainType);
    if (steps.empty())
        steps = kSingleStep;
    // Both languages read as the same number ("断开" and "Open" both give 0).
    const double excitation = leadingNumber(parameterText(Parameter::Excitation, module, channel, Language::English));
    for (int position = static_cast<int>(steps.size()) - 1; position >= 0; --position) {
        if (fullScale(record, excitation, steps[static_cast<size_t>(position)]) >= double(record.fullRange)) {
            record.gain = static_cast<qint16>(position);
            return;
        }
    }
    record.gain = 0;
}

}  // namespace velmor
