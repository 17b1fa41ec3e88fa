#include "cli_runner.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "config/image_layout.h"
#include "edit/grid_cells.h"
#include "link_rig.h"
#include "model/record_json.h"
#include "sim/sim_values.h"
#include "support/csv_reader.h"
#include "support/report_reading.h"
#include "support/sim_process.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr quint32 kSeed = 1;

QStringList simArguments(const QStringList& modules, const QStringList& extra = {})
{
    QStringList arguments{QStringLiteral("--fast"), QStringLiteral("--seed"), QString::number(kSeed)};
    for (const QString& module : modules)
        arguments << QStringLiteral("--module") << module;
    return arguments + extra;
}

}  // namespace

class CliTest : public QObject {
    Q_OBJECT
private slots:
    void helpDescribesEveryCommandAndOption();
    void unknownCommandIsAUsageError();
    void portsListsThePublishedLine();
    void searchFindsModulesAndReadsThemWholly();
    void searchWithNoModuleExitsOne();
    void readPrintsTheRecordAsTheModuleHoldsIt();
    void readSavesTheConfigurationImage();
    void readWithoutReplyExitsOneWithNoRespond();
    void readWithBadReplyExitsOneWithReturnDataFail();
    void portThatWillNotOpenExitsThree();
    void unreadableFileExitsFour();
    void searchGoesOnPastAPortThatWillNotOpen();
    void failedExchangesOfEveryCommandExitOne();
    void unwritableSaveExitsFour();
    void informationWriteWithoutConfirmationIsRefused();
    void savedFileWrittenToASecondModuleReadsBackTheSame();
    void beckonPrintsTheModuleThatAnswers();
    void balanceChangesOnlyTheChosenChannels();
    void badChannelListIsAUsageError();
    void showDecodesAFile();
    void traceShowsEveryFrame();
    void logAppendsEveryFrameOfEachRunUnderOneHeader();
    void logThatCannotBeOpenedExitsFourBeforeAnyExchange();
    void logAndTraceOfASearchHoldTheFramesOfEveryLine();
    void languageFollowsTheSystemLocaleUnlessChosen();
    void textOutputShowsTheGridTexts();
    void reportOfAFileShowsTheGridTexts();
    void reportOfASixteenChannelFileIsAPdfOfAtMostThreePages();
    void reportRefusesWhatItCannotReportOn();
    void reportThatCannotBeWrittenExitsFour();
};

void CliTest::helpDescribesEveryCommandAndOption()
{
    const CliResult general = runCli({QStringLiteral("--help")});
    QCOMPARE(general.exitCode, 0);
    for (const char* word : {"--json", "--trace", "--log", "--lang", "ports", "search", "read", "write", "write-info", "beckon", "balance", "show", "report"})
        QVERIFY2(general.out.contains(word), word);
    const QList<QPair<QString, QStringList>> commands = {
        {QStringLiteral("search"), {QStringLiteral("--port")}},
        {QStringLiteral("read"), {QStringLiteral("--port"), QStringLiteral("--address"), QStringLiteral("--save")}},
        {QStringLiteral("write"), {QStringLiteral("--port"), QStringLiteral("--address"), QStringLiteral("--config")}},
        {QStringLiteral("write-info"), {QStringLiteral("--port"), QStringLiteral("--config"), QStringLiteral("--only-one-module")}},
        {QStringLiteral("beckon"), {QStringLiteral("--port")}},
        {QStringLiteral("balance"), {QStringLiteral("--port"), QStringLiteral("--address"), QStringLiteral("--channels")}},
        {QStringLiteral("show"), {QStringLiteral("FILE")}},
        {QStringLiteral("report"), {QStringLiteral("FILE"), QStringLiteral("--out"), QStringLiteral("REPORT"), QStringLiteral("--lang")}},
    };
    for (const auto& [command, options] : commands) {
        const CliResult help = runCli({command, QStringLiteral("--help")});
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.out.startsWith("Usage: velmor-cli " + command.toUtf8()));
        for (const QString& option : options)
            QVERIFY2(help.out.contains(option.toUtf8()), qPrintable(command + QLatin1Char(' ') + option));
    }
}

void CliTest::unknownCommandIsAUsageError()
{
    QCOMPARE(runCli({QStringLiteral("frobnicate")}).exitCode, 2);
    QCOMPARE(runCli({QStringLiteral("--lang"), QStringLiteral("fr"), QStringLiteral("ports")}).exitCode, 2);
    QCOMPARE(runCli({QStringLiteral("read"), QStringLiteral("--address"), QStringLiteral("3")}).exitCode, 2);
    QCOMPARE(runCli({QStringLiteral("read"), QStringLiteral("--port"), QStringLiteral("/dev/null"), QStringLiteral("--address"), QStringLiteral("300")}).exitCode, 2);
}

