#pragma once

#include "model/module_table.h"

#include <QList>
#include <QString>

namespace velmor::sim {

// The modules' memory kept between runs, as a module keeps it across power
// cycles: {"modules": [record, ...]} with the records in their JSON form.

// False with a message when the file cannot be read or is not such a file.
bool loadState(const QString& path, QList<ModuleRecord>& modules, QString* error);
// Replaces the file whole, so that a crash never leaves half a state.
bool saveState(const QString& path, const QList<ModuleRecord>& modules, QString* error);

}  // namespace velmor::sim
