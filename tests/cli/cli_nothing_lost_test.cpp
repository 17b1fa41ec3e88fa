// Nothing lost, nothing hidden: velmor-cli on full disks, failing outputs,
// busy lines, files that are short, foreign or not files at all, and hostile
// servers, run as the real executable against velmor-sim.
#include "cli_runner.h"
#include "config/config_file.h"
#include "config/image_layout.h"
#include "sim/sim_values.h"
#include "support/sim_process.h"
#include "support/small_disk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr quint32 kSeed = 1;

QStringList words(const char* text) { return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts); }

QStringList simArguments(const QStringList& modules, const QStringList& extra = {})
{
    QStringList arguments{QStringLiteral("--fast"), QStringLiteral("--seed"), QString::number(kSeed)};
    for (const QString& module : modules)
        arguments << QStringLiteral("--module") << module;
    return arguments + extra;
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The files of a folder but the disk's filler: what a failed write left.
QStringList filesIn(const QString& folder)
{
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    names.removeAll(QStringLiteral("filler"));
    return names;
}

// A module's record saved in a temporary folder.
QString savedModule(const QTemporaryDir& dir, int modelCode = 2, const QString& name = QStringLiteral("m.cfg"))
{
    const QString path = dir.filePath(name);
    return saveConfigFile(path, sim::simulatedModule(4, modelCode, kSeed)) ? path : QString();
}

}  // namespace

class CliNothingLostTest : public QObject {
    Q_OBJECT
private slots:
    void aFullDiskLeavesTheOldReportWhole_data();
    void aFullDiskLeavesTheOldReportWhole();
    void standardOutputThatCannotBeWrittenExitsFour_data();
    void standardOutputThatCannotBeWrittenExitsFour();
    void aLogThatStopsOnAFullDiskIsToldOnceAndExitsFour();
    void aWriteThatStopsPartwaySaysWhatTheModuleHolds_data();
    void aWriteThatStopsPartwaySaysWhatTheModuleHolds();
    void showOfAShortFileSaysWhatItKept();
    void showOfAForeignFileWarnsAsWriteWouldRefuse();
    void aReportIsNeverWrittenOverItsInput();
    void aLogThatIsNotARegularFileIsRefusedAtOnce();
    void configurationFileFailuresSayThePathAndWhy_data();
    void configurationFileFailuresSayThePathAndWhy();
    void informationWriteWithoutConfirmationNamesTheFlag();
    void aSingleValueOptionGivenTwiceIsAUsageError_data();
    void aSingleValueOptionGivenTwiceIsAUsageError();
    void aServersBytesAreNeverDumpedIntoAMessage();
    void aMalformedNetworkAddressIsToldAsMalformed();
    void aVanishingLineIsGoneBeforeTheNextExchange();
    void smallThings();
};

void CliNothingLostTest::aFullDiskLeavesTheOldReportWhole_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("html") << "html";
    QTest::newRow("pdf") << "pdf";
}

void CliNothingLostTest::aFullDiskLeavesTheOldReportWhole()
{
    QFETCH(QString, suffix);
    QTemporaryDir dir;
    const QString config = savedModule(dir);
    SmallDisk disk(16 * 1024);
    qInfo("full disk: %s", qPrintable(disk.how()));
    const QString report = disk.filePath(QStringLiteral("old.") + suffix);
    const QByteArray old("the old report, which must stay whole\n");
    QVERIFY(writeFile(report, old));
    disk.fill(1024);
    CliRun run;
    run.disk = &disk;
    const CliResult result = runCli(words("report") << config << QStringLiteral("--out") << report, run);
    QCOMPARE(result.exitCode, 4);
    QVERIFY2(result.errText().startsWith(QStringLiteral("Cannot write the report %1: ").arg(report)), result.err.constData());
    QVERIFY2(result.errText().contains(disk.mounted() ? QStringLiteral("No space left on device") : QStringLiteral("File too large")),
             result.err.constData());
    QCOMPARE(fileBytes(report), old);
    QCOMPARE(filesIn(disk.path()), QStringList{QFileInfo(report).fileName()});
}

void CliNothingLostTest::standardOutputThatCannotBeWrittenExitsFour_data()
{
    QTest::addColumn<QString>("where");
    QTest::newRow("/dev/full") << "/dev/full";
    QTest::newRow("closed") << "closed";
    QTest::newRow("a full disk") << "disk";
}