void CliTest::portsListsThePublishedLine()
{
    SimProcess sim;
    QVERIFY2(sim.start(simArguments({QStringLiteral("1:TM-C16")})), qPrintable(sim.error()));
    const CliResult text = runCli({QStringLiteral("ports")}, sim.portsDir());
    QCOMPARE(text.exitCode, 0);
    const QList<QByteArray> lines = text.out.trimmed().split('\n');
    const QByteArray expected = sim.portName().toUtf8() + '\t';
    QVERIFY(std::any_of(lines.begin(), lines.end(), [&](const QByteArray& l) { return l.startsWith(expected) && l.endsWith(sim.linkPath().toUtf8()); }));
    const CliResult json = runCli({QStringLiteral("--json"), QStringLiteral("ports")}, sim.portsDir());
    const QJsonArray list = QJsonDocument::fromJson(json.out).array();
    QVERIFY(std::any_of(list.begin(), list.end(), [&](const QJsonValue& v) {
        return v[QStringLiteral("name")].toString() == sim.portName() && v[QStringLiteral("device")].toString() == sim.linkPath()
            && v[QStringLiteral("number")].toInt() > 0;
    }));
}

void CliTest::searchFindsModulesAndReadsThemWholly()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("2:TM-C16"), QStringLiteral("5:TM-A4")})));
    const CliResult text = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("search"), QStringLiteral("--port"), sim.portName()}, sim.portsDir());
    QCOMPARE(text.exitCode, 0);
    const QList<QByteArray> lines = text.out.trimmed().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[0].startsWith("1\t" + sim.portName().toUtf8() + "\t2\tTM-C16\t"));
    QVERIFY(lines[1].startsWith("2\t" + sim.portName().toUtf8() + "\t5\tTM-A4\t"));
    QCOMPARE(lines[2], QByteArray("Found 2 modules."));

    const CliResult json = runCli({QStringLiteral("--json"), QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("search"), QStringLiteral("--port"), sim.portName()}, sim.portsDir());
    QCOMPARE(json.exitCode, 0);
    const QJsonObject document = json.json();
    QCOMPARE(document[QStringLiteral("report")].toString(), QStringLiteral("Found 2 modules."));
    const QJsonArray modules = document[QStringLiteral("modules")].toArray();
    QCOMPARE(modules.size(), 2);
    VELMOR_VERIFY_SAME(wholeReadDifference(recordOf(modules[0].toObject()), sim::simulatedModule(2, 2, kSeed)));
    VELMOR_VERIFY_SAME(wholeReadDifference(recordOf(modules[1].toObject()), sim::simulatedModule(5, 0, kSeed)));
}

void CliTest::searchWithNoModuleExitsOne()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("40:TM-C16")})));
    // Only the simulator's line: the machine's own ports may be held by
    // another program or closed to this user, which is exit code 3.
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("search"), QStringLiteral("--port"), sim.portName()}, sim.portsDir());
    QCOMPARE(result.exitCode, 1);
    QVERIFY(result.out.trimmed().endsWith("No module to be found."));
}

void CliTest::readPrintsTheRecordAsTheModuleHoldsIt()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("3:TM-B8")})));
    const CliResult result = runCli({QStringLiteral("--json"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("3")}, sim.portsDir());
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.err.isEmpty());
    const QJsonObject json = result.json();
    QCOMPARE(json[QStringLiteral("modelName")].toString(), QStringLiteral("TM-B8"));
    QCOMPARE(json[QStringLiteral("channelCount")].toInt(), 8);
    QCOMPARE(json[QStringLiteral("busAddress")].toInt(), 3);
    QCOMPARE(json[QStringLiteral("channels")].toArray().size(), 17);
    QCOMPARE(json[QStringLiteral("infoTail")].toArray().size(), 36);
    VELMOR_VERIFY_SAME(wholeReadDifference(recordOf(json), sim::simulatedModule(3, 3, kSeed)));
}

void CliTest::readSavesTheConfigurationImage()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")})));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("module1.cfg"));
    const CliResult result = runCli({QStringLiteral("--json"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--save"), path}, sim.portsDir());
    QCOMPARE(result.exitCode, 0);
    const QByteArray file = fileBytes(path);
    QCOMPARE(file.size(), kStoredBytes);
    QCOMPARE(file, configImage(recordOf(result.json())).left(kStoredBytes));
}

void CliTest::readWithoutReplyExitsOneWithNoRespond()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")}, {QStringLiteral("--fault"), QStringLiteral("1:silence:3")})));
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("1")}, sim.portsDir());
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errText(), QStringLiteral("No respond."));
    QVERIFY(result.out.isEmpty());
}

