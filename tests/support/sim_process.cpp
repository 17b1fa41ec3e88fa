#include "sim_process.h"

#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace velmor::testing {

SimProcess::~SimProcess()
{
    if (process_.state() != QProcess::NotRunning)
        stop();
}

QString SimProcess::executable() { return QStringLiteral(VELMOR_SIM_EXECUTABLE); }

void SimProcess::limitFileSize(qint64 bytes)
{
    process_.setChildProcessModifier([bytes] {
        // Runs in the child between fork and exec: only async-signal-safe calls.
        // Without SIGXFSZ ignored, the first write past the limit would kill it.
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    });
}

bool SimProcess::start(const QStringList& arguments, int timeoutMs)
{
    process_.start(executable(), QStringList{QStringLiteral("--ports-dir"), portsDir()} + arguments);
    if (!process_.waitForStarted(timeoutMs)) {
        error_ = process_.errorString();
        return false;
    }
    const bool ready = QTest::qWaitFor(
        [&] { return process_.canReadLine() || process_.state() == QProcess::NotRunning; }, timeoutMs);
    const QString line = QString::fromLocal8Bit(process_.readLine()).trimmed();
    const QStringList fields = line.split(QLatin1Char('\t'));
    if (!ready || fields.size() != 2) {
        error_ = QStringLiteral("no ready line; stderr: %1").arg(QString::fromLocal8Bit(process_.readAllStandardError()));
        return false;
    }
    portName_ = fields[0];
    devicePath_ = fields[1];
    return true;
}

bool SimProcess::stop(int timeoutMs)
{
    if (process_.state() != QProcess::NotRunning)
        process_.terminate();
    return waitForCleanEnd(timeoutMs);
}

bool SimProcess::interrupt(int timeoutMs)
{
    if (process_.state() != QProcess::NotRunning)
        ::kill(static_cast<pid_t>(process_.processId()), SIGINT);
    return waitForCleanEnd(timeoutMs);
}

bool SimProcess::waitForCleanEnd(int timeoutMs)
{
    if (!QTest::qWaitFor([&] { return process_.state() == QProcess::NotRunning; }, timeoutMs)) {
        process_.kill();
        process_.waitForFinished(timeoutMs);
        return false;
    }
    return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

}  // namespace velmor::testing
