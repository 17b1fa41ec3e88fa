#pragma once

#include "faults.h"
#include "sim_module.h"

#include <QByteArray>
#include <QList>
#include <QObject>

#include <deque>
#include <optional>

namespace velmor::sim {

// The modules that share one line: which of them a request addresses, what
// each answers (shaped by the fault plan), and the answers of several
// modules collided into what the line carries back.
class ModuleBus : public QObject {
    Q_OBJECT
public:
    explicit ModuleBus(int balanceDelayMs, QObject* parent = nullptr);

    // Modules may share an address: they answer together and collide.
    // Faults name a module by the address it has when it is added here.
    void addModule(const SimModule& module);
    // The first module whose address is `address` now, or null.
    SimModule* moduleAt(int address);
    QList<ModuleRecord> memories() const;
    FaultPlan& faults() { return faults_; }

    // What the line carries back for an intact request that the modules
    // understand; nothing when no module answers.
    std::optional<Outgoing> answer(const QByteArray& frame);

signals:
    // A write or a balance changed a module's memory.
    void memoryChanged();

private:
    struct Entry {
        SimModule module;
        int faultAddress;
        int exchanges = 0;
    };

    int balanceDelayMs_;
    FaultPlan faults_;
    std::deque<Entry> modules_;
};

}  // namespace velmor::sim
