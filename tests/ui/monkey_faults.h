#pragma once

#include "support/sim_line.h"

#include <QHash>
#include <QList>
#include <QMap>

namespace velmor::testing {

// Faults that keep coming through a long run on one simulated line: every
// `period`-th exchange of each of its modules meets a fault, the kinds taking
// turns, up to `horizon` exchanges of that module. Dropoff is left out: it
// would silence a module for the rest of the run. The faults met are counted
// as the line takes its requests, by the same rule the line counts a module's
// exchanges (an intact request it understands, addressed to it or to all).
class RecurringFaults {
public:
    // `line` holds its modules in the order it was given them; every one of
    // them takes faults.
    RecurringFaults(SimLine& line, int period, int horizon);

    // By the kind's name as velmor-sim spells it.
    const QMap<QString, int>& met() const { return met_; }
    int metTotal() const;

private:
    void requestTaken(const QByteArray& frame);

    SimLine& line_;
    // Per module in the line's order: the exchange number a fault waits for,
    // and its kind.
    QList<QHash<int, sim::FaultKind>> planned_;
    QList<int> exchanges_;
    QMap<QString, int> met_;
};

}  // namespace velmor::testing
