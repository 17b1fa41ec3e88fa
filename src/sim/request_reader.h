#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace velmor::sim {

// A request as it came off the line, with the time its first byte was read.
struct ReceivedRequest {
    QByteArray frame;
    qint64 firstByteNs = 0;
};

// Assembles requests from the byte stream the way a module listens: bytes up
// to the next AA AA are noise, N gives the length, the request is complete at
// N+4 bytes. A partial request followed by a quiet line is dropped, so that a
// broken write cannot swallow the next request.
class RequestReader {
public:
    static constexpr qint64 kQuietDropNs = 200'000'000;

    // Bytes read at time nowNs (any monotonic clock); returns the requests
    // they completed.
    QList<ReceivedRequest> feed(QByteArrayView bytes, qint64 nowNs);
    bool hasPartial() const { return !buffer_.isEmpty(); }

private:
    void skipNoise();

    QByteArray buffer_;
    qint64 startNs_ = 0;  // when the buffer's first byte was read
    qint64 lastNs_ = 0;   // when the last bytes were read
};

// Start bytes, length and checksum agree; says nothing about the command.
bool requestIntact(QByteArrayView frame);

}  // namespace velmor::sim
