#pragma once

#include "serial/published_port.h"
#include "sim/faults.h"
#include "sim/sim_options.h"
#include "sim/traffic_trace.h"
#include "sim/virtual_line.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTime>

namespace velmor::testing {

enum class Pacing {
    Fast,   // replies whole, right after the turnaround
    Paced,  // 4800 baud byte times, as the real line
};

struct LoggedFrame {
    sim::Direction direction;
    QByteArray bytes;
    QTime time;
};

// The folder in which every SimLine of this test process publishes its port,
// set as VELMOR_PORTS_DIR so that the program's port list finds them.
QString simPortsDir();

// A line of simulated modules in this process and thread, on a pseudo-terminal,
// published as a port named `name` in simPortsDir(). The program's serial code
// opens devicePath() (or linkPath(), or finds portName() in its port list);
// the line answers from the test's event loop, so a test must wait with the
// event loop running (QTest::qWait, QTest::qWaitFor, a QEventLoop).
class SimLine {
public:
    explicit SimLine(const QList<sim::ModuleAt>& modules = {sim::ModuleAt{}}, Pacing pacing = Pacing::Fast,
                     const QString& name = QStringLiteral("SIM1"), quint32 seed = 1);
    // Any line settings: turnaround, balance delay, vanish after n exchanges.
    SimLine(const QList<sim::ModuleAt>& modules, const sim::LineSettings& settings,
            const QString& name = QStringLiteral("SIM1"), quint32 seed = 1);
    SimLine(const SimLine&) = delete;
    SimLine& operator=(const SimLine&) = delete;

    // False when the pseudo-terminal or the link could not be made; error() says why.
    bool isReady() const { return ready_; }
    QString error() const { return error_; }

    QString devicePath() const { return line_.devicePath(); }  // /dev/pts/N
    QString portName() const { return name_; }
    QString linkPath() const { return link_.path(); }           // simPortsDir()/NAME

    // The module answering at `address` now; a test asking for a missing
    // address is wrong and stops with a fatal message.
    sim::SimModule& module(int address);
    ModuleRecord& memory(int address) { return module(address).memory(); }
    sim::VirtualLine& line() { return line_; }

    // Faults name a module by the address it started at.
    void addFault(int address, sim::FaultKind kind, int at = 0, int param = -1);
    void clearFaults() { line_.bus().faults().clear(); }

    const QList<LoggedFrame>& frames() const { return frames_; }
    QList<QByteArray> requests() const { return framesOf(sim::Direction::Received); }
    QList<QByteArray> replies() const { return framesOf(sim::Direction::Sent); }
    void clearFrames() { frames_.clear(); }
    // Runs the event loop until `count` replies have gone out since the last
    // clearFrames(), or the time is up.
    bool waitForReplies(int count, int timeoutMs = 3000);

    // The line disappears as an unplugged adapter: both ends close, the link goes.
    void vanish() { line_.vanish(); }

private:
    QList<QByteArray> framesOf(sim::Direction direction) const;

    QString name_;
    sim::VirtualLine line_;
    PublishedPort link_;
    QList<LoggedFrame> frames_;
    bool ready_ = false;
    QString error_;
};

}  // namespace velmor::testing
