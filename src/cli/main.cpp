#include "cli_main.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velmor-cli"));
    return velmor::cli::runCli(QCoreApplication::arguments());
}
