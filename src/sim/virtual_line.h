#pragma once

#include "faults.h"
#include "frame_log.h"
#include "line_format.h"
#include "pacing.h"
#include "request_reader.h"
#include "sim_module.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <deque>
#include <optional>

namespace velmor::sim {

struct LineSettings {
    bool fast = false;          // no pacing: a reply goes out whole after the turnaround
    int turnaroundMs = 5;       // from the end of a request to the first byte of its reply
    int balanceDelayMs = 1000;  // from a balance request to its new balance values
    int vanishAfter = 0;        // the line disappears after this many exchanges; 0 never
};

// A line of simulated modules on a pseudo-terminal. The program opens the
// slave side (devicePath) as its serial port; the line reads requests from
// the master side and answers as the modules on a shared line would. The line
// keeps its own descriptor of the slave open, so that the program may close
// and reopen its port between exchanges without the master seeing a hang-up.
class VirtualLine : public QObject {
    Q_OBJECT
public:
    explicit VirtualLine(const LineSettings& settings, QObject* parent = nullptr);
    ~VirtualLine() override;

    // Creates the pseudo-terminal; false with a message when the system refuses.
    bool open(QString* error);
    bool isOpen() const { return master_ >= 0; }
    QString devicePath() const { return devicePath_; }
    // The settings the program on the line (or a serial server in front of
    // it) has set on the pseudo-terminal; empty while the line is closed.
    std::optional<LineFormat> lineFormat() const;

    // Modules may share an address: they answer together and collide.
    // Faults name a module by the address it has when it is added here.
    void addModule(const SimModule& module);
    // The first module whose address is `address` now, or null.
    SimModule* moduleAt(int address);
    QList<ModuleRecord> memories() const;

    FaultPlan& faults() { return faults_; }

    // Closes both ends now: the program's open port sees the far end disappear.
    void vanish();

signals:
    void frameLogged(velmor::sim::Direction direction, const QByteArray& frame);
    // A write or a balance changed a module's memory.
    void memoryChanged();
    void vanished();

private:
    struct Entry {
        SimModule module;
        int faultAddress;
        int exchanges = 0;
    };

    void readRequests();
    void answer(const ReceivedRequest& request);
    void writeBytes(const QByteArray& bytes);
    void closeEnds();

    LineSettings settings_;
    QElapsedTimer clock_;
    Pacer pacer_;
    RequestReader reader_;
    FaultPlan faults_;
    std::deque<Entry> modules_;
    int exchanges_ = 0;
    bool vanishDue_ = false;
    int master_ = -1;
    int slave_ = -1;
    QSocketNotifier* notifier_ = nullptr;
    QString devicePath_;
};

}  // namespace velmor::sim
