#include "module_bus.h"

#include <QTimer>

namespace velmor::sim {

ModuleBus::ModuleBus(int balanceDelayMs, QObject* parent)
    : QObject(parent)
    , balanceDelayMs_(balanceDelayMs)
{
}

void ModuleBus::addModule(const SimModule& module)
{
    modules_.push_back({module, module.address()});
}

SimModule* ModuleBus::moduleAt(int address)
{
    for (Entry& e : modules_)
        if (e.module.address() == address)
            return &e.module;
    return nullptr;
}

QList<ModuleRecord> ModuleBus::memories() const
{
    QList<ModuleRecord> records;
    for (const Entry& e : modules_)
        records.append(e.module.memory());
    return records;
}

std::optional<Outgoing> ModuleBus::answer(const QByteArray& frame)
{
    QList<Outgoing> replies;
    bool changed = false;
    for (size_t index = 0; index < modules_.size(); ++index) {
        Entry& e = modules_[index];
        if (!e.module.addressedBy(frame))
            continue;
        const int exchange = ++e.exchanges;
        if (faults_.silent(e.faultAddress, exchange))
            continue;
        const Answer a = e.module.answer(frame);
        changed = changed || a.memoryChanged;
        if (a.balanceMask) {
            const quint16 mask = *a.balanceMask;
            QTimer::singleShot(balanceDelayMs_, this, [this, index, mask] {
                modules_[index].module.finishBalance(mask);
                emit memoryChanged();
            });
        }
        replies.append(faults_.shape(e.faultAddress, exchange, a.reply));
    }
    if (changed)
        emit memoryChanged();
    if (replies.isEmpty())
        return std::nullopt;
    return collide(replies);
}

}  // namespace velmor::sim
