// velmor-cli keeps what it did in the history, lists it, writes an entry
// back as a configuration file and compares setups; a store that cannot be
// reached never fails a command.
#include "cli_runner.h"
#include "config/image_layout.h"
#include "history/history_store.h"
#include "support/sim_process.h"
#include "support/small_disk.h"
#include "../history/history_reading.h"
#include "../history/postgres_cluster.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

QStringList simArguments(const QStringList& modules, const QStringList& extra = {})
{
    QStringList arguments{QStringLiteral("--fast"), QStringLiteral("--seed"), QStringLiteral("1")};
    for (const QString& module : modules)
        arguments << QStringLiteral("--module") << module;
    return arguments + extra;
}

QString sha256Of(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

}  // namespace

class CliHistoryTest : public QObject {
    Q_OBJECT
private slots:
    void everyFlowAndFileIsKept();
    void aFailedReadIsAnEventWithoutAnImage();
    void historyListsFiltersAndExportsTheBytesRecorded();
    void diffTellsTheCellsAndTheGroupsAWriteSends();
    void diffReadsALiveModuleAndAnEntry();
    void noHistoryWritesNothingAndABadStoreIsAUsageError();
    void anUnreachableStoreNeverFailsACommandAndIsToldOnce();
    void aSharedPostgresHistoryIsSeenByAnotherWorkstation();
    void fiftyReadsOnAFullDiskAllSucceedAndArriveLater();
    void diffOfAPortThatWillNotOpenOrAFileThatCannotBeReadExitsThreeOrFour();
};

void CliHistoryTest::everyFlowAndFileIsKept()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-B8"), QStringLiteral("4:TM-C16")})));
    QTemporaryDir dir;
    const QString store = dir.filePath(QStringLiteral("history.sqlite"));
    const QString saved = dir.filePath(QStringLiteral("m1.cfg"));
    const auto cli = [&](QStringList arguments) {
        return runCli(QStringList{QStringLiteral("--history"), store} + arguments, sim.portsDir());
    };
    QCOMPARE(cli({QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"),
                  QStringLiteral("1"), QStringLiteral("--save"), saved})
                 .exitCode,
             0);
    QCOMPARE(cli({QStringLiteral("write"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"),
                  QStringLiteral("1"), QStringLiteral("--config"), saved})
                 .exitCode,
             0);
    QCOMPARE(cli({QStringLiteral("balance"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"),
                  QStringLiteral("4")})
                 .exitCode,
             0);
    QCOMPARE(cli({QStringLiteral("search")}).exitCode, 0);
    QCOMPARE(cli({QStringLiteral("show"), saved}).exitCode, 0);

    const QList<HistoryEntry> entries = entriesIn(store);
    QCOMPARE(kindsOf(entries), (QStringList{"read", "save", "write", "balance", "read", "read", "search", "open"}));
    const QByteArray file = fileBytes(saved);
    for (int i : {0, 1, 2, 7}) {
        QCOMPARE(entries[i].model, QStringLiteral("TM-B8"));
        QCOMPARE(entries[i].address, 1);
        QCOMPARE(entries[i].image, file);  // what was read is what was saved, written and opened
        QCOMPARE(entries[i].imageHash(), sha256Of(file));
        QCOMPARE(entries[i].outcome, QStringLiteral("done"));
    }
    QCOMPARE(entries[0].line, sim.portName());
    QCOMPARE(entries[1].detail, saved);
    QCOMPARE(entries[7].line, QString());  // a file's line is not this machine's
    QCOMPARE(entries[3].model, QStringLiteral("TM-C16"));
    QCOMPARE(entries[3].image.size(), kStoredBytes);
    QCOMPARE(entries[6].line, sim.portName());
    QCOMPARE(entries[6].image, QByteArray());
    QVERIFY2(entries[6].detail.contains(QStringLiteral(":1 TM-B8 ")) && entries[6].detail.contains(QStringLiteral(":4 TM-C16 ")),
             qPrintable(entries[6].detail));
    for (const HistoryEntry& e : entries) {
        QCOMPARE(e.version, QStringLiteral(VELMOR_VERSION));
        QVERIFY(!e.workstation.isEmpty() && !e.user.isEmpty());
        QVERIFY(qAbs(e.time.secsTo(QDateTime::currentDateTimeUtc())) < 3600);
        QCOMPARE(e.time.timeSpec(), Qt::UTC);
    }
}

void CliHistoryTest::aFailedReadIsAnEventWithoutAnImage()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")})));
    QTemporaryDir dir;
    const QString store = dir.filePath(QStringLiteral("history.sqlite"));
    const CliResult result = runCli({QStringLiteral("--history"), store, QStringLiteral("read"), QStringLiteral("--port"),
                                     sim.portName(), QStringLiteral("--address"), QStringLiteral("9")},
                                    sim.portsDir());
    QCOMPARE(result.exitCode, 1);
    const QList<HistoryEntry> entries = entriesIn(store);
    QCOMPARE(entries.size(), 1);
    QCOMPARE(entries[0].kind, EntryKind::Failure);
    QCOMPARE(entries[0].outcome, QStringLiteral("no reply"));
    QCOMPARE(entries[0].detail, QStringLiteral("read"));
    QCOMPARE(entries[0].address, 9);
    QCOMPARE(entries[0].line, sim.portName());
    QCOMPARE(entries[0].image, QByteArray());
    QCOMPARE(entries[0].moduleNumber, -1);
}

