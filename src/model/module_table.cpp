#include "module_table.h"

namespace velmor {

ChannelRecord defaultChannel(int channelIndex)
{
    ChannelRecord c;
    c.channelNumber = static_cast<qint16>(channelIndex);
    c.coupling = 1;
    c.cutoff = 100;
    c.bridgeType = 0;
    c.referenceInt = 120;
    c.sensitivity = 2.0f;
    c.gaugeCoef = 2.0f;
    c.fullRange = 500000.0f;
    c.isStrain = true;
    c.unitText = fixedText(u"\u03BC\u03B5");   // "με"
    return c;
}

ModuleRecord defaultModule()
{
    ModuleRecord m;
    m.modelName = fixedText(u"TM-C16");
    m.channelCount = 16;
    m.modelCode = 2;
    m.version = 0;
    m.excitationType = 1;
    m.balanceType = 0;
    m.acCouplingType = 1;
    m.gainType = 2;
    m.filterType = 1;
    m.holdType = 1;
    m.zeroType = 0;
    m.adjustType = 0;
    m.integralType = 0;
    for (int c = 0; c < kWiredChannels; ++c)
        m.channels[static_cast<size_t>(c)] = defaultChannel(c);
    return m;
}

void SetupState::reset()
{
    table.fill(defaultModule());
    currentModule = 0;
    moduleCount = 0;
    searching = false;
    channelMask.fill(-1);
}

}  // namespace velmor
