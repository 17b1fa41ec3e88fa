#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmor::testing {

// The real velmor-sim executable in a child process, publishing in a folder
// of its own (portsDir(); pass it to the program under test as
// VELMOR_PORTS_DIR).
class SimProcess {
public:
    SimProcess() = default;
    ~SimProcess();
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;

    static QString executable();

    // Before start(): files the simulator writes may grow to `bytes` at most,
    // as on a disk that is full beyond that (writes past it fail with EFBIG).
    void limitFileSize(qint64 bytes);

    // Before start(): publish in `dir` instead of a folder of its own, so that
    // several simulators share one port list.
    void usePortsDir(const QString& dir) { sharedDir_ = dir; }

    // Starts velmor-sim with --ports-dir portsDir() and `arguments`, and waits
    // for its ready line "NAME<TAB>DEVICE". False with error() otherwise.
    bool start(const QStringList& arguments, int timeoutMs = 10000);
    // SIGTERM (stop) or SIGINT (interrupt), then waits for the end; true when
    // it ended cleanly with code 0.
    bool stop(int timeoutMs = 5000);
    bool interrupt(int timeoutMs = 5000);

    QString portName() const { return portName_; }
    QString devicePath() const { return devicePath_; }
    QString portsDir() const { return sharedDir_.isEmpty() ? dir_.path() : sharedDir_; }
    QString linkPath() const { return portsDir() + QLatin1Char('/') + portName_; }
    QString error() const { return error_; }
    QProcess& process() { return process_; }

private:
    bool waitForCleanEnd(int timeoutMs);

    QTemporaryDir dir_;
    QString sharedDir_;
    QProcess process_;
    QString portName_;
    QString devicePath_;
    QString error_;
};

}  // namespace velmor::testing
