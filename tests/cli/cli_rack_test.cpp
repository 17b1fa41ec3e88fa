// velmor-cli rack save and check against simulated lines, each a velmor-sim
// process: a saved rack checks all same; a changed channel, a module gone, a
// module of another model and an extra module are each told as such; a
// damaged rack file is refused before anything is sent.
#include "cli_runner.h"
#include "support/file_bytes.h"
#include "support/sim_process.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <memory>

using namespace velmor;
using namespace velmor::testing;

namespace {

// Lines SIM1 and SIM2 in one ports folder, each with the modules given. A
// line's frames are logged and its modules' memory kept, so that a line
// started again holds what it held.
struct Lines {
    bool start(const QString& name, const QStringList& modules, const QStringList& extra = {})
    {
        auto& sim = sims[name];
        sim = std::make_unique<SimProcess>();
        sim->usePortsDir(ports.path());
        QStringList arguments{QStringLiteral("--fast"), QStringLiteral("--name"), name, QStringLiteral("--log"),
                              logPath(name), QStringLiteral("--state"), files.filePath(name + QStringLiteral(".json"))};
        for (const QString& module : modules)
            arguments << QStringLiteral("--module") << module;
        return sim->start(arguments + extra);
    }
    CliResult cli(const QStringList& arguments) const
    {
        return runCli(QStringList{QStringLiteral("--no-history")} + arguments, ports.path());
    }
    QString logPath(const QString& name) const { return files.filePath(name + QStringLiteral(".log")); }
    // The requests the line took: "ADDRESS COMMAND GROUP" from its frame log
    // ("hh:mm:ss.zzz > AA  AA  N  address command group ..."), from the `from`-th on.
    QStringList requests(const QString& name, qsizetype from = 0) const
    {
        QStringList out;
        for (const QByteArray& line : fileBytes(logPath(name)).split('\n')) {
            const QList<QByteArray> fields = line.simplified().split(' ');
            if (fields.size() > 7 && fields[1] == ">")
                out << QStringLiteral("%1 %2 %3")
                           .arg(fields[5].toInt(nullptr, 16))
                           .arg(fields[6].toInt(nullptr, 16))
                           .arg(fields[7].toInt(nullptr, 16));
        }
        return out.mid(from);
    }
    // The writes among them (command 18).
    QStringList writes(const QString& name, qsizetype from = 0) const
    {
        return requests(name, from).filter(QRegularExpression(QStringLiteral("^\\d+ 18 ")));
    }
    // One channel of a module changed, as an operator would change it.
    bool changeChannel(const QString& name, int address, int channel, const QString& assignment)
    {
        const QString cfg = files.filePath(QStringLiteral("%1-%2.cfg").arg(name).arg(address));
        const QStringList at{QStringLiteral("--port"), name, QStringLiteral("--address"), QString::number(address)};
        return cli(QStringList{QStringLiteral("read")} + at + QStringList{QStringLiteral("--save"), cfg}).exitCode == 0
            && cli({QStringLiteral("edit"), cfg, QStringLiteral("--channels"), QString::number(channel), assignment}).exitCode == 0
            && cli(QStringList{QStringLiteral("write")} + at + QStringList{QStringLiteral("--config"), cfg}).exitCode == 0;
    }
    QTemporaryDir ports;
    QTemporaryDir files;
    std::map<QString, std::unique_ptr<SimProcess>> sims;
};

// "LINE ADDRESS MODEL STATE" of each row of a check's or a restore's JSON,
// the state being the field `key`.
QStringList statesOf(const CliResult& result, const QString& key = QStringLiteral("status"))
{
    QStringList rows;
    for (const QJsonValue& row : QJsonDocument::fromJson(result.out).array()) {
        const QJsonObject o = row.toObject();
        rows << QStringLiteral("%1 %2 %3 %4")
                    .arg(o.value(QStringLiteral("line")).toString())
                    .arg(o.value(QStringLiteral("address")).toInt())
                    .arg(o.value(QStringLiteral("model")).toString(), o.value(key).toString());
    }
    return rows;
}

// The rows of a restore's JSON, by "LINE ADDRESS".
std::map<QString, QJsonObject> rowsOf(const CliResult& result)
{
    std::map<QString, QJsonObject> rows;
    for (const QJsonValue& row : QJsonDocument::fromJson(result.out).array()) {
        const QJsonObject o = row.toObject();
        rows[QStringLiteral("%1 %2").arg(o.value(QStringLiteral("line")).toString()).arg(o.value(QStringLiteral("address")).toInt())] = o;
    }
    return rows;
}

}  // namespace