void CliTest::readWithBadReplyExitsOneWithReturnDataFail()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")}, {QStringLiteral("--fault"), QStringLiteral("1:checksum:1")})));
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("1")}, sim.portsDir());
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errText(), QStringLiteral("Return data fail."));
}

void CliTest::portThatWillNotOpenExitsThree()
{
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("read"), QStringLiteral("--port"), QStringLiteral("/nonexistent/ttyUSB9"), QStringLiteral("--address"), QStringLiteral("1")});
    // The window's message, then the port and the system's reason.
    QCOMPARE(result.exitCode, 3);
    QCOMPARE(result.errText(), QStringLiteral("Open COM port fail.\nttyUSB9 (/nonexistent/ttyUSB9): No such file or directory"));
    const CliResult unknown = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("beckon"), QStringLiteral("--port"), QStringLiteral("SIM7")});
    QCOMPARE(unknown.exitCode, 3);
    QCOMPARE(unknown.errText(), QStringLiteral("Open COM port fail.\nSIM7: no such port"));
    const CliResult balance = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("balance"), QStringLiteral("--port"), QStringLiteral("/nonexistent/ttyUSB9"), QStringLiteral("--address"), QStringLiteral("1")});
    QCOMPARE(balance.exitCode, 3);
    QCOMPARE(balance.errText().section(QLatin1Char('\n'), 0, 0), QStringLiteral("Open COM port fail."));
    // A bad address is a usage error whatever the port.
    QCOMPARE(runCli({QStringLiteral("read"), QStringLiteral("--port"), QStringLiteral("SIM7"), QStringLiteral("--address"), QStringLiteral("x")}).exitCode, 2);
}

void CliTest::searchGoesOnPastAPortThatWillNotOpen()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("3:TM-A8")})));
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("search"), QStringLiteral("--port"), QStringLiteral("/nonexistent/ttyGone"), QStringLiteral("--port"), sim.portName()}, sim.portsDir());
    // The other port is still searched, but the exit code tells of the one
    // that would not open, as every other command's does.
    QCOMPARE(result.exitCode, 3);
    QCOMPARE(result.errText(), QStringLiteral("Open ttyGone fail.\nttyGone (/nonexistent/ttyGone): No such file or directory"));
    const QList<QByteArray> lines = result.out.trimmed().split('\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[0].startsWith("1\t" + sim.portName().toUtf8() + "\t3\tTM-A8\t"));
    QCOMPARE(lines[1], QByteArray("Found 1 modules."));
}

void CliTest::failedExchangesOfEveryCommandExitOne()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("m.cfg"));
    {
        SimProcess good;
        QVERIFY(good.start(simArguments({QStringLiteral("1:TM-A4")})));
        QCOMPARE(runCli({QStringLiteral("read"), QStringLiteral("--port"), good.linkPath(), QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--save"), path}).exitCode, 0);
    }
    // Every exchange of the module fails: silent, or with a broken checksum.
    const QList<QPair<QString, QString>> faults = {{QStringLiteral("1:silence"), QStringLiteral("No respond.")},
                                                   {QStringLiteral("1:checksum"), QStringLiteral("Return data fail.")}};
    for (const auto& [fault, message] : faults) {
        SimProcess sim;
        QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-A4")}, {QStringLiteral("--fault"), fault})));
        const QString port = sim.linkPath();
        const QList<QStringList> commands = {
            {QStringLiteral("write"), QStringLiteral("--port"), port, QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--config"), path},
            {QStringLiteral("write-info"), QStringLiteral("--port"), port, QStringLiteral("--config"), path, QStringLiteral("--only-one-module")},
            {QStringLiteral("beckon"), QStringLiteral("--port"), port},
            {QStringLiteral("balance"), QStringLiteral("--port"), port, QStringLiteral("--address"), QStringLiteral("1")},
        };
        for (const QStringList& command : commands) {
            const CliResult result = runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("en")} + command);
            QVERIFY2(result.exitCode == 1, qPrintable(fault + QLatin1Char(' ') + command.first()));
            QCOMPARE(result.errText(), message);
            QVERIFY(result.out.isEmpty());
        }
    }
}

void CliTest::unreadableFileExitsFour()
{
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("show"), QStringLiteral("/nonexistent/setup.cfg")});
    QCOMPARE(result.exitCode, 4);
    QCOMPARE(result.errText(), QStringLiteral("Open configure file fail!\n/nonexistent/setup.cfg: No such file or directory"));
    const CliResult write = runCli({QStringLiteral("--lang"), QStringLiteral("zh"), QStringLiteral("write"), QStringLiteral("--port"), QStringLiteral("/dev/null"), QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--config"), QStringLiteral("/nonexistent/setup.cfg")});
    QCOMPARE(write.exitCode, 4);
    QVERIFY2(write.errText().startsWith(QStringLiteral("打开配置文件操作失败!\n/nonexistent/setup.cfg：")), write.err.constData());
}

void CliTest::unwritableSaveExitsFour()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-A4")})));
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--save"), QStringLiteral("/nonexistent/dir/x.cfg")}, sim.portsDir());
    QCOMPARE(result.exitCode, 4);
    QCOMPARE(result.errText(), QStringLiteral("Open configure file fail!\n/nonexistent/dir/x.cfg: No such file or directory"));
}

