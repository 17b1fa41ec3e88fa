#include "flow_entries.h"

#include "model/fixed_text.h"

#include <QFileInfo>

namespace velmor {

std::optional<HistoryEntry> flowEntry(const ModuleRecord& module, const QString& line, std::optional<EntryKind> kind,
                                      const QString& failure, const QString& flow)
{
    if (failure.isEmpty()) {
        if (!kind)
            return std::nullopt;
        return entryNow(*kind, &module, line, module.busAddress);
    }
    HistoryEntry failed = entryNow(EntryKind::Failure, nullptr, line, module.busAddress);
    failed.outcome = failure;
    failed.detail = flow;
    return failed;
}

HistoryEntry fileEntry(EntryKind kind, const ModuleRecord& module, const QString& line, const QString& path)
{
    HistoryEntry entry = entryNow(kind, &module, kind == EntryKind::Open ? QString() : line, module.busAddress);
    entry.detail = QFileInfo(path).absoluteFilePath();
    return entry;
}

QList<HistoryEntry> searchEntries(const QStringList& lines, const QList<FoundModule>& found, const QString& failure)
{
    QList<HistoryEntry> entries;
    QStringList names;
    for (const FoundModule& f : found) {
        names << QStringLiteral("%1:%2 %3 %4")
                     .arg(f.line)
                     .arg(f.module->busAddress)
                     .arg(trimmedText(f.module->modelName))
                     .arg(f.module->moduleNumber);
        if (f.readWholly)
            entries << entryNow(EntryKind::Read, f.module, f.line, f.module->busAddress);
    }
    HistoryEntry search = entryNow(EntryKind::Search, nullptr, lines.join(QStringLiteral(", ")), -1);
    search.detail = names.join(QStringLiteral(", "));
    search.outcome = !failure.isEmpty() ? failure : found.isEmpty() ? QStringLiteral("none found") : kOutcomeDone;
    entries << search;
    return entries;
}

}  // namespace velmor
