#include "line_format.h"

#include <termios.h>

#include <array>
#include <utility>

namespace velmor::sim {
namespace {

constexpr std::array<std::pair<speed_t, int>, 12> kRates{{
    {B300, 300},
    {B600, 600},
    {B1200, 1200},
    {B2400, 2400},
    {B4800, 4800},
    {B9600, 9600},
    {B19200, 19200},
    {B38400, 38400},
    {B57600, 57600},
    {B115200, 115200},
    {B230400, 230400},
    {B460800, 460800},
}};

constexpr std::array<std::pair<tcflag_t, int>, 4> kSizes{{{CS5, 5}, {CS6, 6}, {CS7, 7}, {CS8, 8}}};

}  // namespace

QString LineFormat::text() const
{
    return QStringLiteral("%1 %2%3%4").arg(baudRate).arg(dataBits).arg(QLatin1Char(parity)).arg(stopBits);
}

LineFormat lineFormatOf(const termios& settings)
{
    LineFormat format;
    const speed_t speed = ::cfgetospeed(&settings);
    for (const auto& [code, rate] : kRates)
        if (code == speed)
            format.baudRate = rate;
    for (const auto& [code, bits] : kSizes)
        if ((settings.c_cflag & CSIZE) == code)
            format.dataBits = bits;
    if (settings.c_cflag & PARENB)
        format.parity = (settings.c_cflag & PARODD) ? 'O' : 'E';
    format.stopBits = (settings.c_cflag & CSTOPB) ? 2 : 1;
    return format;
}

}  // namespace velmor::sim