void CliTest::informationWriteWithoutConfirmationIsRefused()
{
    QTemporaryDir dir;
    SimProcess sim;
    const QString log = dir.filePath(QStringLiteral("frames.log"));
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-C16")}, {QStringLiteral("--log"), log})));
    const QString path = dir.filePath(QStringLiteral("a.cfg"));
    QCOMPARE(runCli({QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--save"), path}, sim.portsDir()).exitCode, 0);
    // The requests the line took: the log's "hh:mm:ss.zzz > AA AA ..." lines.
    const auto requestsTaken = [&] { return fileBytes(log).count(" > "); };
    const qsizetype before = requestsTaken();
    const CliResult refused = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("write-info"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--config"), path}, sim.portsDir());
    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.errText().startsWith(QStringLiteral("Only one module.\nNothing was sent")), refused.err.constData());
    // A beckon answered means the line has taken everything sent before it:
    // it is the one request more.
    QCOMPARE(runCli({QStringLiteral("beckon"), QStringLiteral("--port"), sim.portName()}, sim.portsDir()).exitCode, 0);
    QCOMPARE(requestsTaken(), before + 1);
}

void CliTest::savedFileWrittenToASecondModuleReadsBackTheSame()
{
    QTemporaryDir dir;
    SimProcess first;
    SimProcess second;
    QVERIFY(first.start(simArguments({QStringLiteral("4:TM-C16")})));
    QVERIFY(second.start(simArguments({QStringLiteral("9:TM-C16")}, {QStringLiteral("--name"), QStringLiteral("SIM2"), QStringLiteral("--seed"), QStringLiteral("77")})));
    const QString path = dir.filePath(QStringLiteral("first.cfg"));
    const CliResult original = runCli({QStringLiteral("--json"), QStringLiteral("read"), QStringLiteral("--port"), first.linkPath(), QStringLiteral("--address"), QStringLiteral("4"), QStringLiteral("--save"), path});
    QCOMPARE(original.exitCode, 0);

    // The second module takes the file's information (and so its address 4),
    // then its parameters, adjust values and coefficients.
    const CliResult info = runCli({QStringLiteral("--json"), QStringLiteral("write-info"), QStringLiteral("--port"), second.linkPath(), QStringLiteral("--config"), path, QStringLiteral("--only-one-module")});
    QCOMPARE(info.exitCode, 0);
    QCOMPARE(info.json()[QStringLiteral("busAddress")].toInt(), 4);
    const CliResult write = runCli({QStringLiteral("--json"), QStringLiteral("write"), QStringLiteral("--port"), second.linkPath(), QStringLiteral("--address"), QStringLiteral("4"), QStringLiteral("--config"), path});
    QCOMPARE(write.exitCode, 0);
    QCOMPARE(write.json()[QStringLiteral("channels")].toArray(), original.json()[QStringLiteral("channels")].toArray());
    const CliResult copy = runCli({QStringLiteral("--json"), QStringLiteral("read"), QStringLiteral("--port"), second.linkPath(), QStringLiteral("--address"), QStringLiteral("4")});
    QCOMPARE(copy.exitCode, 0);

    QJsonObject a = original.json();
    QJsonObject b = copy.json();
    a.remove(QStringLiteral("portNumber"));
    b.remove(QStringLiteral("portNumber"));
    QCOMPARE(b, a);
}

void CliTest::beckonPrintsTheModuleThatAnswers()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("12:TM-A8D")})));
    const CliResult result = runCli({QStringLiteral("--json"), QStringLiteral("beckon"), QStringLiteral("--port"), sim.portName()}, sim.portsDir());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.json()[QStringLiteral("busAddress")].toInt(), 12);
    QCOMPARE(result.json()[QStringLiteral("modelName")].toString(), QStringLiteral("TM-A8D"));
    VELMOR_VERIFY_SAME(informationDifference(recordOf(result.json()), sim::simulatedModule(12, 7, kSeed)));
}

