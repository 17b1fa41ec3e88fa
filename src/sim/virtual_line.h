#pragma once

#include "module_bus.h"
#include "pacing.h"
#include "pseudo_terminal.h"
#include "request_reader.h"
#include "traffic_trace.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <optional>

namespace velmor::sim {

struct LineSettings {
    bool fast = false;          // no pacing: a reply goes out whole after the turnaround
    int turnaroundMs = 5;       // from the end of a request to the first byte of its reply
    int balanceDelayMs = 1000;  // from a balance request to its new balance values
    int vanishAfter = 0;        // the line disappears after this many exchanges; 0 never
};

// A line of simulated modules: the program opens the pseudo-terminal's slave
// side (devicePath) as its serial port; the line reads requests from the
// master side, hands each whole one to the modules on the bus, and paces
// their answer back at the line's speed.
class VirtualLine : public QObject {
    Q_OBJECT
public:
    explicit VirtualLine(const LineSettings& settings, QObject* parent = nullptr);

    // Creates the pseudo-terminal; false with a message when the system refuses.
    bool open(QString* error) { return terminal_.open(error); }
    bool isOpen() const { return terminal_.isOpen(); }
    QString devicePath() const { return terminal_.devicePath(); }
    // The settings the program on the line (or a serial server in front of
    // it) has set on the pseudo-terminal; empty while the line is closed.
    std::optional<LineFormat> lineFormat() const { return terminal_.lineFormat(); }

    ModuleBus& bus() { return bus_; }
    const ModuleBus& bus() const { return bus_; }

    // Closes both ends now: the program's open port sees the far end disappear.
    void vanish();

signals:
    void frameLogged(velmor::sim::Direction direction, const QByteArray& frame);
    // A write or a balance changed a module's memory.
    void memoryChanged();
    void vanished();

private:
    void readRequests();
    void answer(const ReceivedRequest& request);

    LineSettings settings_;
    QElapsedTimer clock_;
    PseudoTerminal terminal_;
    ModuleBus bus_;
    Pacer pacer_;
    RequestReader reader_;
    int exchanges_ = 0;
    bool vanishDue_ = false;
};

}  // namespace velmor::sim