void CliHistoryTest::historyListsFiltersAndExportsTheBytesRecorded()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-B8"), QStringLiteral("2:TM-A4")})));
    QTemporaryDir dir;
    const QString store = dir.filePath(QStringLiteral("history.sqlite"));
    for (const char* address : {"1", "2"})
        QCOMPARE(runCli({QStringLiteral("--history"), store, QStringLiteral("read"), QStringLiteral("--port"), sim.portName(),
                         QStringLiteral("--address"), QLatin1String(address)},
                        sim.portsDir())
                     .exitCode,
                 0);
    const QList<HistoryEntry> entries = entriesIn(store);
    QCOMPARE(entries.size(), 2);

    const CliResult all = runCli({QStringLiteral("--history"), store, QStringLiteral("--json"), QStringLiteral("history")});
    QCOMPARE(all.exitCode, 0);
    const QJsonArray list = QJsonDocument::fromJson(all.out).array();
    QCOMPARE(list.size(), 2);
    QCOMPARE(list[0].toObject().value(QStringLiteral("id")).toInteger(), entries[1].id);  // newest first
    QCOMPARE(list[0].toObject().value(QStringLiteral("sha256")).toString(), entries[1].imageHash());
    QVERIFY(!list[0].toObject().contains(QStringLiteral("image")));

    const CliResult one = runCli({QStringLiteral("--history"), store, QStringLiteral("history"), QStringLiteral("--module"),
                                  QString::number(entries[0].moduleNumber), QStringLiteral("--kind"), QStringLiteral("read")});
    QCOMPARE(one.exitCode, 0);
    const QStringList rows = QString::fromUtf8(one.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0].section(QLatin1Char('\t'), 0, 0), QString::number(entries[0].id));
    QCOMPARE(rows[0].section(QLatin1Char('\t'), 5, 6), QStringLiteral("TM-B8\t%1").arg(entries[0].moduleNumber));
    QCOMPARE(runCli({QStringLiteral("--history"), store, QStringLiteral("history"), QStringLiteral("--kind"),
                     QStringLiteral("reads")})
                 .exitCode,
             2);
    const CliResult later = runCli({QStringLiteral("--history"), store, QStringLiteral("history"), QStringLiteral("--since"),
                                    QDateTime::currentDateTime().addDays(1).toString(Qt::ISODate)});
    QCOMPARE(later.exitCode, 0);
    QVERIFY(later.out.isEmpty());

    const QString out = dir.filePath(QStringLiteral("exported.cfg"));
    QCOMPARE(runCli({QStringLiteral("--history"), store, QStringLiteral("history"), QStringLiteral("export"),
                     QString::number(entries[1].id), QStringLiteral("--out"), out})
                 .exitCode,
             0);
    QCOMPARE(fileBytes(out), entries[1].image);
    const CliResult missing = runCli({QStringLiteral("--history"), store, QStringLiteral("history"), QStringLiteral("export"),
                                      QStringLiteral("999"), QStringLiteral("--out"), out});
    QCOMPARE(missing.exitCode, 2);
    QCOMPARE(missing.errText(), QStringLiteral("The history has no entry 999."));
}