void CliTest::balanceChangesOnlyTheChosenChannels()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("2:TM-C16")}, {QStringLiteral("--balance-delay"), QStringLiteral("300")})));
    const ModuleRecord before = sim::simulatedModule(2, 2, kSeed);
    const CliResult result = runCli({QStringLiteral("--json"), QStringLiteral("balance"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("2"), QStringLiteral("--channels"), QStringLiteral("1,3-4,16")}, sim.portsDir());
    QCOMPARE(result.exitCode, 0);
    const ModuleRecord after = recordOf(result.json());
    for (size_t c = 0; c < 16; ++c) {
        const bool chosen = c == 0 || c == 2 || c == 3 || c == 15;
        QCOMPARE(after.channels[c].balanceValue != before.channels[c].balanceValue, chosen);
    }
}

void CliTest::badChannelListIsAUsageError()
{
    for (const QString& list : {QStringLiteral("0"), QStringLiteral("17"), QStringLiteral("3-1"), QStringLiteral("a"), QStringLiteral("1,,2")}) {
        const CliResult result = runCli({QStringLiteral("balance"), QStringLiteral("--port"), QStringLiteral("/dev/null"), QStringLiteral("--address"), QStringLiteral("1"), QStringLiteral("--channels"), list});
        QVERIFY2(result.exitCode == 2, qPrintable(list));
    }
}

void CliTest::showDecodesAFile()
{
    QTemporaryDir dir;
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("6:TM-C8")})));
    const QString path = dir.filePath(QStringLiteral("c8.cfg"));
    const CliResult read = runCli({QStringLiteral("--json"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("6"), QStringLiteral("--save"), path}, sim.portsDir());
    QCOMPARE(read.exitCode, 0);
    const CliResult shown = runCli({QStringLiteral("--json"), QStringLiteral("show"), path});
    QCOMPARE(shown.exitCode, 0);
    QJsonObject expected = read.json();
    // The file does not hold the last bytes of the spare slot 16, all zeros anyway.
    QCOMPARE(shown.json(), expected);
}

void CliTest::traceShowsEveryFrame()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("5:TM-A4")})));
    const CliResult result = runCli({QStringLiteral("--trace"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("5")}, sim.portsDir());
    QCOMPARE(result.exitCode, 0);
    const QList<QByteArray> lines = result.err.trimmed().split('\n');
    QCOMPARE(lines.size(), 2 * 5);  // information, one group, one adjust block, two pairs
    QCOMPARE(lines[0], QByteArray("> AA  AA  03  05  11  00  16  "));
    QVERIFY(lines[1].startsWith("< AA  AA  33  05  41  00  "));
    QCOMPARE(lines[1].size(), 2 + 55 * 4);
}

void CliTest::logAppendsEveryFrameOfEachRunUnderOneHeader()
{
    QTemporaryDir dir;
    const QString log = dir.filePath(QStringLiteral("frames.csv"));
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("5:TM-A4")}, {QStringLiteral("--fault"), QStringLiteral("5:checksum:6")})));
    const QStringList read{QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("5")};
    QCOMPARE(runCli(QStringList{QStringLiteral("--log"), log} + read, sim.portsDir()).exitCode, 0);
    const QByteArray first = fileBytes(log);
    // The second read's first reply fails its checksum: the run stops there.
    QCOMPARE(runCli(QStringList{QStringLiteral("--log=") + log} + read, sim.portsDir()).exitCode, 1);
    const QByteArray both = fileBytes(log);
    QVERIFY(both.startsWith(first));

    const QList<QStringList> records = readCsv(QString::fromUtf8(both));
    QCOMPARE(records.size(), 1 + 2 * 5 + 2);  // information, one group, one adjust block, two pairs; then one
    QCOMPARE(records[0].join(QLatin1Char(',')), QStringLiteral("time,line,direction,outcome,status,frame"));
    QCOMPARE(std::count(records.begin(), records.end(), records[0]), 1);
    QDateTime previous;
    for (qsizetype i = 1; i < records.size(); ++i) {
        const QStringList& record = records[i];
        QCOMPARE(record.size(), 6);
        const QDateTime time = QDateTime::fromString(record[0], Qt::ISODateWithMs);
        QVERIFY2(time.isValid() && time >= previous, qPrintable(record[0]));
        previous = time;
        QCOMPARE(record[1], sim.portName());
        QCOMPARE(record[2], QString::fromLatin1(i % 2 == 1 ? "out" : "in"));
    }
    QCOMPARE(records[1][3], QStringLiteral("sent"));
    QCOMPARE(records[1][5], QStringLiteral("AA  AA  03  05  11  00  16  "));
    QCOMPARE(records[2][3], QStringLiteral("accepted"));
    QVERIFY(records[2][5].startsWith(QStringLiteral("AA  AA  33  05  41  00  ")));
    QCOMPARE(records[2][5].count(QStringLiteral("\r\n")), 3);
    QCOMPARE(records.last()[3], QStringLiteral("refused"));
    QCOMPARE(records.last()[4], QStringLiteral("3"));
}

