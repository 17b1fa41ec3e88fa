#pragma once

#include "module_table.h"
#include "texts/language.h"

#include <QString>

namespace velmor {

// The channel parameters that the channel grid shows as text, each governed by
// one capability code of the module.
enum class Parameter {
    Excitation,  // excitationType
    Balance,     // balanceType
    Coupling,    // acCouplingType
    Gain,        // gainType
    Cutoff,      // filterType
    Hold,        // holdType
    Integral,    // integralType
    ZeroAdjust,  // zeroType
    GainAdjust,  // adjustType
};

// The text of one parameter of channel index `channel` (0..16): "无程序设置" /
// "No Setup" when the module lacks the capability, "未知" / "Unknown" for a
// capability code or channel value the parameter does not know, the value's
// text otherwise.
QString parameterText(Parameter parameter, const ModuleRecord& module, int channel, Language language);

}  // namespace velmor