void CliHistoryTest::diffTellsTheCellsAndTheGroupsAWriteSends()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")})));
    QTemporaryDir dir;
    const QString a = dir.filePath(QStringLiteral("a.cfg"));
    const QString b = dir.filePath(QStringLiteral("b.cfg"));
    QCOMPARE(runCli({QStringLiteral("--no-history"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(),
                     QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--save"), a},
                    sim.portsDir())
                 .exitCode,
             0);
    QVERIFY(QFile::copy(a, b));
    const CliResult same = runCli({QStringLiteral("--no-history"), QStringLiteral("diff"), a, b});
    QCOMPARE(same.exitCode, 0);
    QCOMPARE(QString::fromUtf8(same.out).trimmed(), QStringLiteral("The two setups are the same."));

    QCOMPARE(runCli({QStringLiteral("--no-history"), QStringLiteral("edit"), b, QStringLiteral("--channels"),
                     QStringLiteral("6"), QStringLiteral("excitation=4mA")})
                 .exitCode,
             0);
    const CliResult differ = runCli({QStringLiteral("--no-history"), QStringLiteral("diff"), a, b});
    QCOMPARE(differ.exitCode, 1);
    const QStringList lines = QString::fromUtf8(differ.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVERIFY2(lines.first().startsWith(QStringLiteral("channels\tCH6 Excitation\t")), qPrintable(lines.first()));
    QVERIFY2(lines.first().endsWith(QStringLiteral("Open\t4mA")), qPrintable(lines.first()));
    QCOMPARE(lines.last(), QStringLiteral("A write that turns A into B sends: channel group 2."));

    const CliResult json = runCli({QStringLiteral("--no-history"), QStringLiteral("--json"), QStringLiteral("diff"), a, b});
    QCOMPARE(json.exitCode, 1);
    const QJsonObject o = json.json();
    QCOMPARE(o.value(QStringLiteral("same")).toBool(), false);
    QCOMPARE(o.value(QStringLiteral("groupsToSend")).toArray(), QJsonArray{QStringLiteral("channel group 2")});
    const QJsonObject first = o.value(QStringLiteral("differences")).toArray().first().toObject();
    QCOMPARE(first.value(QStringLiteral("name")).toString(), QStringLiteral("CH6 Excitation"));
    QCOMPARE(first.value(QStringLiteral("b")).toString(), QStringLiteral("4mA"));
    QCOMPARE(runCli({QStringLiteral("--no-history"), QStringLiteral("diff"), a}).exitCode, 2);
}

void CliHistoryTest::diffReadsALiveModuleAndAnEntry()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("3:TM-B8")})));
    QTemporaryDir dir;
    const QString store = dir.filePath(QStringLiteral("history.sqlite"));
    QCOMPARE(runCli({QStringLiteral("--history"), store, QStringLiteral("read"), QStringLiteral("--port"), sim.portName(),
                     QStringLiteral("--address"), QStringLiteral("3")},
                    sim.portsDir())
                 .exitCode,
             0);
    const qint64 id = entriesIn(store).first().id;
    const QString live = QStringLiteral("live:%1:3").arg(sim.portName());
    const CliResult same = runCli({QStringLiteral("--history"), store, QStringLiteral("diff"),
                                   QStringLiteral("history:%1").arg(id), live},
                                  sim.portsDir());
    QCOMPARE(same.exitCode, 0);
    // The live module was read wholly first, and that read is kept.
    QCOMPARE(kindsOf(entriesIn(store)), (QStringList{"read", "read"}));
    const CliResult gone = runCli({QStringLiteral("--history"), store, QStringLiteral("diff"),
                                   QStringLiteral("history:%1").arg(id), QStringLiteral("live:%1:4").arg(sim.portName())},
                                  sim.portsDir());
    QCOMPARE(gone.exitCode, 1);
    QCOMPARE(gone.errText(), QStringLiteral("No respond."));
}