void CliNothingLostTest::standardOutputThatCannotBeWrittenExitsFour()
{
    QFETCH(QString, where);
    QTemporaryDir dir;
    const QString config = savedModule(dir);
    SmallDisk disk(8 * 1024);
    CliRun run;
    if (where == QLatin1String("closed")) {
        run.stdoutClosed = true;
    } else if (where == QLatin1String("disk")) {
        qInfo("full disk: %s", qPrintable(disk.how()));
        disk.fill(512);
        run.disk = &disk;
        run.stdoutFile = disk.filePath(QStringLiteral("out.json"));
    } else {
        run.stdoutFile = where;
    }
    for (const QStringList& command : {words("--json show") << config, words("show") << config, words("--help")}) {
        const CliResult result = runCli(command, run);
        QVERIFY2(result.exitCode == 4, qPrintable(command.join(' ') + QStringLiteral(": exit %1").arg(result.exitCode)));
        QVERIFY2(result.errText().startsWith(QStringLiteral("Cannot write the standard output: ")), result.err.constData());
    }
}

void CliNothingLostTest::aLogThatStopsOnAFullDiskIsToldOnceAndExitsFour()
{
    SimProcess sim;
    QVERIFY2(sim.start(simArguments({QStringLiteral("1:TM-C16")})), qPrintable(sim.error()));
    // Room for the header and a few records (a tmpfs page), not for a whole read's 34.
    SmallDisk disk(4096 * 4);
    qInfo("full disk: %s", qPrintable(disk.how()));
    const QString log = disk.filePath(QStringLiteral("frames.csv"));
    disk.fill(4096);
    CliRun run;
    run.portsDir = sim.portsDir();
    run.disk = &disk;
    const CliResult result = runCli(words("--log") << log << QStringLiteral("--json") << QStringLiteral("read")
                                                   << QStringLiteral("--port") << sim.portName()
                                                   << QStringLiteral("--address") << QStringLiteral("1"), run);
    QCOMPARE(result.exitCode, 4);
    // The read was done as asked: the record is printed whole.
    QCOMPARE(result.json()[QStringLiteral("busAddress")].toInt(), 1);
    const QStringList said = result.errText().split(QLatin1Char('\n'));
    QCOMPARE(said.size(), 1);
    QVERIFY2(said.first().startsWith(QStringLiteral("Cannot write the frame log %1: ").arg(log)), said.first().toUtf8().constData());
    QVERIFY(said.first().endsWith(QStringLiteral("; the exchanges go on as asked, their frames unlogged.")));
    // No record is cut in the middle.
    const QByteArray written = fileBytes(log);
    QVERIFY(written.endsWith("\r\n"));
}

void CliNothingLostTest::aWriteThatStopsPartwaySaysWhatTheModuleHolds_data()
{
    QTest::addColumn<QString>("lang");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("said");
    // Exchange 1 is the model check; 2-5 the four groups, 6-9 the adjust
    // blocks, 10-17 the coefficient pairs.
    QTest::newRow("adjust block 4, English") << "en" << "silence:9"
                                             << "No respond.\ngroups 1-4 and adjust blocks 1-3 were written; adjust block 4 "
                                                "and the coefficients were not.";
    QTest::newRow("adjust block 4, Chinese") << "zh" << "silence:9"
                                             << "通讯失败，没有响应。\n第 1-4 组参数和第 1-3 个调整块已写入；第 4 个调整块和校正系数没有写入。";
    QTest::newRow("group 2, a refused reply") << "en" << "checksum:3"
                                              << "Return data fail.\ngroup 1 was written; groups 2-4 and adjust blocks 1-4 "
                                                 "and the coefficients were not.";
    QTest::newRow("coefficient pair 6") << "en" << "silence:15"
                                        << "No respond.\ngroups 1-4 and adjust blocks 1-4 and coefficient pairs 1-5 were "
                                           "written; coefficient pairs 6-8 were not.";
}

