#include "link_rig.h"

namespace velmor::testing {

QStringList RecordingDialogs::texts() const
{
    QStringList out;
    for (const auto& message : messages)
        out << message.second;
    return out;
}

QString saidAndExpected(const QStringList& said, const QStringList& expected)
{
    const QString separator = QStringLiteral(" | ");
    return QStringLiteral("said [%1], expected [%2]").arg(said.join(separator), expected.join(separator));
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

}  // namespace velmor::testing
