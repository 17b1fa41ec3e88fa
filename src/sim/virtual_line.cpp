#include "virtual_line.h"

#include <QTimer>

namespace velmor::sim {
namespace {

// A hang-up discards what the far end has not read yet: the line stays until
// the last reply has had time to be taken.
constexpr int kVanishGraceMs = 100;

}  // namespace

VirtualLine::VirtualLine(const LineSettings& settings, QObject* parent)
    : QObject(parent)
    , settings_(settings)
    , bus_(settings.balanceDelayMs)
    , pacer_(settings.fast ? 0 : kByteNs4800, clock_)
{
    clock_.start();
    connect(&terminal_, &PseudoTerminal::readyRead, this, &VirtualLine::readRequests);
    connect(&bus_, &ModuleBus::memoryChanged, this, &VirtualLine::memoryChanged);
    connect(&pacer_, &Pacer::bytesDue, &terminal_, &PseudoTerminal::write);
    connect(&pacer_, &Pacer::transmitted, this,
            [this](const QByteArray& whole) { emit frameLogged(Direction::Sent, whole); });
    connect(&pacer_, &Pacer::drained, this, [this] {
        if (vanishDue_)
            QTimer::singleShot(kVanishGraceMs, this, &VirtualLine::vanish);
    });
}

void VirtualLine::vanish()
{
    if (!isOpen())
        return;
    pacer_.stop();
    terminal_.close();
    emit vanished();
}

void VirtualLine::readRequests()
{
    const QByteArray bytes = terminal_.readAll();
    if (bytes.isEmpty())
        return;
    for (const ReceivedRequest& request : reader_.feed(bytes, clock_.nsecsElapsed())) {
        if (!isOpen())
            return;
        answer(request);
    }
}

void VirtualLine::answer(const ReceivedRequest& request)
{
    const QByteArray& frame = request.frame;
    emit frameLogged(Direction::Received, frame);
    // Past its last exchange the line is as good as gone: it answers nothing
    // more while its last reply drains, fast or paced.
    if (vanishDue_)
        return;
    if (!requestIntact(frame) || !SimModule::understands(frame))
        return;  // a module stays quiet on what it cannot take

    ++exchanges_;
    if (const std::optional<Outgoing> reply = bus_.answer(frame)) {
        const qint64 requestEnd = request.firstByteNs + frame.size() * pacer_.byteNs();
        pacer_.send(*reply, requestEnd + settings_.turnaroundMs * kNsPerMs);
    }
    if (settings_.vanishAfter > 0 && exchanges_ >= settings_.vanishAfter) {
        vanishDue_ = true;  // once the last reply is out
        if (pacer_.idle())
            QTimer::singleShot(kVanishGraceMs, this, &VirtualLine::vanish);
    }
}

}  // namespace velmor::sim
