#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>

namespace velmor::sim {

// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal, so that the event loop ends
// normally and the published link is removed: the handler only writes a byte
// into a pipe that a socket notifier watches. One per process.
class StopSignals : public QObject {
    Q_OBJECT
public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

    bool install(QString* error);

signals:
    void received();

private:
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace velmor::sim
