// velmor-cli rack save and rack check, the program run as a process of its
// own, over lines of velmor-sim processes:
//  - four lines paced at the real 4800 baud 8N1, three or four modules each:
//    every line saved alone, then all four saved and checked at once, each
//    over the slowest line alone (target at most 1.05);
//  - 32 lines of velmor-sim --fast, four modules each, over their
//    pseudo-terminals and then through one ser2net on the loopback (tcp://):
//    the same ratios (target at most 1.2) and velmor-cli's peak resident
//    memory (target under 150 MB).
// Every run's rack file must hold exactly the modules the lines hold (line,
// address, model, module number) and every check must exit 0, all same.
//
// rack_bench [--part paced|scale|all] [--paced-runs N] [--alone N]
//   --paced-runs  runs of the paced part (default 3; the worst is printed)
//   --alone       how many of the 32 lines are timed alone (default 32),
//                 evenly spread
//
// velmor-cli is started through this program re-executed as a launcher
// (--launch, below) that forks it and takes wait4's rusage: ru_maxrss is
// then velmor-cli's own peak, not that of a parent it was forked from.
#include "config/rack_file.h"
#include "model/models.h"
#include "sim/sim_values.h"
#include "support/ser2net_process.h"
#include "support/sim_process.h"
#include "wire_time.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace velmor;
using namespace velmor::bench;