void CliTest::logAndTraceOfASearchHoldTheFramesOfEveryLine()
{
    QTemporaryDir dir;
    const QString log = dir.filePath(QStringLiteral("search.csv"));
    SimProcess first;
    SimProcess second;
    first.usePortsDir(dir.path());
    second.usePortsDir(dir.path());
    QVERIFY(first.start(simArguments({QStringLiteral("3:TM-A4")}, {QStringLiteral("--name"), QStringLiteral("SIMA")})));
    QVERIFY(second.start(simArguments({QStringLiteral("7:TM-A4")}, {QStringLiteral("--name"), QStringLiteral("SIMB")})));
    const CliResult result = runCli({QStringLiteral("--log"), log, QStringLiteral("--trace"), QStringLiteral("search"), QStringLiteral("--port"), QStringLiteral("SIMA"), QStringLiteral("--port"), QStringLiteral("SIMB")}, dir.path());
    QCOMPARE(result.exitCode, 0);
    // The trace shows every request and every reply that came, of both lines.
    const QList<QByteArray> traced = result.err.trimmed().split('\n');
    QCOMPARE(std::count_if(traced.begin(), traced.end(), [](const QByteArray& l) { return l.startsWith("> AA  AA  "); }), 2 * (17 + 5));
    QCOMPARE(std::count_if(traced.begin(), traced.end(), [](const QByteArray& l) { return l.startsWith("< AA  AA  "); }), 2 * (1 + 5));
    QCOMPARE(traced.size(), 2 * (17 + 5) + 2 * (1 + 5));

    const QList<QStringList> records = readCsv(QString::fromUtf8(fileBytes(log)));
    QVERIFY(records.size() > 1);
    QCOMPARE(records[0].join(QLatin1Char(',')), QStringLiteral("time,line,direction,outcome,status,frame"));
    // Each line: the 17 addresses asked, one answered, then that module's
    // whole read (information, one group, one adjust block, two pairs), each
    // request followed by what came back for it, in time order.
    for (const QString& line : {QStringLiteral("SIMA"), QStringLiteral("SIMB")}) {
        QList<QStringList> rows;
        for (const QStringList& record : records)
            if (record.value(1) == line)
                rows << record;
        QCOMPARE(rows.size(), 2 * (17 + 5));
        QDateTime previous;
        int accepted = 0;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const QDateTime time = QDateTime::fromString(rows[i][0], Qt::ISODateWithMs);
            QVERIFY2(time.isValid() && time >= previous, qPrintable(rows[i][0]));
            previous = time;
            const QString& outcome = rows[i][3];
            if (i % 2 == 0) {
                QCOMPARE(rows[i][2], QStringLiteral("out"));
                QCOMPARE(outcome, QStringLiteral("sent"));
                continue;
            }
            QCOMPARE(rows[i][2], QStringLiteral("in"));
            QVERIFY2(outcome == QLatin1String("accepted") || outcome == QLatin1String("timed out"), qPrintable(outcome));
            accepted += outcome == QLatin1String("accepted") ? 1 : 0;
        }
        QCOMPARE(accepted, 1 + 5);
    }
}

void CliTest::logThatCannotBeOpenedExitsFourBeforeAnyExchange()
{
    QTemporaryDir dir;
    const QString simFrames = dir.filePath(QStringLiteral("sim.log"));
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("5:TM-A4")}, {QStringLiteral("--log"), simFrames})));
    const QStringList read{QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("5")};
    const QString missing = dir.filePath(QStringLiteral("missing/frames.csv"));
    const CliResult en = runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("--log"), missing} + read, sim.portsDir());
    QCOMPARE(en.exitCode, 4);
    QVERIFY2(en.errText().startsWith(QStringLiteral("Cannot write the frame log ") + missing + QStringLiteral(": ")), qPrintable(en.errText()));
    QVERIFY(en.out.isEmpty());
    const CliResult zh = runCli(QStringList{QStringLiteral("--log"), missing, QStringLiteral("--lang"), QStringLiteral("zh")} + read, sim.portsDir());
    QCOMPARE(zh.exitCode, 4);
    QVERIFY2(zh.errText().startsWith(QStringLiteral("无法写入帧记录 ") + missing), qPrintable(zh.errText()));
    QCOMPARE(runCli(QStringList{QStringLiteral("--log")}, sim.portsDir()).exitCode, 2);
    QCOMPARE(fileBytes(simFrames), QByteArray());  // the line heard nothing
    // It would have: a read with a log that opens is heard.
    QCOMPARE(runCli(QStringList{QStringLiteral("--log"), dir.filePath(QStringLiteral("frames.csv"))} + read, sim.portsDir()).exitCode, 0);
    QTRY_VERIFY(!fileBytes(simFrames).isEmpty());
}

