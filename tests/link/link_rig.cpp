#include "link_rig.h"

namespace velmor::testing {

QStringList RecordingDialogs::texts() const
{
    QStringList out;
    for (const auto& message : messages)
        out << message.second;
    return out;
}

LinkRig::LinkRig()
{
    state.reset();
    state.languageMode = 2;
}

void LinkRig::select(const SimLine& line, int address)
{
    port.setPorts(listPorts({}, simPortsDir()));
    state.current().portNumber = static_cast<qint16>(portNumberOf(line));
    state.current().busAddress = static_cast<qint16>(address);
}

int LinkRig::portNumberOf(const SimLine& line) const
{
    for (const PortEntry& entry : port.ports())
        if (entry.name == line.portName())
            return entry.number;
    return 0;
}

bool sameChannelParameters(const ChannelRecord& a, const ChannelRecord& b)
{
    return a.excitation == b.excitation && a.balanceValue == b.balanceValue && a.coupling == b.coupling
        && a.integral == b.integral && a.gain == b.gain && a.cutoff == b.cutoff && a.holdExponent == b.holdExponent
        && a.zeroAdjust == b.zeroAdjust && a.gainAdjust == b.gainAdjust && a.channelFlags == b.channelFlags;
}

bool sameAdjustAndCoefficients(const ChannelRecord& a, const ChannelRecord& b, bool wide)
{
    for (size_t i = 0; i < 4; ++i) {
        if (a.zeroAdjustTable[i] != b.zeroAdjustTable[i] || a.gainAdjustTable[i] != b.gainAdjustTable[i])
            return false;
        if (!wide && a.zeroCoef[i] != b.zeroCoef[i])
            return false;
    }
    for (size_t i = 0; i < (wide ? 11u : 4u); ++i)
        if (a.gainCoef[i] != b.gainCoef[i])
            return false;
    return true;
}

bool sameModuleInformation(const ModuleRecord& a, const ModuleRecord& b)
{
    for (const auto field : kCapabilityFields)
        if (a.*field != b.*field)
            return false;
    return a.moduleNumber == b.moduleNumber && a.busAddress == b.busAddress && a.modelName == b.modelName
        && a.channelCount == b.channelCount
        && std::equal(a.infoTail.begin(), a.infoTail.begin() + 34, b.infoTail.begin());
}

}  // namespace velmor::testing
