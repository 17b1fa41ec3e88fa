// history_load TARGET COUNT WORKSTATION QUEUE: records COUNT reads into the
// store, as one workstation's program would, module numbers 0 to COUNT-1.
// Two of these at once stand for two workstations sharing a history.
#include "history/history_recorder.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
    using namespace velmor;
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const std::optional<HistoryTarget> target = args.size() == 5 ? historyTargetNamed(args[1]) : std::nullopt;
    if (!target) {
        std::fputs("usage: history_load TARGET COUNT WORKSTATION QUEUE\n", stderr);
        return 2;
    }
    HistoryRecorder recorder(*target, args[4]);
    ModuleRecord record = defaultModule();
    for (int i = 0; i < args[2].toInt(); ++i) {
        record.moduleNumber = i;
        HistoryEntry entry = entryNow(EntryKind::Read, &record, QStringLiteral("SIM1"), 1);
        entry.workstation = args[3];
        if (const RecordNotice notice = recorder.record(entry); notice.kind != RecordNotice::Kind::None) {
            std::fprintf(stderr, "entry %d: %s\n", i, qPrintable(recordNoticeText(notice, Language::English)));
            return 1;
        }
    }
    return 0;
}
