#pragma once

#include "faults.h"
#include "virtual_line.h"

#include <QCommandLineParser>
#include <QList>
#include <QString>

#include <optional>

namespace velmor::sim {

struct ModuleAt {
    int address = 1;
    int modelCode = 2;

    bool operator==(const ModuleAt&) const = default;
};

// Everything velmor-sim is told on its command line; one process is one line.
struct SimOptions {
    QString name = QStringLiteral("SIM1");
    QList<ModuleAt> modules{ModuleAt{}};
    quint32 seed = 1;
    QString stateFile;   // empty: nothing kept between runs
    LineSettings line;
    QList<Fault> faults;
    QString logFile;     // empty: standard error
    QString portsDir;    // empty: the program's own folder of published ports
};

void addSimOptions(QCommandLineParser& parser);
// Reads what addSimOptions declared, after the parser has processed the
// arguments. False with a message on a value that makes no sense.
bool readSimOptions(const QCommandLineParser& parser, SimOptions& options, QString* error);

// "ADDR:MODEL", MODEL a name from the model table (TM-C16) or its code 0..8.
std::optional<ModuleAt> parseModuleArgument(QStringView text, QString* error);

}  // namespace velmor::sim
