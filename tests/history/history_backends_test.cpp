// The history's store on both backends, through the same test code: an
// SQLite file, and a PostgreSQL database on a server the test starts itself.
#include "history/history_schema.h"
#include "history/history_store.h"
#include "model/models.h"
#include "postgres_cluster.h"

#include <QProcess>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

Q_DECLARE_METATYPE(velmor::HistoryTarget)

namespace {

HistoryEntry entryOf(EntryKind kind, int modelCode, int number, const QString& line, int address)
{
    ModuleRecord record = defaultModule();
    recognizeModel(record, modelCode);
    record.moduleNumber = number;
    return entryNow(kind, kind == EntryKind::Search || kind == EntryKind::Failure ? nullptr : &record, line, address);
}

// The store's own database, opened by hand as an older program would.
QSqlDatabase rawDatabase(const HistoryTarget& target, const QString& name)
{
    QSqlDatabase db;
    if (target.kind == HistoryTarget::Kind::SQLite) {
        db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(target.path);
    } else {
        db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        db.setHostName(target.host);
        db.setPort(target.port);
        db.setUserName(target.user);
        db.setDatabaseName(target.database);
    }
    db.open();
    return db;
}

int schemaVersionOf(const HistoryTarget& target)
{
    int version = -1;
    {
        QSqlDatabase db = rawDatabase(target, QStringLiteral("version"));
        QSqlQuery q(db);
        if (q.exec(QStringLiteral("SELECT MAX(version) FROM schema_version")) && q.next())
            version = q.value(0).toInt();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("version"));
    return version;
}

}  // namespace

class HistoryBackendsTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void aStoreOfAnOlderSchemaIsMigratedAndKeepsItsEntries_data() { backends(); }
    void aStoreOfAnOlderSchemaIsMigratedAndKeepsItsEntries();
    void everyKindOfEntryComesBack_data() { backends(); }
    void everyKindOfEntryComesBack();
    void aModuleIsKnownAcrossLinesAndAddresses_data() { backends(); }
    void aModuleIsKnownAcrossLinesAndAddresses();
    void twoWorkstationsRecordAThousandEntriesEachAtOnce_data() { backends(); }
    void twoWorkstationsRecordAThousandEntriesEachAtOnce();

private:
    // A fresh store of each backend for each test row.
    void backends();

    QTemporaryDir folder_;
    std::unique_ptr<PostgresCluster> cluster_;
    int stores_ = 0;
};

void HistoryBackendsTest::initTestCase()
{
    cluster_ = std::make_unique<PostgresCluster>();
    QVERIFY2(cluster_->failure().isEmpty(), qPrintable(cluster_->failure()));
}

void HistoryBackendsTest::backends()
{
    QTest::addColumn<HistoryTarget>("target");
    const QString name = QStringLiteral("store%1").arg(++stores_);
    QTest::newRow("SQLite") << *historyTargetNamed(folder_.filePath(name + QStringLiteral(".sqlite")));
    const std::optional<HistoryTarget> database = cluster_->freshDatabase(name);
    QVERIFY2(database, qPrintable(cluster_->failure()));
    QTest::newRow("PostgreSQL") << *database;
}