class CliRackTest : public QObject {
    Q_OBJECT
private slots:
    void aSavedRackChecksAllSame();
    void eachChangeOfTheRackIsToldAsSuch();
    void aDamagedRackIsRefusedBeforeAnythingIsSent();
    void aRestoreWritesOnlyTheGroupsThatDiffer();
    void aForcedRestoreWritesTheSameModelOfAnotherNumber();
    void aLineThatVanishesStopsOnlyThatLine();
    void aRestoreIsKeptInTheHistory();
    void aDamagedRackSendsNothingToALineThatIsThere();
};

void CliRackTest::aSavedRackChecksAllSame()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-C16"), QStringLiteral("4:TM-B8")}));
    QVERIFY(lines.start(QStringLiteral("SIM2"), {QStringLiteral("2:TM-A4")}));
    QTemporaryDir dir;
    const QString rack = dir.filePath(QStringLiteral("bench.velrack"));
    const CliResult saved = lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack});
    QCOMPARE(saved.exitCode, 0);
    QCOMPARE(QString::fromUtf8(saved.out).count(QLatin1Char('\n')), 3);
    const CliResult checked = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("check"), rack});
    QCOMPARE(checked.exitCode, 0);
    QCOMPARE(statesOf(checked), (QStringList{"SIM1 1 TM-C16 same", "SIM1 4 TM-B8 same", "SIM2 2 TM-A4 same"}));
}

void CliRackTest::eachChangeOfTheRackIsToldAsSuch()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-C16"), QStringLiteral("4:TM-B8")}));
    QVERIFY(lines.start(QStringLiteral("SIM2"), {QStringLiteral("2:TM-A4"), QStringLiteral("3:TM-C8")}));
    QTemporaryDir dir;
    const QString rack = dir.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack}).exitCode, 0);

    // A channel changed on module 1 of SIM1, as an operator would change it.
    const QString cfg = dir.filePath(QStringLiteral("m1.cfg"));
    QCOMPARE(lines.cli({QStringLiteral("read"), QStringLiteral("--port"), QStringLiteral("SIM1"), QStringLiteral("--address"),
                        QStringLiteral("1"), QStringLiteral("--save"), cfg})
                 .exitCode,
             0);
    QCOMPARE(lines.cli({QStringLiteral("edit"), cfg, QStringLiteral("--channels"), QStringLiteral("6"),
                        QStringLiteral("excitation=4mA")})
                 .exitCode,
             0);
    QCOMPARE(lines.cli({QStringLiteral("write"), QStringLiteral("--port"), QStringLiteral("SIM1"), QStringLiteral("--address"),
                        QStringLiteral("1"), QStringLiteral("--config"), cfg})
                 .exitCode,
             0);
    // SIM2 again: module 2 gone, a TM-B8 where the TM-C8 was, and an extra module.
    QVERIFY(lines.sims[QStringLiteral("SIM2")]->stop());
    QVERIFY(lines.start(QStringLiteral("SIM2"), {QStringLiteral("3:TM-B8"), QStringLiteral("9:TM-A4")}));

    const CliResult checked = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("check"), rack});
    QCOMPARE(checked.exitCode, 1);
    QCOMPARE(statesOf(checked), (QStringList{"SIM1 1 TM-C16 different", "SIM1 4 TM-B8 same", "SIM2 2 TM-A4 missing",
                                             "SIM2 3 TM-B8 foreign", "SIM2 9 TM-A4 extra"}));
    const QJsonArray cells = QJsonDocument::fromJson(checked.out).array().first().toObject().value(QStringLiteral("cells")).toArray();
    QVERIFY(!cells.isEmpty());
    QVERIFY2(cells.first().toString().startsWith(QStringLiteral("CH6 Excitation Open → 4mA")), qPrintable(cells.first().toString()));
    const CliResult table = lines.cli({QStringLiteral("rack"), QStringLiteral("check"), rack});
    QVERIFY2(QString::fromUtf8(table.out).contains(QStringLiteral("SIM2\t2\tTM-A4\t")), qPrintable(QString::fromUtf8(table.out)));
}

