#pragma once

#include "module_table.h"
#include "texts/language.h"

#include <QStringList>

namespace velmor {

// The ten capabilities that the module-information panel shows as lists
// (the version is a plain number and has no list).
enum class Capability {
    Model,
    Excitation,
    Balance,
    AcCoupling,
    Gain,
    Filter,
    Hold,
    Zero,
    Adjust,
    Integral,
};

inline constexpr Capability kListedCapabilities[] = {
    Capability::Model, Capability::Excitation, Capability::Balance, Capability::AcCoupling,
    Capability::Gain,  Capability::Filter,     Capability::Hold,    Capability::Zero,
    Capability::Adjust, Capability::Integral,
};

// The record's code for a capability.
quint8 capabilityCode(const ModuleRecord& module, Capability capability);
void setCapabilityCode(ModuleRecord& module, Capability capability, quint8 code);

// The code of the list's last item, "未知" / "Unknown"; every code from here up
// shows that item.
int unknownCode(Capability capability);

// The list's items in code order, the unknown item last.
QStringList optionList(Capability capability, Language language);

// The item a list selects for a code: the code's own item below the unknown
// code, the unknown item otherwise.
int shownIndex(Capability capability, int code);

// The text of the item the list selects for the module's code.
QString capabilityText(const ModuleRecord& module, Capability capability, Language language);

}  // namespace velmor
