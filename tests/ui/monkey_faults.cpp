#include "monkey_faults.h"

#include "sim/request_reader.h"
#include "sim/sim_module.h"

#include <QObject>

#include <iterator>

namespace velmor::testing {
namespace {

struct Turn {
    sim::FaultKind kind;
    int param;  // -1: the kind's default
};

// Late twice: once within the 2000 ms wait after a search, once past it.
constexpr Turn kTurns[] = {
    {sim::FaultKind::Noise, -1},    {sim::FaultKind::Checksum, -1}, {sim::FaultKind::Late, 1500},
    {sim::FaultKind::Echo, -1},     {sim::FaultKind::Truncate, -1}, {sim::FaultKind::Split, -1},
    {sim::FaultKind::Silence, -1},  {sim::FaultKind::Tail, -1},     {sim::FaultKind::Late, 2500},
};
constexpr int kTurnCount = static_cast<int>(std::size(kTurns));

}  // namespace

RecurringFaults::RecurringFaults(SimLine& line, int period, int horizon) : line_(line)
{
    const QList<ModuleRecord> modules = line.line().bus().memories();
    for (int m = 0; m < modules.size(); ++m) {
        QHash<int, sim::FaultKind> plan;
        // Each module starts its turns elsewhere, so that a request to every
        // module does not meet the same kind twice.
        for (int k = 1; k * period + m <= horizon; ++k) {
            const Turn& turn = kTurns[(k + 2 * m) % kTurnCount];
            const int at = k * period + m;
            line.addFault(modules[m].busAddress, turn.kind, at, turn.param);
            plan.insert(at, turn.kind);
        }
        planned_.append(plan);
        exchanges_.append(0);
    }
    QObject::connect(&line.line(), &sim::VirtualLine::frameLogged, &line.line(),
                     [this](sim::Direction direction, const QByteArray& frame) {
                         if (direction == sim::Direction::Received)
                             requestTaken(frame);
                     });
}

int RecurringFaults::metTotal() const
{
    int total = 0;
    for (int n : met_)
        total += n;
    return total;
}

void RecurringFaults::requestTaken(const QByteArray& frame)
{
    if (!sim::requestIntact(frame) || !sim::SimModule::understands(frame))
        return;
    // The modules' addresses as they are now: an information write may have
    // moved one.
    const QList<ModuleRecord> modules = line_.line().bus().memories();
    for (int m = 0; m < modules.size() && m < exchanges_.size(); ++m) {
        if (!sim::SimModule(modules[m], 0).addressedBy(frame))
            continue;
        const auto fault = planned_[m].constFind(++exchanges_[m]);
        if (fault != planned_[m].constEnd())
            ++met_[sim::faultKindNames().at(static_cast<int>(*fault))];
    }
}

}  // namespace velmor::testing
