#include "range_from_gain.h"

#include "number_text.h"
#include "parameters.h"

namespace velmor {

QString applyRangeFromGain(ModuleRecord& module, int channel)
{
    ChannelRecord& record = module.channels.at(static_cast<size_t>(channel));
    // Both languages read as the same numbers.
    const double gain = leadingNumber(parameterText(Parameter::Gain, module, channel, Language::English));
    const double excitation = leadingNumber(parameterText(Parameter::Excitation, module, channel, Language::English));
    double range = 0.0;
    if (record.isStrain) {
        // The factor 4 stands for every bridge type; bridgeType does not enter here.
        const double product = gain * excitation * double(record.gaugeCoef);
        range = product > 0.0 ? 4.0 * 10000000.0 / product : product * 4.0;
    } else {
        range = gain * double(record.sensitivity) * excitation / 1000.0;
    }
    record.fullRange = static_cast<float>(range);
    return formatNumber(range, record.isStrain ? kWholePicture : kThousandthsPicture);
}

}  // namespace velmor
