#include "small_disk.h"

#include <QFile>
#include <QProcess>
#include <QStorageInfo>

namespace velmor::testing {
namespace {

bool run(const QString& program, const QStringList& arguments, QString* said)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool ok = process.waitForFinished(10000) && process.exitStatus() == QProcess::NormalExit
                 && process.exitCode() == 0;
    if (said)
        *said = QString::fromLocal8Bit(process.readAll()).trimmed();
    return ok;
}

}  // namespace

SmallDisk::SmallDisk(qint64 bytes, bool readOnly) : bytes_(bytes), limit_(bytes), readOnly_(readOnly)
{
    if (!dir_.isValid())
        return;
    QString options = QStringLiteral("size=%1").arg(bytes);
    if (readOnly)
        options += QStringLiteral(",ro");
    QString said;
    mounted_ = run(QStringLiteral("mount"), {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"), options,
                                             QStringLiteral("velmor-test"), dir_.path()},
                   &said);
    how_ = mounted_ ? QStringLiteral("a tmpfs of %1 bytes").arg(bytes)
                    : QStringLiteral("no tmpfs (mount said: %1); RLIMIT_FSIZE of %2 bytes instead").arg(said).arg(bytes);
}

SmallDisk::~SmallDisk()
{
    if (mounted_)
        run(QStringLiteral("umount"), {QStringLiteral("-l"), dir_.path()}, nullptr);
}

QStringList SmallDisk::wrap(const QString& program, const QStringList& arguments) const
{
    if (mounted_)
        return QStringList{program} + arguments;
    // ulimit -f counts 512-byte blocks; SIGXFSZ ignored, a write past it fails.
    const QString script = QStringLiteral("trap '' XFSZ; ulimit -f %1; exec \"$@\"").arg(std::max<qint64>(1, limit_ / 512));
    return QStringList{QStringLiteral("/bin/sh"), QStringLiteral("-c"), script, QStringLiteral("sh"), program} + arguments;
}

void SmallDisk::fill(qint64 leave)
{
    if (!mounted_) {
        limit_ = leave;
        return;
    }
    QFile filler(dir_.filePath(QStringLiteral("filler")));
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    const QByteArray block(512, 'x');
    while (QStorageInfo(dir_.path()).bytesAvailable() > leave)
        if (filler.write(block) != block.size())
            break;
}

}  // namespace velmor::testing
