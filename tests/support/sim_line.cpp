#include "sim_line.h"

#include "sim/sim_values.h"

#include <QTemporaryDir>
#include <QTest>

namespace velmor::testing {
namespace {

sim::LineSettings settingsFor(Pacing pacing)
{
    sim::LineSettings settings;
    settings.fast = pacing == Pacing::Fast;
    return settings;
}

}  // namespace

QString simPortsDir()
{
    static const QTemporaryDir dir;
    qputenv("VELMOR_PORTS_DIR", dir.path().toLocal8Bit());
    return dir.path();
}

SimLine::SimLine(const QList<sim::ModuleAt>& modules, Pacing pacing, const QString& name, quint32 seed)
    : SimLine(modules, settingsFor(pacing), name, seed)
{
}

SimLine::SimLine(const QList<sim::ModuleAt>& modules, const sim::LineSettings& settings, const QString& name,
                 quint32 seed)
    : name_(name)
    , line_(settings)
{
    for (const sim::ModuleAt& wanted : modules)
        line_.bus().addModule(sim::SimModule(sim::simulatedModule(wanted.address, wanted.modelCode, seed), seed));
    QObject::connect(&line_, &sim::VirtualLine::frameLogged, &line_,
                     [this](sim::Direction direction, const QByteArray& frame) {
                         frames_.append({direction, frame, QTime::currentTime()});
                     });
    QObject::connect(&line_, &sim::VirtualLine::vanished, &line_, [this] { link_.remove(); });
    ready_ = line_.open(&error_) && link_.publish(simPortsDir(), name_, line_.devicePath(), &error_);
}

sim::SimModule& SimLine::module(int address)
{
    sim::SimModule* found = line_.bus().moduleAt(address);
    if (!found)
        qFatal("SimLine: no module at address %d", address);
    return *found;
}

void SimLine::addFault(int address, sim::FaultKind kind, int at, int param)
{
    line_.bus().faults().add({address, kind, at, param});
}

bool SimLine::waitForReplies(int count, int timeoutMs)
{
    return QTest::qWaitFor([&] { return replies().size() >= count; }, timeoutMs);
}

QList<QByteArray> SimLine::framesOf(sim::Direction direction) const
{
    QList<QByteArray> found;
    for (const LoggedFrame& f : frames_)
        if (f.direction == direction)
            found.append(f.bytes);
    return found;
}

}  // namespace velmor::testing
