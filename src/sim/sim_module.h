#pragma once

#include "model/module_table.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace velmor::sim {

// What a module does with one request it understands.
struct Answer {
    QByteArray reply;
    bool memoryChanged = false;           // a write landed in the module's memory
    std::optional<quint16> balanceMask;   // a balance was started on these channels
};

// One module's behaviour: its memory and how it answers requests. Pure logic,
// no time and no line; the line decides who is addressed, when the reply goes
// out and what faults do to it.
class SimModule {
public:
    SimModule(const ModuleRecord& memory, quint32 seed);

    const ModuleRecord& memory() const { return memory_; }
    ModuleRecord& memory() { return memory_; }
    int address() const { return memory_.busAddress; }

    // The request is one this module takes: a request to its own address, or
    // one of the two that every module takes at 255 (the beckon and the
    // information write). Those two go to 255 only; at its own address a
    // module leaves them unanswered, and every other request to 255 too.
    bool addressedBy(QByteArrayView request) const;
    // The command, length and group selector are ones this module answers.
    // The envelope (start, length, checksum) is checked by the line.
    static bool understands(QByteArrayView request);
    // The reply to an understood request; writes change the memory first and
    // are answered with the new values.
    Answer answer(QByteArrayView request);
    // Ends a balance: new balance values in the masked channels it has.
    void finishBalance(quint16 mask);

private:
    QByteArray fullReply(quint8 command, int group) const;

    ModuleRecord memory_;
    quint32 seed_;
};

}  // namespace velmor::sim