void CliNothingLostTest::aWriteThatStopsPartwaySaysWhatTheModuleHolds()
{
    QFETCH(QString, lang);
    QFETCH(QString, fault);
    QFETCH(QString, said);
    QTemporaryDir dir;
    const QString config = savedModule(dir);
    SimProcess sim;
    QVERIFY2(sim.start(simArguments({QStringLiteral("4:TM-C16")}, {QStringLiteral("--fault"), QStringLiteral("4:") + fault})),
             qPrintable(sim.error()));
    const CliResult result = runCli(words("--lang") << lang << words("write --address 4 --config") << config
                                                    << QStringLiteral("--port") << sim.portName(),
                                    sim.portsDir());
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errText(), said);
}

void CliNothingLostTest::showOfAShortFileSaysWhatItKept()
{
    QTemporaryDir dir;
    const QString full = savedModule(dir);
    const QString path = dir.filePath(QStringLiteral("short.cfg"));
    QVERIFY(writeFile(path, fileBytes(full).left(4000)));
    const CliResult result = runCli(words("show") << path);
    QCOMPARE(result.exitCode, 0);
    const QStringList said = result.errText().split(QLatin1Char('\n'));
    QCOMPARE(said.value(0), QStringLiteral("%1 holds 4,000 of 8,679 bytes: channels 8-16 kept their values").arg(path));
    QVERIFY(!result.out.isEmpty());
    // write still refuses it.
    const CliResult write = runCli(words("write --address 1 --port /nonexistent/tty --config") << path);
    QCOMPARE(write.exitCode, 2);
}

void CliNothingLostTest::showOfAForeignFileWarnsAsWriteWouldRefuse()
{
    QTemporaryDir dir;
    QByteArray bytes = fileBytes(savedModule(dir));
    bytes[moduleImage::kCapabilities] = char(12);  // model code 12
    const QString path = dir.filePath(QStringLiteral("foreign.cfg"));
    QVERIFY(writeFile(path, bytes));
    const CliResult result = runCli(words("show") << path);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errText(), QStringLiteral("%1 is not a module's configuration file: its model code 12 is above 9; "
                                              "write would refuse to send it.").arg(path));
    QVERIFY(!result.out.isEmpty());
}

void CliNothingLostTest::aReportIsNeverWrittenOverItsInput()
{
    QTemporaryDir dir;
    const QString config = savedModule(dir, 2, QStringLiteral("cal.html"));
    const QByteArray before = fileBytes(config);
    QVERIFY(QFile::link(config, dir.filePath(QStringLiteral("link.html"))));
    QCOMPARE(::link(QFile::encodeName(config).constData(), QFile::encodeName(dir.filePath(QStringLiteral("hard.html"))).constData()), 0);
    for (const QString& out : {config, dir.filePath(QStringLiteral("link.html")), dir.filePath(QStringLiteral("hard.html")),
                               dir.path() + QStringLiteral("/./cal.html")}) {
        const CliResult result = runCli(words("report") << config << QStringLiteral("--out") << out);
        QCOMPARE(result.exitCode, 2);
        QCOMPARE(result.errText(), QStringLiteral("The report %1 is the configuration file %2 it reports on; nothing was written.")
                                       .arg(out, config));
        QCOMPARE(fileBytes(config), before);
    }
}

void CliNothingLostTest::aLogThatIsNotARegularFileIsRefusedAtOnce()
{
    QTemporaryDir dir;
    const QString fifo = dir.filePath(QStringLiteral("log.fifo"));
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const CliResult result = runCli(words("--log") << fifo << QStringLiteral("ports"));
    QCOMPARE(result.exitCode, 4);
    QCOMPARE(result.errText(), QStringLiteral("Cannot write the frame log %1: not a regular file").arg(fifo));
}

void CliNothingLostTest::configurationFileFailuresSayThePathAndWhy_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("missing") << "missing";
    QTest::newRow("name too long") << "long";
    QTest::newRow("read-only folder") << "read-only";
    QTest::newRow("full disk") << "full";
    QTest::newRow("no permission") << "permission";
}