void CliHistoryTest::noHistoryWritesNothingAndABadStoreIsAUsageError()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")})));
    QTemporaryDir data;
    // The default store lies in the user's data folder: this test's own.
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    qunsetenv("VELMOR_HISTORY");
    const QStringList read{QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"),
                           QStringLiteral("1")};
    QCOMPARE(runCli(QStringList{QStringLiteral("--no-history")} + read, sim.portsDir()).exitCode, 0);
    qputenv("VELMOR_HISTORY", "off");
    QCOMPARE(runCli(read, sim.portsDir()).exitCode, 0);
    QVERIFY2(QDir(data.path()).isEmpty(), "a run without history wrote into the data folder");
    qunsetenv("VELMOR_HISTORY");
    QCOMPARE(runCli(read, sim.portsDir()).exitCode, 0);
    QCOMPARE(kindsOf(entriesIn(data.filePath(QStringLiteral("velmor/history.sqlite")))), QStringList{"read"});

    const CliResult secret = runCli({QStringLiteral("--history"), QStringLiteral("postgresql://lab:secret@db/velmor"),
                                     QStringLiteral("ports")});
    QCOMPARE(secret.exitCode, 2);
    QVERIFY2(secret.errText().startsWith(QStringLiteral("Not a history store: postgresql://lab:secret@db/velmor.")),
             qPrintable(secret.errText()));
    qputenv("VELMOR_HISTORY", "off");
}

void CliHistoryTest::anUnreachableStoreNeverFailsACommandAndIsToldOnce()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")})));
    QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    const QString blocker = data.filePath(QStringLiteral("away"));
    {
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const QString store = blocker + QStringLiteral("/history.sqlite");
    const QStringList read{QStringLiteral("--history"), store, QStringLiteral("read"), QStringLiteral("--port"),
                           sim.portName(), QStringLiteral("--address"), QStringLiteral("1")};
    const CliResult first = runCli(read, sim.portsDir());
    QCOMPARE(first.exitCode, 0);
    QVERIFY(!first.out.isEmpty());
    const QString queue = data.filePath(QStringLiteral("velmor/history-queue.jsonl"));
    QVERIFY2(first.errText().startsWith(QStringLiteral("The history store cannot be written (")), qPrintable(first.errText()));
    QVERIFY2(first.errText().endsWith(QStringLiteral("entries wait in %1 until it is back.").arg(queue)),
             qPrintable(first.errText()));
    const CliResult second = runCli(read, sim.portsDir());
    QCOMPARE(second.exitCode, 0);
    QCOMPARE(second.errText(), QString());  // the same outage is not told again

    QVERIFY(QFile::remove(blocker));
    QCOMPARE(runCli(read, sim.portsDir()).exitCode, 0);
    const QList<HistoryEntry> entries = entriesIn(store);
    QCOMPARE(kindsOf(entries), (QStringList{"read", "read", "read"}));
    QVERIFY(entries[0].time <= entries[1].time && entries[1].time <= entries[2].time);
    QVERIFY(!QFile::exists(queue));
    qunsetenv("XDG_DATA_HOME");
}

