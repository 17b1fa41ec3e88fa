#include "sim_session.h"

#include "sim_values.h"
#include "state_file.h"

#include <QFileInfo>

namespace velmor::sim {

SimSession::SimSession(const SimOptions& options, QObject* parent)
    : QObject(parent)
    , options_(options)
    , line_(options.line)
{
    connect(&line_, &VirtualLine::frameLogged, this,
            [this](Direction direction, const QByteArray& frame) { log_.write(direction, frame); });
    connect(&line_, &VirtualLine::memoryChanged, this, &SimSession::saveModules);
    connect(&line_, &VirtualLine::vanished, this, [this] {
        link_.remove();
        emit ended();
    });
}

bool SimSession::start(QString* error)
{
    if (!log_.open(options_.logFile, error) || !loadModules(error) || !line_.open(error))
        return false;
    for (const Fault& fault : options_.faults)
        line_.bus().faults().add(fault);
    return link_.publish(options_.portsDir, options_.name, line_.devicePath(), error);
}

QString SimSession::readyLine() const { return options_.name + QLatin1Char('\t') + line_.devicePath(); }

bool SimSession::loadModules(QString* error)
{
    QList<ModuleRecord> saved;
    if (!options_.stateFile.isEmpty() && QFileInfo::exists(options_.stateFile)
        && !loadState(options_.stateFile, saved, error))
        return false;
    // Once a line has kept its state, that state is the line: a module that
    // took a new address must not come back at its old one beside itself.
    if (!saved.isEmpty()) {
        for (const ModuleRecord& record : saved)
            line_.bus().addModule(SimModule(record, options_.seed));
        return true;
    }
    for (const ModuleAt& module : options_.modules)
        line_.bus().addModule(SimModule(simulatedModule(module.address, module.modelCode, options_.seed), options_.seed));
    return true;
}

void SimSession::saveModules()
{
    if (options_.stateFile.isEmpty())
        return;
    QString error;
    if (!saveState(options_.stateFile, line_.bus().memories(), &error))
        qWarning("velmor-sim: %s", qPrintable(error));
}

}  // namespace velmor::sim
