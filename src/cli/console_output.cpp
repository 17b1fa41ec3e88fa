#include "console_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace velmor::cli {
namespace {

QString& failure()
{
    static QString reason;
    return reason;
}

void keepFailure()
{
    if (failure().isEmpty())
        failure() = QString::fromLocal8Bit(std::strerror(errno));
}

}  // namespace

void printOut(const QByteArray& bytes)
{
    errno = 0;
    if (std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) != static_cast<size_t>(bytes.size())
        || std::fflush(stdout) != 0)
        keepFailure();
}

QString outputFailure()
{
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        keepFailure();
    return failure();
}

}  // namespace velmor::cli
