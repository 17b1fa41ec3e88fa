// The window, offscreen, against velmor-sim pacing a 16-channel module at the
// real 4800 baud 8N1 in its own process: the time from process start to the
// window shown, then "read everything" (cmdFrame3Receive) clicked a few
// times, each printed as elapsed over the ideal wire time and CPU over
// elapsed. With --frame-log the frame-log pane is shown throughout (it is
// hidden otherwise, as at start).
#include "support/sim_process.h"
#include "ui/frm_main.h"
#include "wire_time.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <unistd.h>

using namespace velmor;
using namespace velmor::bench;

namespace {

constexpr int kRuns = 5;

// Seconds since this process was started by the system (Linux).
double secondsSinceProcessStart()
{
    QFile stat(QStringLiteral("/proc/self/stat"));
    QFile uptime(QStringLiteral("/proc/uptime"));
    if (!stat.open(QIODevice::ReadOnly) || !uptime.open(QIODevice::ReadOnly))
        return -1;
    // Field 22, counted after the command name in parentheses.
    const QByteArray line = stat.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    const double started = fields.value(19).toDouble() / static_cast<double>(sysconf(_SC_CLK_TCK));
    return uptime.readAll().split(' ').value(0).toDouble() - started;
}

}  // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir folder;
    testing::SimProcess sim;
    // The window lists the simulator's port with the machine's own.
    qputenv("VELMOR_PORTS_DIR", sim.portsDir().toLocal8Bit());

    PrintedDialogs dialogs;
    frmMain window(2, &dialogs);
    window.setConfigPath(folder.filePath(QStringLiteral("TestConfig.cfg")));
    window.show();
    window.Form_Load();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::fprintf(stderr, "the window was never shown\n");
        return 1;
    }
    const double shownAfter = secondsSinceProcessStart();

    if (!sim.start({QStringLiteral("--module"), QStringLiteral("1:TM-C16"), QStringLiteral("--turnaround"),
                    QString::number(kTurnaroundMs), QStringLiteral("--log"), QStringLiteral("/dev/null")})) {
        std::fprintf(stderr, "velmor-sim did not start: %s\n", qPrintable(sim.error()));
        return 1;
    }
    // The port chooser follows the new port within a second or two.
    auto* ports = window.findChild<QComboBox*>(QStringLiteral("cmbComPort"));
    if (!QTest::qWaitFor([&] { return ports->findText(sim.portName()) >= 0; }, 5000)) {
        std::fprintf(stderr, "the window never listed %s\n", qPrintable(sim.portName()));
        return 1;
    }
    ports->setCurrentIndex(ports->findText(sim.portName()));
    emit ports->activated(ports->currentIndex());
    window.state().current().busAddress = 1;
    auto* read = window.findChild<QPushButton*>(QStringLiteral("cmdFrame3Receive"));
    const bool logShown = app.arguments().contains(QStringLiteral("--frame-log"));
    if (logShown)
        window.findChild<QAction*>(QStringLiteral("MnuView_FrameLog"))->trigger();

    std::printf("the window offscreen, read everything of a 16-channel module, 4800 baud 8N1 paced simulator in its own process\n");
    std::printf("process start to window shown: %.3f s (target <= 0.5)\n", shownAfter);
    std::printf("frame-log pane %s\n", logShown ? "shown" : "hidden");
    // The click returns when the flow is over; a failed read shows its message.
    const bool ok = printWholeReadRuns(kRuns, 1.03, [&] {
        QTest::mouseClick(read, Qt::LeftButton);
        return dialogs.shown == 0;
    });
    sim.stop();
    return ok ? 0 : 1;
}
