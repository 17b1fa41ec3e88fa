#include "flow_summary.h"

#include "model/fixed_text.h"
#include "texts/desktop.h"

namespace velmor {

QString lineName(const SetupState& state, const PortLines& lines)
{
    const qint16 number = state.table.at(static_cast<size_t>(state.currentModule)).portNumber;
    const PortEntry* port = lines.find(number);
    return port ? port->name : QString::number(number);
}

QString moduleOnLine(const SetupState& state, const PortLines& lines, Language language)
{
    const ModuleRecord& module = state.table.at(static_cast<size_t>(state.currentModule));
    return pick(texts::desktop::kModuleOnLine, language)
        .arg(state.currentModule + 1)
        .arg(trimmedText(module.modelName), lineName(state, lines))
        .arg(module.busAddress);
}

QString flowSummary(const QString& done, int framesSent, qint64 milliseconds, Language language)
{
    return pick(texts::desktop::kFlowSummary, language)
        .arg(done)
        .arg(framesSent)
        .arg(QString::number(static_cast<double>(milliseconds) / 1000.0, 'f', 2));
}

}  // namespace velmor
