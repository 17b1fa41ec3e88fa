#pragma once

#include <QByteArray>
#include <QString>

// A bare pseudo-terminal for tests that need to put bytes on the line
// themselves: the test holds the master, the code under test opens the slave.
class PtyPair {
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    bool isValid() const { return master_ >= 0; }
    QString slavePath() const { return slavePath_; }
    void send(const QByteArray& bytes);
    // Whatever the slave side wrote, waiting up to `ms` for at least `count` bytes.
    QByteArray receive(int count, int ms);
    // The far end goes away: the master is closed.
    void hangUp();

private:
    int master_ = -1;
    int slaveKeeper_ = -1;
    QString slavePath_;
};
