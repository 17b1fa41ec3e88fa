// A history that several workstations share, on a real PostgreSQL server the
// test starts itself: what one writes the other finds, the tables are made
// once, and entries wait while the server is down and follow when it is back.
#include "history/history_recorder.h"
#include "history/history_schema.h"
#include "model/models.h"
#include "postgres_cluster.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

HistoryEntry readAt(const QString& workstation, int number)
{
    ModuleRecord record = defaultModule();
    recognizeModel(record, kTmB8);
    record.moduleNumber = number;
    HistoryEntry entry = entryNow(EntryKind::Read, &record, QStringLiteral("SIM1"), 2);
    entry.workstation = workstation;
    return entry;
}

QList<int> numbersIn(const HistoryStore& store)
{
    QString error;
    QList<int> out;
    for (const HistoryEntry& entry : store.find({}, &error))
        out.prepend(entry.moduleNumber);
    return out;
}

}  // namespace

class PostgresHistoryTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void twoWorkstationsShareOneHistory();
    void entriesWaitWhileTheServerIsDownAndFollowWhenItIsBack();
    void cleanupTestCase();

private:
    std::unique_ptr<PostgresCluster> cluster_;
};

void PostgresHistoryTest::initTestCase()
{
    cluster_ = std::make_unique<PostgresCluster>();
    QVERIFY2(cluster_->failure().isEmpty(), qPrintable(cluster_->failure()));
}

void PostgresHistoryTest::twoWorkstationsShareOneHistory()
{
    HistoryStore bench1, bench2;
    QString error;
    QVERIFY2(bench1.open(cluster_->target(), &error), qPrintable(error));
    QVERIFY2(bench2.open(cluster_->target(), &error), qPrintable(error));
    HistoryEntry first = readAt(QStringLiteral("bench1"), 9319);
    QVERIFY2(bench1.add(first, &error), qPrintable(error));
    const std::optional<HistoryEntry> seen = bench2.entry(first.id, &error);
    QVERIFY(seen);
    QCOMPARE(*seen, first);
    HistoryEntry second = readAt(QStringLiteral("bench2"), 9320);
    QVERIFY(bench2.add(second, &error));
    HistoryFilter module;
    module.model = QStringLiteral("TM-B8");
    module.moduleNumber = 9320;
    const QList<HistoryEntry> found = bench1.find(module, &error);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().workstation, QStringLiteral("bench2"));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("look"));
        db.setHostName(QStringLiteral("127.0.0.1"));
        db.setPort(cluster_->port());
        db.setUserName(QStringLiteral("velmor"));
        db.setDatabaseName(QStringLiteral("velmor"));
        QVERIFY(db.open());
        QSqlQuery q(db);
        QVERIFY(q.exec(QStringLiteral("SELECT COUNT(*), MAX(version) FROM schema_version")) && q.next());
        QCOMPARE(q.value(0).toInt(), kHistorySchemaVersion);  // one row per migration
        QCOMPARE(q.value(1).toInt(), kHistorySchemaVersion);
    }
    QSqlDatabase::removeDatabase(QStringLiteral("look"));
}

void PostgresHistoryTest::entriesWaitWhileTheServerIsDownAndFollowWhenItIsBack()
{
    QTemporaryDir folder;
    const QString queue = folder.filePath(QStringLiteral("queue.jsonl"));
    HistoryRecorder recorder(cluster_->target(), queue);
    QString error;
    QVERIFY(recorder.store(&error));
    const QList<int> before = numbersIn(*recorder.store(&error));
    QCOMPARE(recorder.record(readAt(QStringLiteral("bench1"), 1)).kind, RecordNotice::Kind::None);

    // Fifty reads while the server is down: the first tells the outage.
    QVERIFY2(cluster_->stop(), qPrintable(cluster_->failure()));
    QList<int> expected = before + QList<int>{1};
    for (int number = 2; number < 52; ++number) {
        const RecordNotice notice = recorder.record(readAt(QStringLiteral("bench1"), number));
        QCOMPARE(notice.kind, number == 2 ? RecordNotice::Kind::OutageBegan : RecordNotice::Kind::None);
        if (number == 2)
            QCOMPARE(notice.where, queue);
        expected << number;
    }
    QCOMPARE(HistoryQueue(queue).entries().size(), 50);

    QVERIFY2(cluster_->start(), qPrintable(cluster_->failure()));
    QCOMPARE(recorder.record(readAt(QStringLiteral("bench1"), 52)).kind, RecordNotice::Kind::None);
    QCOMPARE(numbersIn(*recorder.store(&error)), expected + QList<int>{52});
    QVERIFY(HistoryQueue(queue).isEmpty());
}

void PostgresHistoryTest::cleanupTestCase()
{
    QVERIFY(cluster_->stop());
}

QTEST_MAIN(PostgresHistoryTest)
#include "postgres_history_test.moc"
