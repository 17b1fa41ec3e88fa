// Recording never fails the operator's command: entries wait in the queue
// while the store is away, the outage is told once, and they go into the
// store in order once it is back.
#include "history/history_recorder.h"
#include "model/models.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;

namespace {

HistoryEntry readOf(int number)
{
    ModuleRecord record = defaultModule();
    record.moduleNumber = number;
    return entryNow(EntryKind::Read, &record, QStringLiteral("SIM1"), 1);
}

QList<int> numbersIn(HistoryStore& store)
{
    QString error;
    QList<int> out;
    for (const HistoryEntry& entry : store.find({}, &error))
        out.prepend(entry.moduleNumber);  // oldest first
    return out;
}

// A file where the store's folder would have to be: the store cannot be made.
void block(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

}  // namespace

class HistoryRecorderTest : public QObject {
    Q_OBJECT
private slots:
    void anEntryGoesStraightIntoAReachableStore();
    void anOutageIsToldOnceAndItsEntriesFollowInOrder();
    void anEntryNeitherStoredNorQueuedIsTold();
    void aDamagedStoreIsToldOnce();
    void offWritesNothingAnywhere();
};

void HistoryRecorderTest::anEntryGoesStraightIntoAReachableStore()
{
    QTemporaryDir folder;
    HistoryRecorder recorder(*historyTargetNamed(folder.filePath(QStringLiteral("history.sqlite"))),
                             folder.filePath(QStringLiteral("queue.jsonl")));
    QCOMPARE(recorder.record(readOf(1)).kind, RecordNotice::Kind::None);
    QString error;
    QCOMPARE(numbersIn(*recorder.store(&error)), QList<int>{1});
    QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("queue.jsonl"))));
}

void HistoryRecorderTest::anOutageIsToldOnceAndItsEntriesFollowInOrder()
{
    QTemporaryDir folder;
    const QString blocker = folder.filePath(QStringLiteral("away"));
    block(blocker);
    const QString queue = folder.filePath(QStringLiteral("queue.jsonl"));
    HistoryRecorder recorder(*historyTargetNamed(blocker + QStringLiteral("/history.sqlite")), queue);
    const RecordNotice first = recorder.record(readOf(1));
    QCOMPARE(first.kind, RecordNotice::Kind::OutageBegan);
    QCOMPARE(first.where, queue);
    QVERIFY(!first.why.isEmpty());
    QCOMPARE(recorder.record(readOf(2)).kind, RecordNotice::Kind::None);
    // Another program's recorder finds the outage told already.
    HistoryRecorder other(recorder.target(), queue);
    QCOMPARE(other.record(readOf(3)).kind, RecordNotice::Kind::None);
    QCOMPARE(HistoryQueue(queue).entries().size(), 3);

    QVERIFY(QFile::remove(blocker));
    QCOMPARE(recorder.record(readOf(4)).kind, RecordNotice::Kind::None);
    QString error;
    QCOMPARE(numbersIn(*recorder.store(&error)), (QList<int>{1, 2, 3, 4}));
    QVERIFY(HistoryQueue(queue).isEmpty());
    // The next outage is told again.
    recorder.store(&error)->close();
    QVERIFY(QFile::rename(blocker + QStringLiteral("/history.sqlite"), folder.filePath(QStringLiteral("kept.sqlite"))));
    QVERIFY(QDir(blocker).removeRecursively());
    block(blocker);
    QCOMPARE(recorder.record(readOf(5)).kind, RecordNotice::Kind::OutageBegan);
}

void HistoryRecorderTest::anEntryNeitherStoredNorQueuedIsTold()
{
    QTemporaryDir folder;
    const QString blocker = folder.filePath(QStringLiteral("away"));
    block(blocker);
    HistoryRecorder recorder(*historyTargetNamed(blocker + QStringLiteral("/history.sqlite")),
                             blocker + QStringLiteral("/queue.jsonl"));
    const RecordNotice notice = recorder.record(readOf(1));
    QCOMPARE(notice.kind, RecordNotice::Kind::NotKept);
    QCOMPARE(notice.where, blocker + QStringLiteral("/queue.jsonl"));
}

void HistoryRecorderTest::aDamagedStoreIsToldOnce()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("history.sqlite"));
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(4096, 'x'));
    }
    HistoryRecorder recorder(*historyTargetNamed(path), folder.filePath(QStringLiteral("queue.jsonl")));
    const RecordNotice notice = recorder.record(readOf(1));
    QCOMPARE(notice.kind, RecordNotice::Kind::MovedAside);
    QVERIFY(notice.where.startsWith(path + QStringLiteral(".damaged-")));
    QVERIFY(QFile::exists(notice.where));
    QCOMPARE(recorder.record(readOf(2)).kind, RecordNotice::Kind::None);
    QString error;
    QCOMPARE(numbersIn(*recorder.store(&error)), (QList<int>{1, 2}));
}

void HistoryRecorderTest::offWritesNothingAnywhere()
{
    QTemporaryDir folder;
    HistoryRecorder recorder(*historyTargetNamed(QStringLiteral("off")), folder.filePath(QStringLiteral("queue.jsonl")));
    QVERIFY(recorder.isOff());
    QCOMPARE(recorder.record(readOf(1)).kind, RecordNotice::Kind::None);
    QString error;
    QVERIFY(!recorder.store(&error));
    QVERIFY(QDir(folder.path()).isEmpty());
}

QTEST_MAIN(HistoryRecorderTest)
#include "history_recorder_test.moc"
