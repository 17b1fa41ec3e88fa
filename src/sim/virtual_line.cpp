#include "virtual_line.h"

#include <QTimer>

#include <cerrno>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace velmor::sim {
namespace {

QString systemError(const char* call) { return QStringLiteral("%1: %2").arg(QLatin1String(call), qt_error_string(errno)); }

bool closeOnExec(int fd) { return ::fcntl(fd, F_SETFD, FD_CLOEXEC) == 0; }

// A hang-up discards what the far end has not read yet: the line stays until
// the last reply has had time to be taken.
constexpr int kVanishGraceMs = 100;

}  // namespace

VirtualLine::VirtualLine(const LineSettings& settings, QObject* parent)
    : QObject(parent)
    , settings_(settings)
    , pacer_(settings.fast ? 0 : kByteNs4800, clock_)
{
    clock_.start();
    connect(&pacer_, &Pacer::bytesDue, this, &VirtualLine::writeBytes);
    connect(&pacer_, &Pacer::transmitted, this,
            [this](const QByteArray& whole) { emit frameLogged(Direction::Sent, whole); });
    connect(&pacer_, &Pacer::drained, this, [this] {
        if (vanishDue_)
            QTimer::singleShot(kVanishGraceMs, this, &VirtualLine::vanish);
    });
}

VirtualLine::~VirtualLine() { closeEnds(); }

bool VirtualLine::open(QString* error)
{
    auto fail = [&](const char* call) {
        if (error)
            *error = systemError(call);
        closeEnds();
        return false;
    };
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0)
        return fail("posix_openpt");
    // Programs this process starts must not hold the line open.
    if (!closeOnExec(master_) || ::fcntl(master_, F_SETFL, O_NONBLOCK) != 0)
        return fail("fcntl");
    if (::grantpt(master_) != 0)
        return fail("grantpt");
    if (::unlockpt(master_) != 0)
        return fail("unlockpt");
    const char* name = ::ptsname(master_);
    if (!name)
        return fail("ptsname");
    devicePath_ = QString::fromLocal8Bit(name);

    slave_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave_ < 0)
        return fail("open");
    // Raw, so that no echo or line editing touches the frames before the program
    // sets its own port settings.
    termios settings{};
    if (::tcgetattr(slave_, &settings) != 0)
        return fail("tcgetattr");
    ::cfmakeraw(&settings);
    if (::tcsetattr(slave_, TCSANOW, &settings) != 0)
        return fail("tcsetattr");

    notifier_ = new QSocketNotifier(master_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &VirtualLine::readRequests);
    return true;
}

std::optional<LineFormat> VirtualLine::lineFormat() const
{
    termios settings{};
    if (slave_ < 0 || ::tcgetattr(slave_, &settings) != 0)
        return std::nullopt;
    return lineFormatOf(settings);
}

void VirtualLine::addModule(const SimModule& module)
{
    modules_.push_back({module, module.address()});
}

SimModule* VirtualLine::moduleAt(int address)
{
    for (Entry& e : modules_)
        if (e.module.address() == address)
            return &e.module;
    return nullptr;
}

QList<ModuleRecord> VirtualLine::memories() const
{
    QList<ModuleRecord> records;
    for (const Entry& e : modules_)
        records.append(e.module.memory());
    return records;
}

void VirtualLine::vanish()
{
    if (!isOpen())
        return;
    closeEnds();
    emit vanished();
}

void VirtualLine::readRequests()
{
    QByteArray bytes;
    char chunk[512];
    ssize_t n = 0;
    while ((n = ::read(master_, chunk, sizeof chunk)) > 0)
        bytes.append(chunk, n);
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
    QList<Outgoing> replies;
    bool changed = false;
    for (size_t index = 0; index < modules_.size(); ++index) {
        Entry& e = modules_[index];
        if (!e.module.addressedBy(frame))
            continue;
        const int exchange = ++e.exchanges;
        if (faults_.silent(e.faultAddress, exchange))
            continue;
        const Answer a = e.module.answer(frame);
        changed = changed || a.memoryChanged;
        if (a.balanceMask) {
            const quint16 mask = *a.balanceMask;
            QTimer::singleShot(settings_.balanceDelayMs, this, [this, index, mask] {
                modules_[index].module.finishBalance(mask);
                emit memoryChanged();
            });
        }
        replies.append(faults_.shape(e.faultAddress, exchange, a.reply));
    }
    if (changed)
        emit memoryChanged();

    if (!replies.isEmpty()) {
        const qint64 requestEnd = request.firstByteNs + frame.size() * pacer_.byteNs();
        pacer_.send(collide(replies), requestEnd + settings_.turnaroundMs * kNsPerMs);
    }
    if (settings_.vanishAfter > 0 && exchanges_ >= settings_.vanishAfter) {
        vanishDue_ = true;  // once the last reply is out
        if (pacer_.idle())
            QTimer::singleShot(kVanishGraceMs, this, &VirtualLine::vanish);
    }
}

void VirtualLine::writeBytes(const QByteArray& bytes)
{
    if (!isOpen())
        return;
    // A real line keeps nothing: what the pseudo-terminal cannot take is lost.
    [[maybe_unused]] const ssize_t written = ::write(master_, bytes.constData(), static_cast<size_t>(bytes.size()));
}

void VirtualLine::closeEnds()
{
    pacer_.stop();
    if (notifier_) {
        notifier_->setEnabled(false);
        notifier_->deleteLater();
        notifier_ = nullptr;
    }
    for (int* fd : {&slave_, &master_}) {
        if (*fd >= 0)
            ::close(*fd);
        *fd = -1;
    }
}

}  // namespace velmor::sim