void CliTest::languageFollowsTheSystemLocaleUnlessChosen()
{
    const QStringList arguments{QStringLiteral("show"), QStringLiteral("/nonexistent/x.cfg")};
    const auto firstLine = [](const CliResult& result) { return result.errText().section(QLatin1Char('\n'), 0, 0); };
    QCOMPARE(firstLine(runCli(arguments, {}, QStringLiteral("en_US.UTF-8"))), QStringLiteral("Open configure file fail!"));
    QCOMPARE(firstLine(runCli(arguments, {}, QStringLiteral("zh_CN.UTF-8"))), QStringLiteral("打开配置文件操作失败!"));
    // Taiwan gets English and unlisted locales get Chinese, as in the window.
    QCOMPARE(firstLine(runCli(arguments, {}, QStringLiteral("zh_TW.UTF-8"))), QStringLiteral("Open configure file fail!"));
    QCOMPARE(firstLine(runCli(arguments, {}, QStringLiteral("ja_JP.UTF-8"))), QStringLiteral("打开配置文件操作失败!"));
    QCOMPARE(firstLine(runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("en")} + arguments, {}, QStringLiteral("zh_CN.UTF-8"))),
             QStringLiteral("Open configure file fail!"));
}

void CliTest::textOutputShowsTheGridTexts()
{
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("3:TM-B8")})));
    const CliResult en = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("3")}, sim.portsDir());
    QCOMPARE(en.exitCode, 0);
    for (const char* text : {"Module Information", "serial num.", "Channel setup", "Excitation", "Cut off", "Gain Adjust", "Bridge", "Range", "Zero Adjust4", "Gain Coef11", "CH8"})
        QVERIFY2(en.out.contains(text), text);
    QVERIFY(!en.out.contains("CH9"));
    const CliResult zh = runCli({QStringLiteral("--lang"), QStringLiteral("zh"), QStringLiteral("read"), QStringLiteral("--port"), sim.portName(), QStringLiteral("--address"), QStringLiteral("3")}, sim.portsDir());
    for (const char* text : {"模块信息", "产品序号", "激励", "截止频率", "桥型", "增益系数1"})
        QVERIFY2(zh.out.contains(text), text);
}

