#include "traffic_trace.h"

#include "protocol/frame_text.h"

#include <cstdio>

namespace velmor::sim {

QString trafficLine(const QTime& time, Direction direction, QByteArrayView frame)
{
    QString text = frameToText(frame);
    text.remove(QStringLiteral("\r\n"));
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    const QLatin1Char arrow(direction == Direction::Received ? '>' : '<');
    return time.toString(QStringLiteral("hh:mm:ss.zzz")) + QLatin1Char(' ') + arrow + QLatin1Char(' ') + text;
}

bool TrafficTrace::open(const QString& path, QString* error)
{
    bool ok = false;
    if (path.isEmpty()) {
        ok = file_.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered);
    } else {
        file_.setFileName(path);
        // Unbuffered: every line is on disk when it is written, so a reader
        // (or a simulator that is killed) never misses the last frames.
        ok = file_.open(QIODevice::Append | QIODevice::Unbuffered);
    }
    if (!ok && error)
        *error = QStringLiteral("cannot open the log %1: %2").arg(path, file_.errorString());
    return ok;
}

void TrafficTrace::write(Direction direction, QByteArrayView frame)
{
    if (!file_.isOpen())
        return;
    file_.write((trafficLine(QTime::currentTime(), direction, frame) + QLatin1Char('\n')).toUtf8());
}

}  // namespace velmor::sim
