#include "line_lock.h"

#include "network_port.h"
#include "user_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimer>


namespace velmor {
namespace {

// How often a waiting program looks whether the line is free.
constexpr int kLookAgainMs = 50;

// The file of a line: its real device, or a network line's address, spelt
// as a file name.
QString lockName(const QString& device)
{
    const QString real = isNetworkPort(device) ? device : QFileInfo(device).canonicalFilePath();
    QString name = real.isEmpty() ? device : real;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9.-]")), QStringLiteral("_"));
    return name + QStringLiteral(".lock");
}

// Beside the lock, what its holder does: "pid activity".
QString activityPath(const QString& lockPath) { return lockPath + QStringLiteral(".what"); }

}  // namespace

QString LineLock::folder() { return userRuntimeFolder(QStringLiteral("velmor-lines")); }

LineLock::LineLock(const QString& device) : path_(folder() + QLatin1Char('/') + lockName(device)) {}

LineLock::~LineLock()
{
    if (lock_ && lock_->isLocked()) {
        QFile::remove(activityPath(path_));
        lock_->unlock();
    }
}

bool LineLock::take(LineActivity activity, int waitMs)
{
    if (tryTake(activity))
        return true;
    // Waiting runs the event loop: a window keeps painting meanwhile.
    QEventLoop loop;
    QTimer look;
    QTimer giveUp;
    giveUp.setSingleShot(true);
    bool taken = false;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if ((taken = tryTake(activity)))
            loop.quit();
    });
    QObject::connect(&giveUp, &QTimer::timeout, &loop, &QEventLoop::quit);
    look.start(kLookAgainMs);
    giveUp.start(waitMs);
    loop.exec();
    if (!taken)
        readHolder();
    return taken;
}

bool LineLock::tryTake(LineActivity activity)
{
    QDir().mkpath(folder());
    lock_ = std::make_unique<QLockFile>(path_);
    // Never stale by age: a long search holds its line for many seconds. A
    // lock whose program has ended is stale all the same.
    lock_->setStaleLockTime(0);
    if (!lock_->tryLock(0))
        return false;
    QFile what(activityPath(path_));
    if (what.open(QIODevice::WriteOnly | QIODevice::Truncate))
        what.write(QByteArray::number(QCoreApplication::applicationPid()) + ' '
                   + QByteArray::number(static_cast<int>(activity)));
    return true;
}

void LineLock::readHolder()
{
    holder_ = {};
    QString host;
    if (!lock_ || !lock_->getLockInfo(&holder_.pid, &host, &holder_.program))
        return;
    QFile what(activityPath(path_));
    if (!what.open(QIODevice::ReadOnly))
        return;
    const QList<QByteArray> fields = what.readAll().split(' ');
    if (fields.size() == 2 && fields[0].toLongLong() == holder_.pid)
        holder_.activity = static_cast<LineActivity>(fields[1].toInt());
}

}  // namespace velmor
