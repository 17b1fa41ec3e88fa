#pragma once

// What the edit tests share: readable failure messages for cell updates, the
// model codes they name, and modules and cell lists built from a few numbers.
#include "edit/cell_updates.h"
#include "edit/grid_cells.h"
#include "model/models.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QList>
#include <QMetaType>
#include <QString>

#include <initializer_list>
#include <utility>

namespace velmor {

// Failure messages of QCOMPARE (found by QTest through argument-dependent lookup).
char* toString(const CellUpdate& cell);
char* toString(const EditResult& result);

}  // namespace velmor

Q_DECLARE_METATYPE(velmor::Language)
Q_DECLARE_METATYPE(velmor::ModuleRecord)

namespace velmor::testing {

// A capability code of the module record and the value to give it.
using CodeSetting = std::pair<quint8 ModuleRecord::*, int>;

// A default module of the given model with some capability codes changed.
ModuleRecord moduleOf(int modelCode, std::initializer_list<CodeSetting> codes = {});

// Channel `index` (0-based, so grid row index + 1) of the module.
ChannelRecord& channel(ModuleRecord& module, int index);

// One column of rows first..last (first <= last), every cell showing `text`.
QList<CellUpdate> cellsInRows(int first, int last, int column, const QString& text);
// The same cells from an edit that stored into the record.
EditResult storedInRows(int first, int last, int column, const QString& text);

}  // namespace velmor::testing