void CliRackTest::aDamagedRackIsRefusedBeforeAnythingIsSent()
{
    // No line at all: a check that went as far as a port would exit 3.
    QTemporaryDir dir;
    const QString rack = dir.filePath(QStringLiteral("cut.velrack"));
    {
        QFile file(rack);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"format\": \"velmor-rack\", \"formatVersion\": 1, \"lines\": [\"SIM1\"");
    }
    const CliResult cut = runCli({QStringLiteral("--no-history"), QStringLiteral("rack"), QStringLiteral("check"), rack});
    QCOMPARE(cut.exitCode, 2);
    QVERIFY2(cut.errText().startsWith(rack + QStringLiteral(" is not a rack file: it is not a JSON document")),
             qPrintable(cut.errText()));
    const CliResult none = runCli({QStringLiteral("--no-history"), QStringLiteral("rack"), QStringLiteral("check"),
                                   dir.filePath(QStringLiteral("none.velrack"))});
    QCOMPARE(none.exitCode, 4);
    const CliResult restore = runCli({QStringLiteral("--no-history"), QStringLiteral("rack"), QStringLiteral("restore"), rack});
    QCOMPARE(restore.exitCode, 2);
    QVERIFY2(restore.errText().startsWith(rack + QStringLiteral(" is not a rack file")), qPrintable(restore.errText()));
    // An option of another rack command is refused, not passed over.
    for (const QStringList& wrong : {QStringList{"check", rack, "--force"}, QStringList{"save", rack, "--out", "r.pdf"},
                                     QStringList{"restore", rack, "--port", "SIM1"}, QStringList{"report", rack, "--only-one-module"}})
        QCOMPARE(runCli(QStringList{QStringLiteral("--no-history"), QStringLiteral("rack")} + wrong).exitCode, 2);
}

