#pragma once

#include <QString>

#include <termios.h>

// A bare pseudo-terminal for looking at the line settings the code under test
// gives its end: the test holds the master and one slave descriptor.
class PtyPair {
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    bool isValid() const { return master_ >= 0; }
    QString slavePath() const { return slavePath_; }
    // The terminal settings as they stand now.
    termios lineSettings() const;

private:
    void close();

    int master_ = -1;
    int slaveKeeper_ = -1;
    QString slavePath_;
};