void CliNothingLostTest::configurationFileFailuresSayThePathAndWhy()
{
    QFETCH(QString, kind);
    QTemporaryDir dir;
    const QString config = savedModule(dir);
    SimProcess sim;
    QVERIFY2(sim.start(simArguments({QStringLiteral("1:TM-C16")})), qPrintable(sim.error()));
    const QStringList read = words("read --address 1 --port") << sim.portName() << QStringLiteral("--save");
    CliRun run;
    run.portsDir = sim.portsDir();
    QStringList command;
    QString reason;
    SmallDisk disk(8 * 1024, kind == QLatin1String("read-only"));
    if (kind == QLatin1String("missing")) {
        command = words("show") << dir.filePath(QStringLiteral("none.cfg"));
        reason = dir.filePath(QStringLiteral("none.cfg")) + QStringLiteral(": No such file or directory");
    } else if (kind == QLatin1String("long")) {
        const QString path = dir.filePath(QString(300, QLatin1Char('x')) + QStringLiteral(".cfg"));
        command = read + QStringList{path};
        reason = path + QStringLiteral(": File name too long");
    } else if (kind == QLatin1String("read-only")) {
        if (!disk.readOnlyAvailable())
            QSKIP(qPrintable(QStringLiteral("no read-only disk here: ") + disk.how()));
        const QString path = disk.filePath(QStringLiteral("a.cfg"));
        command = read + QStringList{path};
        reason = path + QStringLiteral(": Read-only file system");
    } else if (kind == QLatin1String("full")) {
        qInfo("full disk: %s", qPrintable(disk.how()));
        disk.fill(1024);
        run.disk = &disk;
        const QString path = disk.filePath(QStringLiteral("a.cfg"));
        command = read + QStringList{path};
        reason = path + (disk.mounted() ? QStringLiteral(": No space left on device") : QStringLiteral(": File too large"));
    } else {
        if (::geteuid() == 0)
            QSKIP("running as root, which the system lets read any file: no permission to refuse");
        const QString path = dir.filePath(QStringLiteral("locked.cfg"));
        QVERIFY(QFile::copy(config, path));
        QVERIFY(QFile::setPermissions(path, {}));
        command = words("show") << path;
        reason = path + QStringLiteral(": Permission denied");
    }
    const CliResult result = runCli(command, run);
    QCOMPARE(result.exitCode, 4);
    QCOMPARE(result.errText(), QStringLiteral("Open configure file fail!\n") + reason);
}

void CliNothingLostTest::informationWriteWithoutConfirmationNamesTheFlag()
{
    QTemporaryDir dir;
    const CliResult result = runCli(words("write-info --port /nonexistent/tty --config") << savedModule(dir));
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.errText(), QStringLiteral("Only one module.\nNothing was sent: the information write goes to address 255, "
                                              "which every module on the line takes; give --only-one-module when only one "
                                              "module is connected."));
}

void CliNothingLostTest::aSingleValueOptionGivenTwiceIsAUsageError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("option");
    QTest::newRow("address") << words("read --port x --address 4 --address 1") << "address";
    QTest::newRow("channels") << words("balance --port x --address 1 --channels 1 --channels 2") << "channels";
    QTest::newRow("port of read") << words("read --port x --port y --address 1") << "port";
    QTest::newRow("out") << words("report a.cfg --out a.pdf --out b.pdf") << "out";
    QTest::newRow("log") << words("--log a.csv --log b.csv ports") << "log";
    QTest::newRow("lang") << words("--lang en --lang zh ports") << "lang";
}

void CliNothingLostTest::aSingleValueOptionGivenTwiceIsAUsageError()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, option);
    const CliResult result = runCli(arguments);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.errText().contains(QStringLiteral("--%1 takes one value; give it once.").arg(option))
                 || result.errText().contains(QStringLiteral("--%1 只能给出一次。").arg(option)),
             result.err.constData());
    // --port of search is given as often as there are lines.
    SimProcess a;
    SimProcess b;
    QVERIFY(a.start(simArguments({QStringLiteral("1:TM-A4")})));
    QVERIFY(b.start(simArguments({QStringLiteral("2:TM-A4")}, {QStringLiteral("--name"), QStringLiteral("SIM2")})));
    QCOMPARE(runCli(words("search --port") << a.linkPath() << QStringLiteral("--port") << b.linkPath()).exitCode, 0);
}