void CliRackTest::aRestoreWritesOnlyTheGroupsThatDiffer()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-C16"), QStringLiteral("4:TM-B8")}));
    QVERIFY(lines.start(QStringLiteral("SIM2"), {QStringLiteral("2:TM-A4"), QStringLiteral("3:TM-C8")}));
    const QString rack = lines.files.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack}).exitCode, 0);

    // Channel 6 of SIM1's TM-C16 (channel group 2) and channel 2 of SIM2's
    // TM-A4 (its only group) changed; a TM-B8 where
    // SIM2's TM-C8 was.
    QVERIFY(lines.changeChannel(QStringLiteral("SIM1"), 1, 6, QStringLiteral("excitation=4mA")));
    QVERIFY(lines.changeChannel(QStringLiteral("SIM2"), 2, 2, QStringLiteral("gain=4")));
    QVERIFY(lines.sims[QStringLiteral("SIM2")]->stop());
    QFile::remove(lines.files.filePath(QStringLiteral("SIM2.json")));
    QVERIFY(lines.start(QStringLiteral("SIM2"), {QStringLiteral("2:TM-A4"), QStringLiteral("3:TM-B8")}));
    QVERIFY(lines.changeChannel(QStringLiteral("SIM2"), 2, 2, QStringLiteral("gain=4")));

    const qsizetype before1 = lines.requests(QStringLiteral("SIM1")).size();
    const qsizetype before2 = lines.requests(QStringLiteral("SIM2")).size();
    const CliResult restored = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("restore"), rack});
    QCOMPARE(restored.exitCode, 1);  // the foreign module was skipped
    QCOMPARE(statesOf(restored, QStringLiteral("outcome")),
             (QStringList{"SIM1 1 TM-C16 restored", "SIM1 4 TM-B8 unchanged", "SIM2 2 TM-A4 restored",
                          "SIM2 3 TM-B8 skipped"}));
    const std::map<QString, QJsonObject> rows = rowsOf(restored);
    QCOMPARE(rows.at(QStringLiteral("SIM1 1")).value(QStringLiteral("groupsSent")).toArray(), QJsonArray{"channel group 2"});
    QCOMPARE(rows.at(QStringLiteral("SIM2 2")).value(QStringLiteral("groupsSent")).toArray(), QJsonArray{"channel group 1"});
    QCOMPARE(rows.at(QStringLiteral("SIM2 3")).value(QStringLiteral("why")).toString(),
             QStringLiteral("a TM-B8 answers here; a TM-C8's setup cannot be written to it"));
    // On the wire: one write to each changed module, with the group's
    // selector (2 and 1: the second and the first channel group), nothing else.
    QCOMPARE(lines.writes(QStringLiteral("SIM1"), before1), QStringList{"1 18 2"});
    QCOMPARE(lines.writes(QStringLiteral("SIM2"), before2), QStringList{"2 18 1"});

    const CliResult checked = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("check"), rack});
    QCOMPARE(statesOf(checked), (QStringList{"SIM1 1 TM-C16 same", "SIM1 4 TM-B8 same", "SIM2 2 TM-A4 same",
                                             "SIM2 3 TM-B8 foreign"}));
    // Nothing left to do: a second restore writes nothing.
    const qsizetype again = lines.requests(QStringLiteral("SIM1")).size();
    const CliResult second = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("restore"), rack});
    QCOMPARE(statesOf(second, QStringLiteral("outcome")).first(), QStringLiteral("SIM1 1 TM-C16 unchanged"));
    QVERIFY(lines.writes(QStringLiteral("SIM1"), again).isEmpty());
}

void CliRackTest::aForcedRestoreWritesTheSameModelOfAnotherNumber()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-A4"), QStringLiteral("5:TM-A4")}));
    const QString rack = lines.files.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack}).exitCode, 0);
    // Another seed: the same models with other module numbers and values.
    QVERIFY(lines.sims[QStringLiteral("SIM1")]->stop());
    QFile::remove(lines.files.filePath(QStringLiteral("SIM1.json")));
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-A4"), QStringLiteral("5:TM-A4")},
                        {QStringLiteral("--seed"), QStringLiteral("7")}));
    const CliResult unforced = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("restore"), rack});
    QCOMPARE(unforced.exitCode, 1);
    QCOMPARE(statesOf(unforced, QStringLiteral("outcome")), (QStringList{"SIM1 1 TM-A4 skipped", "SIM1 5 TM-A4 skipped"}));
    QVERIFY(lines.writes(QStringLiteral("SIM1")).isEmpty());

    // Forced: every differing group but the information, which would reach
    // both modules of the line; the module numbers stay as they are.
    const CliResult forced = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("restore"), rack,
                                        QStringLiteral("--force"), QStringLiteral("--only-one-module")});
    QCOMPARE(statesOf(forced, QStringLiteral("outcome")),
             (QStringList{"SIM1 1 TM-A4 restored in part", "SIM1 5 TM-A4 restored in part"}));
    QVERIFY2(rowsOf(forced).at(QStringLiteral("SIM1 1")).value(QStringLiteral("why")).toString().startsWith(
                 QStringLiteral("the information was not sent: SIM1 has other modules")),
             forced.out.constData());
    QVERIFY(lines.writes(QStringLiteral("SIM1")).filter(QRegularExpression(QStringLiteral("^255 "))).isEmpty());
    QVERIFY(!lines.writes(QStringLiteral("SIM1")).isEmpty());
}

