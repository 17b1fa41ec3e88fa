#pragma once

#include "serial/published_port.h"
#include "sim_options.h"
#include "traffic_trace.h"
#include "virtual_line.h"

#include <QObject>
#include <QString>

namespace velmor::sim {

// One running velmor-sim: the modules (from the command line and the state
// file), the line on its pseudo-terminal, the published link, the traffic trace
// and the state kept after every change.
class SimSession : public QObject {
    Q_OBJECT
public:
    explicit SimSession(const SimOptions& options, QObject* parent = nullptr);

    // options.portsDir must be set. False with a message when anything fails.
    bool start(QString* error);
    // "NAME<TAB>/dev/pts/N", what scripts wait for.
    QString readyLine() const;

signals:
    // The line vanished; the link is gone.
    void ended();

private:
    bool loadModules(QString* error);
    void saveModules();

    SimOptions options_;
    VirtualLine line_;
    PublishedPort link_;
    TrafficTrace log_;
};

}  // namespace velmor::sim
