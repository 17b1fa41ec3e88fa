// The history's cost, on an SQLite file and on a PostgreSQL server the
// benchmark starts itself: a whole read of a 16-channel module at the real
// 4800 baud with its entry recorded after it, over the same read without
// (target at most 1.01); the history window opening on a store of 100,000
// entries of one module (target at most 0.3 s) and comparing two of them
// (target at most 50 ms); and the store's size per entry.
#include "config/image_layout.h"
#include "history/history_recorder.h"
#include "history/history_schema.h"
#include "link/operations.h"
#include "postgres_cluster.h"
#include "support/sim_process.h"
#include "ui/file_chooser.h"
#include "ui/history_dialog.h"
#include "wire_time.h"

#include <QApplication>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace velmor;
using namespace velmor::bench;
using namespace velmor::testing;

namespace {

constexpr int kReads = 3;
constexpr int kEntries = 100000;

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double secondsOf(const std::function<void()>& work)
{
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1e9;
}

// Whole reads with and without their entry recorded after them, alternating.
void readWithAndWithout(const QString& device, const HistoryTarget& target, const QString& queue)
{
    LineFlows line(device);
    HistoryRecorder recorder(target, queue);
    QList<double> without, with;
    for (int run = 0; run < kReads; ++run) {
        without << secondsOf([&] { line.operations.readEverything(); });
        with << secondsOf([&] {
            line.operations.readEverything();
            recorder.record(entryNow(EntryKind::Read, &line.state.current(), device, 1));
        });
    }
    std::printf("  whole read %.3f s, with its entry recorded %.3f s: ratio %.4f (target at most 1.01)\n",
                median(without), median(with), median(with) / median(without));
}

// The module's entries, written in one transaction as months of a lab would leave them.
bool fill(const HistoryTarget& target, const ModuleRecord& module)
{
    HistoryStore store;
    QString error;
    if (!store.open(target, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return false;
    }
    store.close();
    bool ok = false;
    {
        QSqlDatabase db;
        if (target.kind == HistoryTarget::Kind::SQLite) {
            db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("fill"));
            db.setDatabaseName(target.path);
        } else {
            db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("fill"));
            db.setHostName(target.host);
            db.setPort(target.port);
            db.setUserName(target.user);
            db.setDatabaseName(target.database);
        }
        ok = db.open() && db.transaction();
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO entries (time_utc, workstation, os_user, program_version, line, address, "
                                 "module_number, model, kind, outcome, detail, image, sha256) "
                                 "VALUES (?, 'bench1', 'lab', '0.1.0', 'SIM1', 1, ?, ?, 'read', 'done', '', ?, ?)"));
        const HistoryEntry entry = entryNow(EntryKind::Read, &module, QStringLiteral("SIM1"), 1);
        const QDateTime start = QDateTime::currentDateTimeUtc().addSecs(-kEntries * 60LL);
        for (int i = 0; ok && i < kEntries; ++i) {
            q.addBindValue(start.addSecs(i * 60LL).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ")));
            q.addBindValue(entry.moduleNumber);
            q.addBindValue(entry.model);
            q.addBindValue(entry.image);
            q.addBindValue(entry.imageHash());
            ok = q.exec();
        }
        if (!ok)
            std::fprintf(stderr, "%s\n", qPrintable(q.lastError().text()));
        ok = ok && db.commit();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("fill"));
    return ok;
}

struct NoFiles : FileChooser {
    QString openFileName() override { return {}; }
    QString saveFileName() override { return {}; }
    QString reportFileName(const QString&, const QString&) override { return {}; }
};

void windowOn(const HistoryTarget& target, const ModuleRecord& module)
{
    SetupState state;
    state.reset();
    state.languageMode = 2;
    state.current() = module;
    NoFiles files;
    std::unique_ptr<HistoryDialog> dialog;
    const double open = secondsOf([&] {
        dialog = std::make_unique<HistoryDialog>(target, state, files, nullptr);
        dialog->show();
        QApplication::processEvents();
    });
    std::printf("  the history window opened on %d entries (%lld listed, the rest as the list scrolls) in %.3f s "
                "(target at most 0.3 s)\n",
                kEntries, static_cast<long long>(dialog->entries().size()), open);
    auto* list = dialog->findChild<QTableView*>(QStringLiteral("lstHistory"));
    auto* rows = list->model();
    const double scrolled = secondsOf([&] {
        list->scrollToBottom();
        QApplication::processEvents();
    });
    std::printf("  scrolled to the end of the list once: %.3f s, %d rows listed\n", scrolled, rows->rowCount());
    const auto model = list->model();
    list->selectionModel()->select(model->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    list->selectionModel()->select(model->index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    const double compare = secondsOf([&] {
        dialog->compareChosen();
        QApplication::processEvents();
    });
    std::printf("  two entries compared in %.1f ms (target at most 50 ms)\n", compare * 1000);
}

void sizePerEntry(const HistoryTarget& target)
{
    qint64 bytes = 0;
    if (target.kind == HistoryTarget::Kind::SQLite) {
        for (const char* suffix : {"", "-wal"})
            bytes += QFileInfo(target.path + QLatin1String(suffix)).size();
    } else {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("size"));
            db.setHostName(target.host);
            db.setPort(target.port);
            db.setUserName(target.user);
            db.setDatabaseName(target.database);
            QSqlQuery q(db);
            if (db.open() && q.exec(QStringLiteral("SELECT pg_total_relation_size('entries')")) && q.next())
                bytes = q.value(0).toLongLong();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("size"));
    }
    std::printf("  the store holds %.1f MB: %.0f bytes per entry (the image is %d)\n", bytes / 1e6,
                static_cast<double>(bytes) / kEntries, kStoredBytes);
}

}  // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    SimProcess sim;
    if (!sim.start({QStringLiteral("--module"), QStringLiteral("1:TM-C16"), QStringLiteral("--log"), QStringLiteral("/dev/null")})) {
        std::fprintf(stderr, "velmor-sim: %s\n", qPrintable(sim.error()));
        return 1;
    }
    PostgresCluster cluster;
    if (!cluster.failure().isEmpty()) {
        std::fprintf(stderr, "PostgreSQL: %s\n", qPrintable(cluster.failure()));
        return 1;
    }
    QTemporaryDir folder;
    const std::optional<HistoryTarget> shared = cluster.freshDatabase(QStringLiteral("bench"));
    const QList<std::pair<const char*, HistoryTarget>> backends{
        {"SQLite", *historyTargetNamed(folder.filePath(QStringLiteral("history.sqlite")))},
        {"PostgreSQL", *shared},
    };
    ModuleRecord module = defaultModule();
    module.moduleNumber = 9319;
    for (const auto& [name, target] : backends) {
        std::printf("\n%s (%s)\n", name, qPrintable(target.text()));
        readWithAndWithout(sim.devicePath(), target, folder.filePath(QStringLiteral("queue.jsonl")));
        const double filled = secondsOf([&, &target = target] { fill(target, module); });
        std::printf("  %d entries written in one transaction in %.1f s\n", kEntries, filled);
        windowOn(target, module);
        sizePerEntry(target);
    }
    return 0;
}
