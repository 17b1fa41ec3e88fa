// A soak: 10,000 single exchanges with a 16-channel module in velmor-sim (its
// own process, no pacing), 1% of them faulted with every kind of reply fault
// that ends within one exchange. Prints how each fault ended, whether every
// other exchange was accepted, whether the record at the end equals a clean
// read of the module (no reply was ever taken for another request), and the
// growth of the resident memory from the first 1,000 exchanges to the last.
// --via tcp or --via rfc2217 runs it through a ser2net on the loopback.
#include "link/operations.h"
#include "support/ser2net_process.h"
#include "support/sim_process.h"
#include "wire_time.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRandomGenerator>
#include <QThread>

#include <cstdio>
#include <memory>

using namespace velmor;
using namespace velmor::bench;

namespace {

constexpr int kExchanges = 10000;
constexpr int kFaults = kExchanges / 100;
constexpr int kAddress = 1;
// The exchanges of the whole read before the soak, which the module counts too.
constexpr int kWarmUp = kWholeReadExchanges;
constexpr int kMemoryAfter = 1000;
// Dropoff silences a module for good, so it has no place among these.
const QStringList kKinds = {QStringLiteral("noise"), QStringLiteral("checksum"), QStringLiteral("echo"),
                            QStringLiteral("truncate"), QStringLiteral("silence"), QStringLiteral("late"),
                            QStringLiteral("split"), QStringLiteral("tail")};

// How a faulted exchange must end, by kind.
Failure expectedEnd(const QString& kind)
{
    if (kind == QLatin1String("checksum") || kind == QLatin1String("echo"))
        return Failure::BadReply;
    if (kind == QLatin1String("truncate") || kind == QLatin1String("silence") || kind == QLatin1String("late"))
        return Failure::NoReply;
    return Failure::None;  // noise or a stray tail ahead of the frame, a reply in pieces: still taken
}

const char* endName(Failure f)
{
    switch (f) {
    case Failure::None: return "accepted";
    case Failure::BadReply: return "refused";
    case Failure::NoReply: return "timed out";
    case Failure::PortNotOpened: return "port not opened";
    case Failure::LineBusy: return "line busy";
    }
    return "?";
}

qint64 residentKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    return -1;
}

// Runs one of the module's single reads, chosen by `pick`.
bool oneRead(Operations& operations, quint32 pick)
{
    const int index = static_cast<int>(pick / 4 % 4);
    switch (pick % 4) {
    case 0: return operations.readModuleInfo();
    case 1: return operations.readChannelGroup(index);
    case 2: return operations.readAdjustBlock(index);
    default: return operations.readCalibrationPair(static_cast<int>(pick / 4 % 8));
    }
}

struct Rig {
    explicit Rig(const QString& device)
    {
        state.reset();
        state.languageMode = 2;  // English
        port.setPorts({PortEntry{device, 1, device}});
        state.current().portNumber = 1;
        state.current().busAddress = kAddress;
    }
    SetupState state;
    ComPort port;
    PrintedDialogs dialogs;
    Operations operations{state, port, dialogs};
};

