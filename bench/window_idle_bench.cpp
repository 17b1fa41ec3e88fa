// The window, offscreen, idle after a search: what it costs while the
// operator does nothing. It searches one velmor-sim line, then prints its
// process id and idles for the given seconds (60 by default), printing the
// CPU it used meanwhile over the time. File operations while idle are counted
// from outside, e.g. (as the README shows):
//   build/normal/bench/window_idle_bench 60 & sleep 8
//   strace -c -f -e trace=%file -p $(pgrep -f window_idle_bench | head -1) & sleep 60; kill -INT %2
#include "support/sim_process.h"
#include "ui/frm_main.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <unistd.h>

using namespace velmor;

namespace {

class PrintedDialogs : public OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override
    {
        std::fprintf(stderr, "%s: %s\n", qPrintable(title), qPrintable(text));
    }
    bool confirm(const QString& title, const QString& text) override
    {
        showMessage(title, text);
        return true;
    }
};

double cpuSeconds()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

}  // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? QByteArray(argv[1]).toInt() : 60;
    QTemporaryDir folder;
    testing::SimProcess sim;
    qputenv("VELMOR_PORTS_DIR", sim.portsDir().toLocal8Bit());
    if (!sim.start({QStringLiteral("--fast"), QStringLiteral("--module"), QStringLiteral("1:TM-C16"),
                    QStringLiteral("--log"), QStringLiteral("/dev/null")})) {
        std::fprintf(stderr, "velmor-sim did not start: %s\n", qPrintable(sim.error()));
        return 1;
    }
    PrintedDialogs dialogs;
    frmMain window(2, &dialogs);
    window.setConfigPath(folder.filePath(QStringLiteral("TestConfig.cfg")));
    window.show();
    window.Form_Load();
    window.cmdSearch_Click();
    std::printf("pid %lld: searched; idle for %d s from now\n", static_cast<long long>(getpid()), seconds);
    std::fflush(stdout);

    QElapsedTimer idle;
    idle.start();
    const double cpuBefore = cpuSeconds();
    // The event loop alone, as the program runs it (a test's qWait polls).
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
    const double cpu = cpuSeconds() - cpuBefore;
    const double wall = static_cast<double>(idle.elapsed()) / 1000.0;
    std::printf("idle %.1f s: cpu %.3f s, %.3f %% of one core\n", wall, cpu, 100.0 * cpu / wall);
    return 0;
}
