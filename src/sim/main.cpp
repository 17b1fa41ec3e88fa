// velmor-sim: one line of simulated modules on a pseudo-terminal.

#include "serial/port_list.h"
#include "sim/sim_options.h"
#include "sim/sim_session.h"
#include "sim/stop_signals.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    using namespace velmor::sim;
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velmor-sim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMOR_VERSION));

    QCommandLineParser parser;
    addSimOptions(parser);
    parser.process(app);
    SimOptions options;
    QString error;
    if (!readSimOptions(parser, options, &error)) {
        std::fprintf(stderr, "velmor-sim: %s\n", qPrintable(error));
        return 2;
    }
    if (options.portsDir.isEmpty())
        options.portsDir = velmor::virtualPortsDirectory();

    StopSignals stop;
    SimSession session(options);
    if (!stop.install(&error) || !session.start(&error)) {
        std::fprintf(stderr, "velmor-sim: %s\n", qPrintable(error));
        return 1;
    }
    QObject::connect(&stop, &StopSignals::received, &app, &QCoreApplication::quit);
    QObject::connect(&session, &SimSession::ended, &app, &QCoreApplication::quit);

    std::printf("%s\n", qPrintable(session.readyLine()));
    std::fflush(stdout);
    return app.exec();
}
