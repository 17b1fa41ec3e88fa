// velmor-cli rack save and check against simulated lines, each a velmor-sim
// process: a saved rack checks all same; a changed channel, a module gone, a
// module of another model and an extra module are each told as such; a
// damaged rack file is refused before anything is sent.
#include "cli_runner.h"
#include "support/sim_process.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <memory>

using namespace velmor;
using namespace velmor::testing;

namespace {

// Lines SIM1 and SIM2 in one ports folder, each with the modules given.
struct Lines {
    bool start(const QString& name, const QStringList& modules)
    {
        auto& sim = sims[name];
        sim = std::make_unique<SimProcess>();
        sim->usePortsDir(ports.path());
        QStringList arguments{QStringLiteral("--fast"), QStringLiteral("--name"), name, QStringLiteral("--log"),
                              QStringLiteral("/dev/null")};
        for (const QString& module : modules)
            arguments << QStringLiteral("--module") << module;
        return sim->start(arguments);
    }
    CliResult cli(const QStringList& arguments) const
    {
        return runCli(QStringList{QStringLiteral("--no-history")} + arguments, ports.path());
    }
    QTemporaryDir ports;
    std::map<QString, std::unique_ptr<SimProcess>> sims;
};

// "LINE ADDRESS MODEL STATUS" of each row of a check's JSON.
QStringList statesOf(const CliResult& result)
{
    QStringList rows;
    for (const QJsonValue& row : QJsonDocument::fromJson(result.out).array()) {
        const QJsonObject o = row.toObject();
        rows << QStringLiteral("%1 %2 %3 %4")
                    .arg(o.value(QStringLiteral("line")).toString())
                    .arg(o.value(QStringLiteral("address")).toInt())
                    .arg(o.value(QStringLiteral("model")).toString(), o.value(QStringLiteral("status")).toString());
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
    QCOMPARE(runCli({QStringLiteral("--no-history"), QStringLiteral("rack"), QStringLiteral("restore"), rack}).exitCode, 2);
}

QTEST_MAIN(CliRackTest)
#include "cli_rack_test.moc"