namespace {

// A module's configuration file, as the simulator's factory leaves the module.
QString moduleFile(const QTemporaryDir& dir, int modelCode)
{
    const QString path = dir.filePath(QStringLiteral("module%1.cfg").arg(modelCode));
    if (!saveConfigFile(path, sim::simulatedModule(4, modelCode, kSeed)))
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

// The HTML's table rows with the cells' attributes left out.
QString plainRows(const QByteArray& html)
{
    return QString::fromUtf8(html).replace(QRegularExpression(QStringLiteral("<td[^>]*>")), QStringLiteral("<td>"));
}

QString rowMarkup(const QStringList& cells, const char* cell)
{
    QString row = QStringLiteral("<tr>");
    for (const QString& text : cells)
        row += QStringLiteral("<%1>%2</%1>").arg(QLatin1String(cell), text.toHtmlEscaped());
    return row + QStringLiteral("</tr>");
}

}  // namespace

void CliTest::reportOfAFileShowsTheGridTexts()
{
    QTemporaryDir dir;
    for (const int model : {2, 3}) {  // TM-C16, TM-B8
        const QString file = moduleFile(dir, model);
        ModuleRecord record = defaultModule();
        QVERIFY(loadConfigFile(file, record));
        for (const auto& [lang, language] : {std::pair{"zh", Language::Chinese}, {"en", Language::English}}) {
            const QString out = dir.filePath(QStringLiteral("report-%1-%2.html").arg(model).arg(QLatin1String(lang)));
            const CliResult result = runCli({QStringLiteral("--lang"), QLatin1String(lang), QStringLiteral("report"), file, QStringLiteral("--out"), out});
            QCOMPARE(result.exitCode, 0);
            QCOMPARE(result.errText(), QString());
            const QString html = plainRows(fileBytes(out));
            // Every channel of the file, every grid, cell for cell; no
            // channel is left out of the automatic balance of a file.
            for (const GridCells& grid : {channelGridCells(record, language, -1), adjustGridCells(record, language),
                                          calibrationGridCells(record, language)}) {
                QVERIFY(html.contains(QStringLiteral("<thead>") + rowMarkup(grid.headings, "th") + QStringLiteral("</thead>")));
                QCOMPARE(grid.rows.size(), model == 2 ? 16 : 8);
                for (const QStringList& row : grid.rows)
                    QVERIFY2(html.contains(rowMarkup(row, "td")), qPrintable(row.join(QLatin1Char('|'))));
            }
            QVERIFY(!html.contains(QStringLiteral("src="), Qt::CaseInsensitive));
            QVERIFY(!html.contains(QStringLiteral("href="), Qt::CaseInsensitive));
        }
    }
}

void CliTest::reportOfASixteenChannelFileIsAPdfOfAtMostThreePages()
{
    QTemporaryDir dir;
    const QString file = moduleFile(dir, 2);
    for (const char* lang : {"zh", "en"}) {
        const QString out = dir.filePath(QStringLiteral("report-%1.pdf").arg(QLatin1String(lang)));
        const CliResult result = runCli({QStringLiteral("--lang"), QLatin1String(lang), QStringLiteral("report"), file, QStringLiteral("--out"), out});
        QCOMPARE(result.exitCode, 0);
        const QByteArray pdf = fileBytes(out);
        QVERIFY(pdf.startsWith("%PDF-"));
        const int pages = pageObjectsIn(pdf);
        QVERIFY2(pages >= 1 && pages <= 3, qPrintable(QString::number(pages)));
    }
}

void CliTest::reportRefusesWhatItCannotReportOn()
{
    QTemporaryDir dir;
    const QString file = moduleFile(dir, 3);
    const QString out = dir.filePath(QStringLiteral("r.pdf"));
    const QString en = QStringLiteral("en");
    const auto run = [&](const QStringList& arguments) {
        return runCli(QStringList{QStringLiteral("--lang"), en, QStringLiteral("report")} + arguments);
    };
    const CliResult noOut = run({file});
    QCOMPARE(noOut.exitCode, 2);
    QCOMPARE(noOut.errText(), QStringLiteral("--out is required."));
    const CliResult twoFiles = run({file, file, QStringLiteral("--out"), out});
    QCOMPARE(twoFiles.exitCode, 2);
    QCOMPARE(twoFiles.errText(), QStringLiteral("report takes one configuration file."));
    const CliResult badSuffix = run({file, QStringLiteral("--out"), dir.filePath(QStringLiteral("r.txt"))});
    QCOMPARE(badSuffix.exitCode, 2);
    QCOMPARE(badSuffix.errText(), QStringLiteral("The report's file name must end in .pdf or .html: %1").arg(dir.filePath(QStringLiteral("r.txt"))));
    const CliResult unreadable = run({QStringLiteral("/nonexistent/setup.cfg"), QStringLiteral("--out"), out});
    QCOMPARE(unreadable.exitCode, 4);
    QCOMPARE(unreadable.errText(), QStringLiteral("Open configure file fail!\n/nonexistent/setup.cfg: No such file or directory"));
    const QString foreign = dir.filePath(QStringLiteral("notes.cfg"));
    QFile notes(foreign);
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("ten bytes!");
    notes.close();
    const CliResult refused = run({foreign, QStringLiteral("--out"), out});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), QStringLiteral("%1 is not a module's configuration file: it has 10 bytes, not 8679. No report was written.").arg(foreign));
    QVERIFY(!QFile::exists(out));
}

void CliTest::reportThatCannotBeWrittenExitsFour()
{
    QTemporaryDir dir;
    const QString file = moduleFile(dir, 2);
    const QString missing = QStringLiteral("/nonexistent/dir/r.pdf");
    const CliResult result = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("report"), file, QStringLiteral("--out"), missing});
    QCOMPARE(result.exitCode, 4);
    const QString start = QStringLiteral("Cannot write the report %1: ").arg(missing);
    QVERIFY2(result.errText().startsWith(start) && result.errText().size() > start.size(), qPrintable(result.errText()));
    // A folder where the report should go is not overwritten.
    const QString folder = dir.filePath(QStringLiteral("folder.html"));
    QVERIFY(QDir().mkdir(folder));
    const CliResult notRegular = runCli({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("report"), file, QStringLiteral("--out"), folder});
    QCOMPARE(notRegular.errText(), QStringLiteral("Cannot write the report %1: %1 is not a regular file.").arg(folder));
    QCOMPARE(notRegular.exitCode, 4);
}

QTEST_GUILESS_MAIN(CliTest)
#include "cli_test.moc"