// A serial server that answers the connection with a screenful of its own
// bytes and hangs up: the message holds one line of it at most.
void CliNothingLostTest::aServersBytesAreNeverDumpedIntoAMessage()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QByteArray garbage;
    for (int i = 0; i < 8700; ++i)
        garbage += char(i % 7 == 0 ? '\n' : (i % 5 == 0 ? '\x1b' : 'a' + i % 26));
    connect(&server, &QTcpServer::newConnection, &server, [&] {
        QTcpSocket* client = server.nextPendingConnection();
        client->write("line in use by another client " + garbage);
        client->flush();
        client->disconnectFromHost();
    });
    const QString url = QStringLiteral("rfc2217://127.0.0.1:%1").arg(server.serverPort());
    QProcess cli;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("en_US.UTF-8"));
    cli.setProcessEnvironment(environment);
    cli.start(QStringLiteral(VELMOR_CLI_EXECUTABLE), words("read --address 1 --port") << url);
    QTRY_VERIFY_WITH_TIMEOUT(cli.state() == QProcess::NotRunning, 30000);
    QCOMPARE(cli.exitCode(), 3);
    const QStringList said = QString::fromUtf8(cli.readAllStandardError()).trimmed().split(QLatin1Char('\n'));
    QCOMPARE(said.size(), 2);
    QCOMPARE(said[0], QStringLiteral("Open COM port fail."));
    QVERIFY2(said[1].startsWith(url + QStringLiteral(": line in use by another client ")), qPrintable(said[1]));
    QVERIFY2(said[1].size() < 200, qPrintable(said[1]));
    QVERIFY(said[1].endsWith(QChar(0x2026)));
    QVERIFY(!said[1].contains(QChar(0x1b)));
}

void CliNothingLostTest::aMalformedNetworkAddressIsToldAsMalformed()
{
    for (const char* address : {"tcp://127.0.0.1", "rfc2217://:4000", "tcp://host:port", "TCP://127.0.0.1:7000/x"}) {
        for (const char* command : {"read --address 1 --port", "search --port", "ports --port"}) {
            const CliResult result = runCli(words(command) << QString::fromLatin1(address));
            QCOMPARE(result.exitCode, 2);
            QCOMPARE(result.errText(), QStringLiteral("Not a network port: give tcp://HOST:PORT or rfc2217://HOST:PORT. ")
                                           + QString::fromLatin1(address));
        }
    }
}

// Gone after its first exchange, a line answers no more: a whole read of 17
// exchanges fails.
void CliNothingLostTest::aVanishingLineIsGoneBeforeTheNextExchange()
{
    SimProcess sim;
    QVERIFY2(sim.start(simArguments({QStringLiteral("1:TM-C16")}, {QStringLiteral("--vanish-after"), QStringLiteral("1")})),
             qPrintable(sim.error()));
    const CliResult result = runCli(words("read --address 1 --port") << sim.linkPath());
    QVERIFY2(result.exitCode == 1 || result.exitCode == 3, qPrintable(QStringLiteral("exit %1").arg(result.exitCode)));
}

void CliNothingLostTest::smallThings()
{
    QTemporaryDir dir;
    // "1 byte", not "1 bytes".
    const QString one = dir.filePath(QStringLiteral("one.cfg"));
    QVERIFY(writeFile(one, "x"));
    QVERIFY(runCli(words("write --address 1 --port x --config") << one).errText().contains(QStringLiteral("it has 1 byte, not 8679")));
    // --log /dev/null logs nowhere, and Qt says nothing of it.
    SimProcess sim;
    QVERIFY(sim.start(simArguments({QStringLiteral("1:TM-A4")})));
    const CliResult nowhere = runCli(words("--log /dev/null read --address 1 --port") << sim.linkPath());
    QCOMPARE(nowhere.exitCode, 0);
    QCOMPARE(nowhere.errText(), QString());
    // --json report says what it wrote.
    const QString config = savedModule(dir);
    const QString out = dir.filePath(QStringLiteral("r.html"));
    const CliResult report = runCli(words("--json report") << config << QStringLiteral("--out") << out);
    QCOMPARE(report.exitCode, 0);
    QCOMPARE(report.json()[QStringLiteral("report")].toString(), out);
    QCOMPARE(report.json()[QStringLiteral("format")].toString(), QStringLiteral("html"));
    // A global option after the command gets a hint.
    const CliResult late = runCli(words("ports --json"));
    QCOMPARE(late.exitCode, 2);
    QVERIFY2(late.errText().endsWith(QStringLiteral("--json is a global option and goes before the command: velmor-cli --json COMMAND ...")),
             late.err.constData());
}

QTEST_GUILESS_MAIN(CliNothingLostTest)
#include "cli_nothing_lost_test.moc"
