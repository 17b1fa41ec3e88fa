#include "edit_testkit.h"

#include "model/models.h"

#include <QStringList>
#include <QTest>

namespace velmor {

namespace {

QString describeCell(const CellUpdate& cell)
{
    return QStringLiteral("(%1, %2, \"%3\")").arg(cell.row).arg(cell.column).arg(cell.text);
}

}  // namespace

char* toString(const CellUpdate& cell)
{
    return QTest::toString(describeCell(cell));
}

char* toString(const EditResult& result)
{
    QStringList cells;
    for (const CellUpdate& cell : result.cells)
        cells << describeCell(cell);
    return QTest::toString(QStringLiteral("stored %1, cells [%2]").arg(result.stored).arg(cells.join(u", ")));
}

}  // namespace velmor

namespace velmor::testing {

ModuleRecord moduleOf(int modelCode, std::initializer_list<CodeSetting> codes)
{
    ModuleRecord module = defaultModule();
    recognizeModel(module, modelCode);
    module.modelCode = static_cast<quint8>(modelCode);
    for (const CodeSetting& code : codes)
        module.*code.first = static_cast<quint8>(code.second);
    return module;
}

ChannelRecord& channel(ModuleRecord& module, int index)
{
    return module.channels[static_cast<size_t>(index)];
}

QList<CellUpdate> cellsInRows(int first, int last, int column, const QString& text)
{
    QList<CellUpdate> cells;
    for (int row = first; row <= last; ++row)
        cells << CellUpdate{row, column, text};
    return cells;
}

EditResult storedInRows(int first, int last, int column, const QString& text)
{
    return EditResult{cellsInRows(first, last, column, text), true};
}

}  // namespace velmor::testing
