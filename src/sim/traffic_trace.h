#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <QTime>

namespace velmor::sim {

enum class Direction {
    Received,  // a request the line took in: ">"
    Sent,      // a reply it put out: "<"
};

// "hh:mm:ss.zzz > AA  AA  03  ..." with the frame in the program's display
// form, on one line.
QString trafficLine(const QTime& time, Direction direction, QByteArrayView frame);

// Where the traffic trace goes: standard error, or a file that grows across runs.
class TrafficTrace {
public:
    // An empty path means standard error.
    bool open(const QString& path, QString* error);
    void write(Direction direction, QByteArrayView frame);

private:
    QFile file_;
};

}  // namespace velmor::sim