void CliHistoryTest::aSharedPostgresHistoryIsSeenByAnotherWorkstation()
{
    PostgresCluster cluster;
    QVERIFY2(cluster.failure().isEmpty(), qPrintable(cluster.failure()));
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("2:TM-B8")})));
    const QString url = cluster.target().text();
    QCOMPARE(runCli({QStringLiteral("--history"), url, QStringLiteral("read"), QStringLiteral("--port"), sim.portName(),
                     QStringLiteral("--address"), QStringLiteral("2")},
                    sim.portsDir())
                 .exitCode,
             0);
    // Another workstation, by the environment variable.
    qputenv("VELMOR_HISTORY", url.toLocal8Bit());
    const CliResult listed = runCli({QStringLiteral("--json"), QStringLiteral("history"), QStringLiteral("--kind"),
                                     QStringLiteral("read")});
    qputenv("VELMOR_HISTORY", "off");
    QCOMPARE(listed.exitCode, 0);
    const QJsonArray list = QJsonDocument::fromJson(listed.out).array();
    QCOMPARE(list.size(), 1);
    QCOMPARE(list[0].toObject().value(QStringLiteral("model")).toString(), QStringLiteral("TM-B8"));
    QCOMPARE(list[0].toObject().value(QStringLiteral("address")).toInt(), 2);
}

void CliHistoryTest::fiftyReadsOnAFullDiskAllSucceedAndArriveLater()
{
    SmallDisk disk(2 * 1024 * 1024);  // room for the fifty entries once freed
    QVERIFY(disk.isValid());
    if (!disk.mounted())
        QSKIP(qPrintable(QStringLiteral("needs a full disk of its own: %1").arg(disk.how())));
    disk.fill(0);
    SimProcess sim;
    // Fifty reads' traffic would fill the trace's pipe: no trace.
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")}, {QStringLiteral("--log"), QStringLiteral("/dev/null")})));
    QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    const QString store = disk.filePath(QStringLiteral("history.sqlite"));
    const QStringList read{QStringLiteral("--history"), store, QStringLiteral("read"), QStringLiteral("--port"),
                           sim.portName(), QStringLiteral("--address"), QStringLiteral("1")};
    int told = 0;
    for (int i = 0; i < 50; ++i) {
        const CliResult result = runCli(read, sim.portsDir());
        QVERIFY2(result.exitCode == 0, qPrintable(QStringLiteral("read %1: %2").arg(i).arg(result.errText())));
        told += result.errText().startsWith(QStringLiteral("The history store cannot be written ("));
        QVERIFY2(result.errText().isEmpty() || i == 0, qPrintable(result.errText()));
    }
    QCOMPARE(told, 1);

    QVERIFY(QFile::remove(disk.filePath(QStringLiteral("filler"))));  // room again
    QCOMPARE(runCli(read, sim.portsDir()).exitCode, 0);
    QCOMPARE(entriesIn(store).size(), 51);
    QVERIFY(!QFile::exists(data.filePath(QStringLiteral("velmor/history-queue.jsonl"))));
    qunsetenv("XDG_DATA_HOME");
}

void CliHistoryTest::diffOfAPortThatWillNotOpenOrAFileThatCannotBeReadExitsThreeOrFour()
{
    QTemporaryDir dir;
    const CliResult noPort = runCli({QStringLiteral("--no-history"), QStringLiteral("diff"), QStringLiteral("live:SIM9:1"),
                                     dir.filePath(QStringLiteral("a.cfg"))});
    QCOMPARE(noPort.exitCode, 3);
    const CliResult noFile = runCli({QStringLiteral("--no-history"), QStringLiteral("diff"),
                                     dir.filePath(QStringLiteral("missing.cfg")), dir.filePath(QStringLiteral("b.cfg"))});
    QCOMPARE(noFile.exitCode, 4);
    const CliResult off = runCli({QStringLiteral("--no-history"), QStringLiteral("diff"), QStringLiteral("history:1"),
                                  dir.filePath(QStringLiteral("b.cfg"))});
    QCOMPARE(off.exitCode, 2);
    QCOMPARE(off.errText(), QStringLiteral("The history is off (--no-history or VELMOR_HISTORY=off)."));
}

QTEST_MAIN(CliHistoryTest)
#include "cli_history_test.moc"