void CliRackTest::aLineThatVanishesStopsOnlyThatLine()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-C16"), QStringLiteral("4:TM-B8")}));
    QVERIFY(lines.start(QStringLiteral("SIM2"), {QStringLiteral("2:TM-A4"), QStringLiteral("5:TM-B8")}));
    const QString rack = lines.files.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack}).exitCode, 0);
    // A channel of each module changed.
    const QString tenVolts = QStringLiteral("excitation=10.0V");
    QVERIFY(lines.changeChannel(QStringLiteral("SIM1"), 1, 6, QStringLiteral("excitation=4mA")));
    QVERIFY(lines.changeChannel(QStringLiteral("SIM1"), 4, 2, tenVolts));
    QVERIFY(lines.changeChannel(QStringLiteral("SIM2"), 2, 2, QStringLiteral("gain=4")));
    QVERIFY(lines.changeChannel(QStringLiteral("SIM2"), 5, 2, tenVolts));

    // How many exchanges a check takes on SIM2; started again, SIM2 vanishes
    // after those and the restore's first write.
    const qsizetype before = lines.requests(QStringLiteral("SIM2")).size();
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("check"), rack}).exitCode, 1);
    const qsizetype check = lines.requests(QStringLiteral("SIM2")).size() - before;
    QVERIFY(check > 0);
    QVERIFY(lines.sims[QStringLiteral("SIM2")]->stop());
    QVERIFY(lines.start(QStringLiteral("SIM2"), {}, {QStringLiteral("--vanish-after"), QString::number(check + 1)}));
    const qsizetype from2 = lines.requests(QStringLiteral("SIM2")).size();

    const CliResult restored = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("restore"), rack});
    QCOMPARE(restored.exitCode, 1);
    QCOMPARE(statesOf(restored, QStringLiteral("outcome")),
             (QStringList{"SIM1 1 TM-C16 restored", "SIM1 4 TM-B8 restored", "SIM2 2 TM-A4 restored in part",
                          "SIM2 5 TM-B8 not restored"}));
    const std::map<QString, QJsonObject> rows = rowsOf(restored);
    // SIM2's first module took its one group and was not read back; the
    // second took nothing, and the result says why.
    QCOMPARE(rows.at(QStringLiteral("SIM2 2")).value(QStringLiteral("groupsSent")).toArray(), QJsonArray{"channel group 1"});
    QVERIFY(rows.at(QStringLiteral("SIM2 5")).value(QStringLiteral("groupsSent")).toArray().isEmpty());
    QVERIFY2(rows.at(QStringLiteral("SIM2 5")).value(QStringLiteral("why")).toString().startsWith(QStringLiteral("channel group 1 failed: ")),
             restored.out.constData());
    QVERIFY2(rows.at(QStringLiteral("SIM2 2")).value(QStringLiteral("why")).toString().startsWith(
                 QStringLiteral("every group went out, not read back")),
             restored.out.constData());
    // The write to module 5 reached the line as it went and was never answered.
    QCOMPARE(lines.writes(QStringLiteral("SIM2"), from2), (QStringList{"2 18 1", "5 18 1"}));
    // SIM2 back with the memory its modules kept: the result was exact.
    QVERIFY(lines.start(QStringLiteral("SIM2"), {}));
    const CliResult checked = lines.cli({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("check"), rack});
    QCOMPARE(statesOf(checked), (QStringList{"SIM1 1 TM-C16 same", "SIM1 4 TM-B8 same", "SIM2 2 TM-A4 same",
                                             "SIM2 5 TM-B8 different"}));
}