// The line the soak talks over: the simulator's own, or a ser2net connection
// to it; empty with a message when ser2net cannot serve it.
QString lineVia(const QString& via, const QString& simLink, testing::Ser2netProcess& server)
{
    if (via == QLatin1String("local"))
        return simLink;
    if (via != QLatin1String("tcp") && via != QLatin1String("rfc2217")) {
        std::fprintf(stderr, "--via takes local, tcp or rfc2217\n");
        return {};
    }
    if (testing::Ser2netProcess::executable().isEmpty()) {
        std::fprintf(stderr, "ser2net is not installed\n");
        return {};
    }
    using Accepter = testing::Ser2netProcess::Accepter;
    const int index = server.addConnection(via == QLatin1String("tcp") ? Accepter::Raw : Accepter::Rfc2217,
                                           QFileInfo(simLink).symLinkTarget());
    if (!server.start()) {
        std::fprintf(stderr, "ser2net did not start: %s\n", qPrintable(server.error()));
        return {};
    }
    return server.url(index);
}

}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QRandomGenerator random(20261123);
    QMap<int, QString> faults;  // soak exchange (1-based) -> kind
    while (faults.size() < kFaults)
        faults.insert(static_cast<int>(random.bounded(kExchanges)) + 1, kKinds[faults.size() % kKinds.size()]);

    QStringList arguments{QStringLiteral("--module"), QStringLiteral("%1:TM-C16").arg(kAddress), QStringLiteral("--fast"),
                          QStringLiteral("--log"), QStringLiteral("/dev/null")};
    for (auto f = faults.cbegin(); f != faults.cend(); ++f)
        arguments << QStringLiteral("--fault") << QStringLiteral("%1:%2:%3").arg(kAddress).arg(f.value()).arg(kWarmUp + f.key());
    testing::SimProcess sim;
    if (!sim.start(arguments)) {
        std::fprintf(stderr, "velmor-sim did not start: %s\n", qPrintable(sim.error()));
        return 1;
    }

    const qsizetype viaAt = app.arguments().indexOf(QStringLiteral("--via"));
    const QString via = viaAt > 0 ? app.arguments().value(viaAt + 1) : QStringLiteral("local");
    testing::Ser2netProcess server;
    const QString line = lineVia(via, sim.linkPath(), server);
    if (line.isEmpty())
        return 1;

    auto soaked = std::make_unique<Rig>(line);
    Rig& rig = *soaked;
    if (!rig.operations.readEverything()) {
        std::fprintf(stderr, "the first whole read failed\n");
        return 1;
    }
    std::printf("soak: %d single reads of a TM-C16 in velmor-sim (no pacing), %d faulted, over %s\n", kExchanges,
                kFaults, qPrintable(line));
    QMap<QString, QMap<Failure, int>> ends;
    int wrongEnds = 0, cleanFailures = 0;
    qint64 memoryEarly = 0;
    double longestMs = 0;
    QElapsedTimer clock;
    clock.start();
    for (int i = 1; i <= kExchanges; ++i) {
        QElapsedTimer one;
        one.start();
        oneRead(rig.operations, random.generate());
        longestMs = std::max(longestMs, static_cast<double>(one.nsecsElapsed()) / 1e6);
        const Failure end = rig.operations.exchange().failure();
        if (faults.contains(i)) {
            ++ends[faults[i]][end];
            wrongEnds += end != expectedEnd(faults[i]);
        } else if (end != Failure::None) {
            ++cleanFailures;
            std::fprintf(stderr, "unfaulted exchange %d ended %s, after %s\n", i, endName(end),
                         faults.contains(i - 1) ? qPrintable(faults[i - 1] + QStringLiteral(" fault")) : "a clean one");
        }
        if (i == kMemoryAfter)
            memoryEarly = residentKb();
    }
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    const qint64 memoryLate = residentKb();

    // The soak's own connection goes first: a serial server serves one at a time.
    const auto soakedRecord = rig.state.current();
    soaked.reset();
    if (via != QLatin1String("local"))
        QThread::msleep(1000);
    Rig fresh(line);
    const bool freshRead = fresh.operations.readEverything();
    const bool sameRecord = freshRead && fresh.state.current() == soakedRecord;
    server.stop();
    sim.stop();

    for (auto k = ends.cbegin(); k != ends.cend(); ++k) {
        QStringList counts;
        for (auto e = k.value().cbegin(); e != k.value().cend(); ++e)
            counts << QStringLiteral("%1 %2").arg(e.value()).arg(QLatin1String(endName(e.key())));
        std::printf("  %-9s -> %s (should be %s)\n", qPrintable(k.key()), qPrintable(counts.join(QStringLiteral(", "))),
                    endName(expectedEnd(k.key())));
    }
    std::printf("faulted exchanges that ended otherwise: %d\n", wrongEnds);
    std::printf("unfaulted exchanges that failed: %d\n", cleanFailures);
    std::printf("record after the soak equals a clean whole read: %s\n", sameRecord ? "yes" : "NO");
    std::printf("time: %.1f s, longest exchange %.0f ms (no hang: every one within its time-out)\n", seconds, longestMs);
    std::printf("resident memory after %d exchanges: %lld kB, after %d: %lld kB, growth %lld kB (target < 1024)\n",
                kMemoryAfter, static_cast<long long>(memoryEarly), kExchanges, static_cast<long long>(memoryLate),
                static_cast<long long>(memoryLate - memoryEarly));
    return wrongEnds == 0 && cleanFailures == 0 && sameRecord && memoryLate - memoryEarly < 1024 ? 0 : 1;
}
