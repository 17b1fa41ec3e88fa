#include "cli_main.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <memory>

namespace {

void quiet(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    std::unique_ptr<QCoreApplication> app;
    if (velmor::cli::needsFonts(arguments)) {
        // Fonts come with a GUI application; the offscreen platform gives
        // them without a display, and the command line never shows a window.
        // Its start-up remarks on the desktop session (no XDG_RUNTIME_DIR in
        // a bare shell) are not ours to print: standard error carries only
        // the command's own messages.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QtMessageHandler before = qInstallMessageHandler(quiet);
        app = std::make_unique<QGuiApplication>(argc, argv);
        qInstallMessageHandler(before);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName(QStringLiteral("velmor-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMOR_VERSION));
    return velmor::cli::runCli(QCoreApplication::arguments());
}