void CliRackTest::aRestoreIsKeptInTheHistory()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-A4"), QStringLiteral("3:TM-B8")}));
    const QString rack = lines.files.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack}).exitCode, 0);
    QVERIFY(lines.changeChannel(QStringLiteral("SIM1"), 1, 2, QStringLiteral("gain=4")));
    const QString store = lines.files.filePath(QStringLiteral("history.sqlite"));
    QCOMPARE(runCli({QStringLiteral("--history"), store, QStringLiteral("rack"), QStringLiteral("restore"), rack},
                    lines.ports.path())
                 .exitCode,
             0);
    // The check's search and reads, then one write: the module restored, as it reads back.
    const CliResult kept = runCli({QStringLiteral("--history"), store, QStringLiteral("--json"), QStringLiteral("history"),
                                   QStringLiteral("--kind"), QStringLiteral("write")});
    const QJsonArray writes = QJsonDocument::fromJson(kept.out).array();
    QCOMPARE(writes.size(), 1);
    const QJsonObject write = writes.first().toObject();
    QCOMPARE(write.value(QStringLiteral("line")).toString(), QStringLiteral("SIM1"));
    QCOMPARE(write.value(QStringLiteral("address")).toInt(), 1);
    QCOMPARE(write.value(QStringLiteral("outcome")).toString(), QStringLiteral("done"));
    QCOMPARE(write.value(QStringLiteral("detail")).toString(), QStringLiteral("rack restore ") + rack);
    // What it holds now is the file's setup again: the check is all same.
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("check"), rack}).exitCode, 0);
}

void CliRackTest::aDamagedRackSendsNothingToALineThatIsThere()
{
    Lines lines;
    QVERIFY(lines.start(QStringLiteral("SIM1"), {QStringLiteral("1:TM-A4"), QStringLiteral("3:TM-B8")}));
    const QString rack = lines.files.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(lines.cli({QStringLiteral("rack"), QStringLiteral("save"), rack}).exitCode, 0);
    const QJsonObject saved = QJsonDocument::fromJson(fileBytes(rack)).object();

    // Truncated; the second module's image not matching its SHA-256; a format version to come.
    QJsonObject badHash = saved;
    QJsonArray modules = badHash.value(QStringLiteral("modules")).toArray();
    QJsonObject second = modules[1].toObject();
    QByteArray image = QByteArray::fromBase64(second.value(QStringLiteral("image")).toString().toLatin1());
    image[100] = static_cast<char>(image[100] ^ 0x01);
    second.insert(QStringLiteral("image"), QString::fromLatin1(image.toBase64()));
    modules[1] = second;
    badHash.insert(QStringLiteral("modules"), modules);
    QJsonObject later = saved;
    later.insert(QStringLiteral("formatVersion"), 2);
    const std::map<QString, QByteArray> damaged{
        {QStringLiteral("is not a rack file: it is not a JSON document"), fileBytes(rack).left(200)},
        {QStringLiteral(": the setup of module 2 is damaged (its SHA-256 does not match)."), QJsonDocument(badHash).toJson()},
        {QStringLiteral("has format version 2, which this program does not know (it knows 1)."), QJsonDocument(later).toJson()},
    };
    const qsizetype before = lines.requests(QStringLiteral("SIM1")).size();
    for (const auto& [fault, bytes] : damaged) {
        const QString path = lines.files.filePath(QStringLiteral("damaged.velrack"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        for (const char* command : {"check", "restore"}) {
            // Not even a forced restore.
            QStringList arguments{QStringLiteral("rack"), QLatin1String(command), path};
            if (QLatin1String(command) == QLatin1String("restore"))
                arguments << QStringLiteral("--force");
            const CliResult refused = lines.cli(arguments);
            QCOMPARE(refused.exitCode, 2);
            QVERIFY2(refused.errText().startsWith(path + QLatin1Char(' ') + fault) || refused.errText().startsWith(path + fault),
                     qPrintable(refused.errText()));
        }
    }
    QCOMPARE(lines.requests(QStringLiteral("SIM1")).size(), before);
}

QTEST_MAIN(CliRackTest)
#include "cli_rack_test.moc"