void HistoryBackendsTest::aStoreOfAnOlderSchemaIsMigratedAndKeepsItsEntries()
{
    QFETCH(HistoryTarget, target);
    QString error;
    {
        QSqlDatabase db = rawDatabase(target, QStringLiteral("older"));
        QVERIFY(db.isOpen());
        QVERIFY2(migrateHistory(db, &error, 1), qPrintable(error));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("older"));
    QCOMPARE(schemaVersionOf(target), 1);
    HistoryEntry kept = entryOf(EntryKind::Read, kTmB8, 9319, QStringLiteral("SIM1"), 7);
    {
        // Written while the store is still at version 1: no migration yet.
        QSqlDatabase db = rawDatabase(target, QStringLiteral("older"));
        QSqlQuery q(db);
        QVERIFY(q.exec(QStringLiteral("INSERT INTO entries (time_utc, workstation, os_user, program_version, line, "
                                      "address, module_number, model, kind, outcome, detail, image, sha256) VALUES "
                                      "('2026-01-02T03:04:05.000Z', 'old', 'lab', '0.0.9', 'SIM1', 7, 9319, 'TM-B8', "
                                      "'read', 'done', '', '', '')")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("older"));

    HistoryStore store;
    QVERIFY2(store.open(target, &error), qPrintable(error));
    QCOMPARE(schemaVersionOf(target), kHistorySchemaVersion);
    const QList<HistoryEntry> found = store.find({}, &error);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().workstation, QStringLiteral("old"));
    QCOMPARE(found.first().version, QStringLiteral("0.0.9"));
    QVERIFY(store.add(kept, &error));
    QCOMPARE(store.find({}, &error).size(), 2);
}

void HistoryBackendsTest::everyKindOfEntryComesBack()
{
    QFETCH(HistoryTarget, target);
    HistoryStore store;
    QString error;
    QVERIFY2(store.open(target, &error), qPrintable(error));
    QList<HistoryEntry> added;
    for (EntryKind kind : {EntryKind::Read, EntryKind::Write, EntryKind::Balance, EntryKind::Search, EntryKind::Save,
                           EntryKind::Open, EntryKind::Failure}) {
        HistoryEntry entry = entryOf(kind, kTmC16, 41, QStringLiteral("SIM2"), 3);
        entry.detail = kindName(kind) + QStringLiteral(" 细节");
        if (kind == EntryKind::Failure)
            entry.outcome = QStringLiteral("no reply");
        QVERIFY2(store.add(entry, &error), qPrintable(error));
        added.prepend(entry);
    }
    QCOMPARE(store.find({}, &error), added);
    for (const HistoryEntry& entry : added) {
        HistoryFilter kind;
        kind.kind = entry.kind;
        QCOMPARE(store.find(kind, &error), QList<HistoryEntry>{entry});
    }
}

void HistoryBackendsTest::aModuleIsKnownAcrossLinesAndAddresses()
{
    QFETCH(HistoryTarget, target);
    HistoryStore store;
    QString error;
    QVERIFY(store.open(target, &error));
    QList<HistoryEntry> added{entryOf(EntryKind::Read, kTmB8, 9319, QStringLiteral("SIM1"), 7),
                              entryOf(EntryKind::Write, kTmB8, 9319, QStringLiteral("tcp://10.0.0.5:4001"), 2),
                              entryOf(EntryKind::Read, kTmB8, 9320, QStringLiteral("SIM1"), 7),
                              entryOf(EntryKind::Read, kTmC16, 9319, QStringLiteral("SIM1"), 8)};
    for (HistoryEntry& entry : added)
        QVERIFY(store.add(entry, &error));
    HistoryFilter module;
    module.model = QStringLiteral("TM-B8");
    module.moduleNumber = 9319;
    QCOMPARE(store.find(module, &error), (QList<HistoryEntry>{added[1], added[0]}));
    HistoryFilter place;
    place.line = QStringLiteral("SIM1");
    place.address = 7;
    QCOMPARE(store.find(place, &error), (QList<HistoryEntry>{added[2], added[0]}));
}

void HistoryBackendsTest::twoWorkstationsRecordAThousandEntriesEachAtOnce()
{
    QFETCH(HistoryTarget, target);
    {
        // The tables first, as the first program to reach the store makes them.
        HistoryStore store;
        QString error;
        QVERIFY(store.open(target, &error));
    }
    QProcess bench1, bench2;
    for (QProcess* p : {&bench1, &bench2})
        p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    bench1.start(QStringLiteral(VELMOR_HISTORY_LOAD),
                 {target.text(), QStringLiteral("1000"), QStringLiteral("bench1"), folder_.filePath(QStringLiteral("q1"))});
    bench2.start(QStringLiteral(VELMOR_HISTORY_LOAD),
                 {target.text(), QStringLiteral("1000"), QStringLiteral("bench2"), folder_.filePath(QStringLiteral("q2"))});
    for (QProcess* p : {&bench1, &bench2}) {
        QVERIFY(p->waitForFinished(300000));
        QCOMPARE(p->exitCode(), 0);
    }
    HistoryStore store;
    QString error;
    QVERIFY(store.open(target, &error));
    const QList<HistoryEntry> all = store.find({}, &error);
    QCOMPARE(all.size(), 2000);
    QSet<QPair<QString, int>> seen;
    for (const HistoryEntry& e : all)
        seen.insert({e.workstation, e.moduleNumber});
    QCOMPARE(seen.size(), 2000);  // none twice
}

QTEST_MAIN(HistoryBackendsTest)
#include "history_backends_test.moc"