namespace {

// ---- the launcher: runs before Qt starts, so it stays a few MB -------------

double secondsOf(const timeval& t) { return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6; }

// rack_bench --launch OUT ERR PROGRAM ARGS...: runs PROGRAM with its standard
// output and error in OUT and ERR, and prints
// "EXIT MAXRSS_KB USER_S SYSTEM_S ELAPSED_S" of it.
int launch(int argc, char* argv[])
{
    if (argc < 5)
        return 2;
    timespec begin{}, end{};
    clock_gettime(CLOCK_MONOTONIC, &begin);
    const pid_t pid = fork();
    if (pid < 0)
        return 3;
    if (pid == 0) {
        const int in = open("/dev/null", O_RDONLY);
        const int out = open(argv[2], O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err = open(argv[3], O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (in < 0 || out < 0 || err < 0)
            _exit(126);
        dup2(in, 0);
        dup2(out, 1);
        dup2(err, 2);
        execv(argv[4], argv + 4);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    while (wait4(pid, &status, 0, &usage) < 0)
        if (errno != EINTR)
            return 3;
    clock_gettime(CLOCK_MONOTONIC, &end);
    const double elapsed = static_cast<double>(end.tv_sec - begin.tv_sec) + static_cast<double>(end.tv_nsec - begin.tv_nsec) / 1e9;
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::printf("%d %ld %.3f %.3f %.6f\n", exitCode, usage.ru_maxrss, secondsOf(usage.ru_utime), secondsOf(usage.ru_stime),
                elapsed);
    return 0;
}

// ---- velmor-cli as a process -----------------------------------------------

struct CliRun {
    int exitCode = -1;
    double seconds = 0;
    long peakKb = 0;
    QByteArray out;
    QByteArray err;
};

// The environment every run gets: the simulators' port folder and no system
// ports, English, and settings in a folder of the bench's own (network lines
// are remembered there, not in the user's settings).
class Cli {
public:
    Cli(const QString& portsDir, const QString& scratch) : scratch_(scratch)
    {
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert(QStringLiteral("VELMOR_PORTS_DIR"), portsDir);
        environment_.insert(QStringLiteral("VELMOR_SYSTEM_PORTS"), QStringLiteral("none"));
        environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_US.UTF-8"));
        environment_.insert(QStringLiteral("LANG"), QStringLiteral("en_US.UTF-8"));
        environment_.insert(QStringLiteral("XDG_CONFIG_HOME"), scratch + QStringLiteral("/config"));
        environment_.insert(QStringLiteral("XDG_DATA_HOME"), scratch + QStringLiteral("/data"));
    }

    CliRun run(const QStringList& arguments, bool withHistoryOff = true) const
    {
        const QString out = scratch_ + QStringLiteral("/cli.out");
        const QString err = scratch_ + QStringLiteral("/cli.err");
        QStringList command{QStringLiteral("--launch"), out, err, QStringLiteral(VELMOR_CLI_EXECUTABLE)};
        if (withHistoryOff)
            command << QStringLiteral("--no-history");
        command << arguments;
        QProcess launcher;
        launcher.setProcessEnvironment(environment_);
        launcher.start(QCoreApplication::applicationFilePath(), command);
        CliRun result;
        if (!launcher.waitForFinished(600000) || launcher.exitCode() != 0) {
            std::fprintf(stderr, "the launcher failed: %s\n", qPrintable(launcher.errorString()));
            launcher.kill();
            launcher.waitForFinished();
            return result;
        }
        const QList<QByteArray> fields = launcher.readAllStandardOutput().simplified().split(' ');
        if (fields.size() == 5) {
            result.exitCode = fields[0].toInt();
            result.peakKb = fields[1].toLong();
            result.seconds = fields[4].toDouble();
        }
        QFile o(out), e(err);
        if (o.open(QIODevice::ReadOnly))
            result.out = o.readAll();
        if (e.open(QIODevice::ReadOnly))
            result.err = e.readAll();
        return result;
    }

private:
    QString scratch_;
    QProcessEnvironment environment_;
};

// ---- the lines and what a rack of them must hold ---------------------------

struct ModuleAt {
    int address;
    int modelCode;
};

// A line as the rack must name it (the published name, or tcp://...) and
// the modules its simulator holds.
struct Line {
    QString name;
    QList<ModuleAt> modules;
};

// "LINE ADDRESS MODEL NUMBER" of every module the simulators hold; the
// module number is the one velmor-sim generates from the address, the model
// and its default seed.
QStringList expectedModules(const QList<Line>& lines)
{
    constexpr quint32 kSimSeed = 1;
    QStringList expected;
    for (const Line& line : lines)
        for (const ModuleAt& m : line.modules)
            expected << QStringLiteral("%1 %2 %3 %4")
                            .arg(line.name)
                            .arg(m.address)
                            .arg(QString::fromUtf16(kModels[m.modelCode].name))
                            .arg(sim::simulatedModule(m.address, m.modelCode, kSimSeed).moduleNumber);
    expected.sort();
    return expected;
}

// How many of `expected` the rack file holds, and whether it holds exactly
// those (and names exactly the lines given).
struct FileCheck {
    qsizetype right = 0;
    bool exact = false;
    QString error;
};

FileCheck checkRackFile(const QString& path, const QList<Line>& lines)
{
    FileCheck check;
    QString error;
    const std::optional<Rack> rack = readRackFile(path, Language::English, &error);
    if (!rack) {
        check.error = error;
        return check;
    }
    QStringList names;
    for (const Line& line : lines)
        names << line.name;
    QStringList held;
    for (const RackModule& m : rack->modules)
        held << QStringLiteral("%1 %2 %3 %4").arg(m.line).arg(m.address).arg(m.model).arg(m.moduleNumber);
    held.sort();
    const QStringList expected = expectedModules(lines);
    for (const QString& m : expected)
        check.right += held.contains(m) ? 1 : 0;
    check.exact = held == expected && rack->lines == names;
    if (!check.exact)
        check.error = QStringLiteral("held %1, expected %2").arg(held.join(QStringLiteral(", ")), expected.join(QStringLiteral(", ")));
    return check;
}

struct CheckRows {
    int same = 0;
    int other = 0;
};

CheckRows checkRows(const CliRun& run)
{
    CheckRows rows;
    for (const QJsonValue& row : QJsonDocument::fromJson(run.out).array()) {
        if (row.toObject().value(QStringLiteral("status")).toString() == QLatin1String("same"))
            ++rows.same;
        else
            ++rows.other;
    }
    return rows;
}

QStringList portArguments(const QList<Line>& lines)
{
    QStringList arguments;
    for (const Line& line : lines)
        arguments << QStringLiteral("--port") << line.name;
    return arguments;
}

// Sims of the lines, in one ports folder.
using Sims = std::vector<std::unique_ptr<testing::SimProcess>>;

bool startLine(Sims& sims, Line& line, const QString& portsDir, const QString& name, bool fast)
{
    auto& sim = sims.emplace_back(std::make_unique<testing::SimProcess>());
    sim->usePortsDir(portsDir);
    QStringList arguments{QStringLiteral("--name"), name, QStringLiteral("--turnaround"), QString::number(kTurnaroundMs),
                          QStringLiteral("--log"), QStringLiteral("/dev/null")};
    if (fast)
        arguments << QStringLiteral("--fast");
    for (const ModuleAt& m : line.modules)
        arguments << QStringLiteral("--module")
                  << QStringLiteral("%1:%2").arg(m.address).arg(QString::fromUtf16(kModels[m.modelCode].name));
    if (!sim->start(arguments)) {
        std::fprintf(stderr, "velmor-sim %s did not start: %s\n", qPrintable(name), qPrintable(sim->error()));
        return false;
    }
    line.name = sim->portName();
    return true;
}

QString modulesText(const Line& line)
{
    QStringList texts;
    for (const ModuleAt& m : line.modules)
        texts << QStringLiteral("%1:%2").arg(m.address).arg(QString::fromUtf16(kModels[m.modelCode].name));
    return texts.join(QLatin1Char(' '));
}

double megabytes(long kb) { return static_cast<double>(kb) / 1024.0; }

// A run that did not end as asked: said on standard error, and the bench fails.
bool ended(const CliRun& run, const char* what)
{
    if (run.exitCode == 0)
        return true;
    std::fprintf(stderr, "%s exited %d: %s\n", what, run.exitCode, run.err.constData());
    return false;
}

// ---- the paced part ---------------------------------------------------------

// Addresses spread over the searched 0..16, the models mixed.
const std::vector<QList<ModuleAt>> kPacedLines = {
    {{1, kTmC16}, {5, kTmA4}, {9, kTmB8}, {14, kTmC8}},
    {{2, kTmB16}, {7, kTmA8}, {12, kTmC16D}},
    {{0, kTmA8B}, {4, kTmC16}, {10, kTmA4}, {16, kTmB8}},
    {{3, kTmA8D}, {8, kTmB8}, {13, kTmC16}},
};

bool pacedPart(const QString& scratch, int runs)
{
    QTemporaryDir portsDir;
    Sims sims;
    QList<Line> lines(static_cast<qsizetype>(kPacedLines.size()));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        lines[i].modules = kPacedLines[static_cast<size_t>(i)];
        if (!startLine(sims, lines[i], portsDir.path(), QStringLiteral("SIM%1").arg(i + 1), false))
            return false;
    }
    const Cli cli(portsDir.path(), scratch);
    const QString rack = scratch + QStringLiteral("/paced.velrack");
    qsizetype moduleCount = 0;
    std::printf("rack save and rack check of four lines paced at 4800 baud 8N1 (velmor-sim processes), "
                "velmor-cli a process of its own\n");
    for (const Line& line : lines) {
        std::printf("  %s: %s\n", qPrintable(line.name), qPrintable(modulesText(line)));
        moduleCount += line.modules.size();
    }

    std::printf("%-4s", "run");
    for (const Line& line : lines)
        std::printf(" %9s", qPrintable(line.name + QStringLiteral(" s")));
    std::printf(" %8s %12s %8s %13s  %-13s %s\n", "save s", "save/slowest", "check s", "check/slowest", "rack file", "check");
    bool ok = true;
    bool alonesRight = true;
    double worstSave = 0, worstCheck = 0;
    for (int run = 1; run <= runs; ++run) {
        std::printf("%-4d", run);
        double slowest = 0;
        for (const Line& line : lines) {
            const CliRun alone = cli.run({QStringLiteral("rack"), QStringLiteral("save"), rack, QStringLiteral("--port"), line.name});
            const FileCheck file = checkRackFile(rack, {line});
            if (!file.exact)
                std::fprintf(stderr, "%s alone: the rack file is not the line's: %s\n", qPrintable(line.name), qPrintable(file.error));
            ok = ended(alone, "rack save of one line") && ok;
            alonesRight = alonesRight && file.exact;
            slowest = std::max(slowest, alone.seconds);
            std::printf(" %9.2f", alone.seconds);
            std::fflush(stdout);
        }
        const CliRun save = cli.run(QStringList{QStringLiteral("rack"), QStringLiteral("save"), rack} + portArguments(lines));
        const FileCheck file = checkRackFile(rack, lines);
        const CliRun check = cli.run({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("check"), rack});
        const CheckRows rows = checkRows(check);
        ok = ended(save, "rack save") && ended(check, "rack check") && file.exact && rows.other == 0
             && rows.same == moduleCount && ok;
        if (!file.exact)
            std::fprintf(stderr, "the rack file is not the lines': %s\n", qPrintable(file.error));
        worstSave = std::max(worstSave, save.seconds / slowest);
        worstCheck = std::max(worstCheck, check.seconds / slowest);
        std::printf(" %8.2f %12.3f %8.2f %13.3f  %3lld/%-3lld right  %d same, %d other, exit %d\n", save.seconds,
                    save.seconds / slowest, check.seconds, check.seconds / slowest, static_cast<long long>(file.right),
                    static_cast<long long>(moduleCount), rows.same, rows.other, check.exitCode);
    }
    std::printf("every line's own rack file right: %s\n", alonesRight ? "yes" : "NO");
    std::printf("worst save/slowest %.3f, worst check/slowest %.3f (target <= 1.05)\n\n", worstSave, worstCheck);
    for (auto& sim : sims)
        sim->stop();
    return ok && alonesRight;
}

// ---- the scale part ---------------------------------------------------------

constexpr int kScaleLines = 32;
constexpr int kModulesPerLine = 4;

// Line i: addresses i%5 + 0, 4, 8, 12 (0..16 in all), the nine models in turn.
QList<ModuleAt> scaleModules(int i)
{
    QList<ModuleAt> modules;
    for (int k = 0; k < kModulesPerLine; ++k)
        modules.append({i % 5 + 4 * k, (i * kModulesPerLine + k) % kModelCount});
    return modules;
}

struct RouteFigures {
    int alone = 0;
    double fastest = 1e9, slowest = 0;
    QString slowestLine;
    long alonePeakKb = 0;
    bool alonesRight = true;
    std::vector<double> aloneSeconds;
    CliRun save, check;
    FileCheck file;
    CheckRows rows;
};

// Every chosen line saved alone, then all lines saved and checked at once.
RouteFigures timeRoute(const Cli& cli, const QList<Line>& lines, const QList<int>& aloneLines, const QString& rack)
{
    RouteFigures f;
    for (const int i : aloneLines) {
        const Line& line = lines[i];
        const CliRun alone = cli.run({QStringLiteral("rack"), QStringLiteral("save"), rack, QStringLiteral("--port"), line.name});
        const FileCheck file = checkRackFile(rack, {line});
        if (!file.exact)
            std::fprintf(stderr, "%s alone: the rack file is not the line's: %s\n", qPrintable(line.name), qPrintable(file.error));
        f.alonesRight = f.alonesRight && ended(alone, "rack save of one line") && file.exact;
        ++f.alone;
        f.aloneSeconds.push_back(alone.seconds);
        f.fastest = std::min(f.fastest, alone.seconds);
        if (alone.seconds > f.slowest) {
            f.slowest = alone.seconds;
            f.slowestLine = QStringLiteral("SIM%1").arg(i + 1, 2, 10, QLatin1Char('0'));
        }
        f.alonePeakKb = std::max(f.alonePeakKb, alone.peakKb);
    }
    f.save = cli.run(QStringList{QStringLiteral("rack"), QStringLiteral("save"), rack} + portArguments(lines));
    f.file = checkRackFile(rack, lines);
    f.check = cli.run({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("check"), rack});
    f.rows = checkRows(f.check);
    return f;
}

bool printRoute(const char* route, const RouteFigures& f, qsizetype moduleCount)
{
    std::printf("%-22s %5d %7.2f %7.2f %7.2f %8.3f %7.1f %7.2f %8.3f %7.1f  %3lld/%-3lld right  %d same, %d other, exit %d\n",
                route, f.alone, f.fastest, f.slowest, f.save.seconds, f.save.seconds / f.slowest, megabytes(f.save.peakKb),
                f.check.seconds, f.check.seconds / f.slowest, megabytes(f.check.peakKb),
                static_cast<long long>(f.file.right), static_cast<long long>(moduleCount), f.rows.same, f.rows.other,
                f.check.exitCode);
    std::fflush(stdout);
    if (!f.file.exact)
        std::fprintf(stderr, "%s: the rack file is not the lines': %s\n", route, qPrintable(f.file.error));
    return f.alonesRight && ended(f.save, "rack save") && ended(f.check, "rack check") && f.file.exact && f.rows.other == 0
           && f.rows.same == moduleCount;
}

bool scalePart(const QString& scratch, int aloneCount)
{
    if (testing::Ser2netProcess::executable().isEmpty()) {
        std::fprintf(stderr, "ser2net is not installed (scripts/install-deps.sh installs it)\n");
        return false;
    }
    QTemporaryDir portsDir;
    Sims sims;
    QList<Line> lines(kScaleLines);
    for (int i = 0; i < kScaleLines; ++i) {
        lines[i].modules = scaleModules(i);
        if (!startLine(sims, lines[i], portsDir.path(), QStringLiteral("SIM%1").arg(i + 1, 2, 10, QLatin1Char('0')), true))
            return false;
    }
    // One ser2net serving every line's pseudo-terminal, raw.
    using Accepter = testing::Ser2netProcess::Accepter;
    testing::Ser2netProcess server;
    for (const auto& sim : sims)
        server.addConnection(Accepter::Raw, sim->devicePath());
    if (!server.start()) {
        std::fprintf(stderr, "ser2net did not start: %s\n", qPrintable(server.error()));
        return false;
    }
    QList<Line> remote = lines;
    for (int i = 0; i < kScaleLines; ++i)
        remote[i].name = server.url(i);
    QList<int> aloneLines;
    aloneCount = std::clamp(aloneCount, 1, kScaleLines);
    for (int k = 0; k < aloneCount; ++k)
        aloneLines << k * kScaleLines / aloneCount;

    const qsizetype moduleCount = kScaleLines * kModulesPerLine;
    const Cli cli(portsDir.path(), scratch);
    const QString rack = scratch + QStringLiteral("/scale.velrack");
    std::printf("rack save and rack check of %d lines of velmor-sim --fast, %d modules each (%lld), velmor-cli a process "
                "of its own;\npeak resident memory is wait4's ru_maxrss of the velmor-cli process; %d of %d lines timed alone\n",
                kScaleLines, kModulesPerLine, static_cast<long long>(moduleCount), aloneCount, kScaleLines);
    std::printf("  SIM01: %s, SIM02: %s, ... (addresses i%%5 + 0/4/8/12, the nine models in turn)\n",
                qPrintable(modulesText(lines[0])), qPrintable(modulesText(lines[1])));
    std::printf("%-22s %5s %7s %7s %7s %8s %7s %7s %8s %7s  %-13s %s\n", "route", "alone", "fastest", "slowest", "save s",
                "/slowest", "peak MB", "check s", "/slowest", "peak MB", "rack file", "check");
    const RouteFigures local = timeRoute(cli, lines, aloneLines, rack);
    bool ok = printRoute("local pseudo-terminal", local, moduleCount);
    const RouteFigures network = timeRoute(cli, remote, aloneLines, rack);
    ok = printRoute("ser2net tcp://", network, moduleCount) && ok;
    for (const auto& [route, f] : {std::pair{"local", &local}, std::pair{"ser2net", &network}}) {
        std::printf("lines alone, %s, s:", route);
        for (const double seconds : f->aloneSeconds)
            std::printf(" %.2f", seconds);
        std::printf("\n");
    }
    std::printf("slowest line alone: %s (local), %s (through ser2net); peak of a line alone %.1f MB (local), %.1f MB (ser2net)\n",
                qPrintable(local.slowestLine), qPrintable(network.slowestLine), megabytes(local.alonePeakKb),
                megabytes(network.alonePeakKb));
    std::printf("targets: save and check over the slowest line alone <= 1.2, peak resident < 150 MB\n");
    server.stop();
    for (auto& sim : sims)
        sim->stop();
    return ok;
}

// velmor-cli's own start and end, for scale: --version five times, the median.
void printStartUp(const QString& scratch)
{
    const Cli cli(QStringLiteral("/nonexistent"), scratch);
    std::vector<CliRun> runs;
    for (int i = 0; i < 5; ++i)
        runs.push_back(cli.run({QStringLiteral("--version")}, false));
    std::sort(runs.begin(), runs.end(), [](const CliRun& a, const CliRun& b) { return a.seconds < b.seconds; });
    std::printf("velmor-cli --version, start to end (median of 5): %.3f s, peak %.1f MB\n\n", runs[2].seconds,
                megabytes(runs[2].peakKb));
}

}  // namespace

int main(int argc, char* argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--launch") == 0)
        return launch(argc, argv);

    QCoreApplication app(argc, argv);
    QString part = QStringLiteral("all");
    int pacedRuns = 3;
    int alone = kScaleLines;
    const QStringList args = app.arguments();
    for (qsizetype i = 1; i + 1 < args.size(); i += 2) {
        if (args[i] == QLatin1String("--part"))
            part = args[i + 1];
        else if (args[i] == QLatin1String("--paced-runs"))
            pacedRuns = std::max(1, args[i + 1].toInt());
        else if (args[i] == QLatin1String("--alone"))
            alone = args[i + 1].toInt();
    }
    QTemporaryDir scratch;
    printStartUp(scratch.path());
    bool ok = true;
    if (part == QLatin1String("all") || part == QLatin1String("paced"))
        ok = pacedPart(scratch.path(), pacedRuns) && ok;
    if (part == QLatin1String("all") || part == QLatin1String("scale"))
        ok = scalePart(scratch.path(), alone) && ok;
    return ok ? 0 : 1;
}
