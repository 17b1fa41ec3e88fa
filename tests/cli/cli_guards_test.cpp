// The guards of velmor-cli and velmor-sim, through the real executables on a
// simulated line: whatever a command refuses, the line took no request that
// could change a module (its frame log shows it) and the modules' memory is
// as it was (their state file is only written once a module changed).

#include "cli_runner.h"
#include "config/config_image.h"
#include "config/image_layout.h"
#include "model/record_json.h"
#include "protocol/frame.h"
#include "serial/com_port.h"
#include "sim/sim_values.h"
#include "support/record_checks.h"
#include "support/sim_process.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr quint32 kSeed = 1;

QStringList words(const char* text) { return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts); }

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The stored image of a TM-C16 as the simulator makes it.
QByteArray moduleImageBytes()
{
    return configImage(sim::simulatedModule(1, 2, kSeed)).first(kStoredBytes);
}

struct Request {
    int address;
    int command;
};

// A simulated line whose requests are logged and whose memory is kept.
class WatchedLine {
public:
    bool start(const QStringList& modules, const QStringList& extra = {})
    {
        QStringList arguments{QStringLiteral("--fast"), QStringLiteral("--seed"), QString::number(kSeed),
                              QStringLiteral("--log"), logPath(), QStringLiteral("--state"), statePath()};
        for (const QString& module : modules)
            arguments << QStringLiteral("--module") << module;
        if (!sim_.start(arguments + extra)) {
            qWarning("%s", qPrintable(sim_.error()));
            return false;
        }
        return true;
    }

    SimProcess& sim() { return sim_; }
    QString port() const { return sim_.linkPath(); }
    QString file(const QString& name) const { return dir_.filePath(name); }

    // Every request the line took, from its frame log ("hh:mm:ss.zzz > AA  AA  03  05  11 ...").
    QList<Request> requests() const
    {
        QList<Request> out;
        for (const QByteArray& line : fileBytes(logPath()).split('\n')) {
            const QList<QByteArray> fields = line.simplified().split(' ');
            if (fields.size() > 6 && fields[1] == ">")
                out.append({fields[5].toInt(nullptr, 16), fields[6].toInt(nullptr, 16)});
        }
        return out;
    }
    // Every request the line took before a beckon sent now. The simulator
    // logs a request as it takes it, so once the beckon is in the log every
    // request sent before it is too: no wait for "nothing more".
    QList<Request> requestsSoFar() const
    {
        runCli(words("beckon --port") << port());
        QList<Request> seen = requests();
        if (seen.isEmpty() || seen.last().command != kCmdBeckon) {
            qWarning("the line did not take the beckon sent to see what came before it");
            return {{-1, -1}};
        }
        seen.removeLast();
        return seen;
    }
    // The memory of a module changed when the state file was written.
    bool changed() const { return QFileInfo::exists(statePath()); }

private:
    QString logPath() const { return dir_.filePath(QStringLiteral("frames.log")); }
    QString statePath() const { return dir_.filePath(QStringLiteral("state.json")); }

    QTemporaryDir dir_;
    SimProcess sim_;
};

CliResult runEn(const QStringList& arguments, const QString& portsDir = {})
{
    return runCli(QStringList{QStringLiteral("--lang"), QStringLiteral("en")} + arguments, portsDir);
}

// Saves the module at `address` into `path` with a whole read.
bool saveModule(WatchedLine& line, int address, const QString& path)
{
    return runCli(words("read --address") << QString::number(address) << QStringLiteral("--port") << line.port()
                                          << QStringLiteral("--save") << path)
               .exitCode
        == 0;
}

// A TM-A4's configuration file, saved from a line of its own, and another
// line whose only module, at address 5, is a TM-C16.
struct A4FileBesideATmC16 {
    A4FileBesideATmC16()
    {
        ready = line.start({QStringLiteral("1:TM-C16"), QStringLiteral("2:TM-A4")}) && saveModule(line, 2, a4)
             && other.start({QStringLiteral("5:TM-C16")});
    }
    WatchedLine line;
    WatchedLine other;
    const QString a4 = line.file(QStringLiteral("a4.cfg"));
    bool ready = false;
};

}  // namespace

class CliGuardsTest : public QObject {
    Q_OBJECT
private slots:
    void writeRefusesWhatIsNotAModuleRecord_data();
    void writeRefusesWhatIsNotAModuleRecord();
    void forceStillWritesAnyFile();
    void writeRefusesAModuleOfAnotherModel();
    void writeNamesTheModuleWrittenTo();
    void addressTwoFiftyFiveIsRefusedWhereNoModuleAnswersIt();
    void informationWriteLearnsTheModelByTheBeckonThenWrites();
    void informationWriteRefusesAModuleOfAnotherModel();
    void forcedInformationWriteSendsTheWriteAlone();
    void channelsBeyondTheModuleAreRefused();
    void filesThatAreNotRegularAreRefusedAtOnce();
    void searchFailsWhenAModuleIsNotReadWholly();
    void searchTakesEachLineOnce();
    void searchStopsWhenTheTableIsFull();
    void killedSimulatorsPortIsNeverListedOrOpened();
    void hangupTakesThePublishedPortDown();
    void aNameAndItsDeviceNeverTalkAtOnce();
    void fullDiskKeepsTheOldStateWhole();
    void frameLogIsOnDiskLineByLine();
    void lateModuleDoesNotHoldTheLine();
    void controlCharactersAreShownEscaped();
    void everyMessageComesInBothLanguages();
    void cAndPosixLocalesReadEnglish();
    void portFailureNamesThePortAndTheReason();
};

void CliGuardsTest::writeRefusesWhatIsNotAModuleRecord_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const QByteArray image = moduleImageBytes();
    auto changed = [&](int offset, QByteArray bytes) { return QByteArray(image).replace(offset, bytes.size(), bytes); };
    QTest::newRow("empty") << QByteArray() << "it has 0 bytes, not 8679";
    QTest::newRow("short") << image.first(100) << "it has 100 bytes, not 8679";
    QTest::newRow("long") << image + 'x' << "it has 8680 bytes, not 8679";
    QTest::newRow("model code 10") << changed(moduleImage::kCapabilities, QByteArray(1, 10)) << "its model code 10 is above 9";
    QTest::newRow("escape in name") << changed(moduleImage::kModelName, "TM\x1b" "C16") << "its model name is not printable text";
    QTest::newRow("blank name") << changed(moduleImage::kModelName, QByteArray(20, ' ')) << "its model name is not printable text";
    QTest::newRow("5 channels") << changed(moduleImage::kChannelCount, QByteArray("\x05\x00", 2)) << "its channel count 5 is not 4, 8 or 16";
}

void CliGuardsTest::writeRefusesWhatIsNotAModuleRecord()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-C16")}));
    const QString path = line.file(QStringLiteral("foreign.cfg"));
    QVERIFY(writeFile(path, bytes));
    const QString expected = path + QStringLiteral(" is not a module's configuration file: ") + reason
                           + QStringLiteral(". Nothing was sent; give --force to send it anyway.");

    const CliResult write = runEn(words("write --address 1 --port") << line.port() << QStringLiteral("--config") << path);
    QCOMPARE(write.exitCode, 2);
    QCOMPARE(write.errText(), expected);
    const CliResult info = runEn(words("write-info --only-one-module --port") << line.port() << QStringLiteral("--config") << path);
    QCOMPARE(info.exitCode, 2);
    QCOMPARE(info.errText(), expected);
    QVERIFY(write.out.isEmpty() && info.out.isEmpty());
    QCOMPARE(line.requestsSoFar().size(), 0);
    QVERIFY(!line.changed());
    QCOMPARE(fileBytes(path), bytes);
}

void CliGuardsTest::forceStillWritesAnyFile()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-C16")}));
    const QString path = line.file(QStringLiteral("empty.cfg"));
    QVERIFY(writeFile(path, {}));
    const CliResult forced = runEn(words("--json write --force --address 1 --port") << line.port() << QStringLiteral("--config") << path);
    QCOMPARE(forced.exitCode, 0);
    // What the empty file stood for, the program's defaults, is now in the module.
    QVERIFY(line.changed());
    const CliResult back = runEn(words("--json read --address 1 --port") << line.port());
    const ModuleRecord module = recordOf(back.json());
    const ModuleRecord defaults = defaultModule();
    for (size_t c = 0; c < 16; ++c)
        VELMOR_VERIFY_SAME(coefficientDifference(module.channels[c], defaults.channels[c], false));
}

void CliGuardsTest::writeRefusesAModuleOfAnotherModel()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-C16"), QStringLiteral("2:TM-A4")}));
    const QString a4 = line.file(QStringLiteral("a4.cfg"));
    QVERIFY(saveModule(line, 2, a4));
    const int before = static_cast<int>(line.requests().size());

    const CliResult refused = runEn(words("write --address 1 --port") << line.port() << QStringLiteral("--config") << a4);
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), QStringLiteral("The module at address 1 is a TM-C16, but the file holds a TM-A4; nothing was written. "
                                               "Give --force to write it anyway."));
    // The module was asked who it is, and nothing else.
    const QList<Request> sent = line.requestsSoFar().mid(before);
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent[0].address, 1);
    QCOMPARE(sent[0].command, kCmdRead);
    QVERIFY(!line.changed());

    const CliResult forced = runEn(words("write --force --address 1 --port") << line.port() << QStringLiteral("--config") << a4);
    QCOMPARE(forced.exitCode, 0);
    QVERIFY(line.changed());
}

void CliGuardsTest::writeNamesTheModuleWrittenTo()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("4:TM-C16"), QStringLiteral("9:TM-C16")}));
    const QString path = line.file(QStringLiteral("four.cfg"));
    QVERIFY(saveModule(line, 4, path));
    const CliResult write = runEn(words("--json write --address 9 --port") << line.port() << QStringLiteral("--config") << path);
    QCOMPARE(write.exitCode, 0);
    const ModuleRecord shown = recordOf(write.json());
    const ModuleRecord target = sim::simulatedModule(9, 2, kSeed);
    QVERIFY(target.moduleNumber != sim::simulatedModule(4, 2, kSeed).moduleNumber);
    QCOMPARE(shown.busAddress, qint16(9));
    QCOMPARE(shown.moduleNumber, target.moduleNumber);
    VELMOR_VERIFY_SAME(informationDifference(shown, target));
    // ... and it now holds the file's channels.
    const CliResult back = runEn(words("--json read --address 9 --port") << line.port());
    QCOMPARE(back.json()[QStringLiteral("channels")], write.json()[QStringLiteral("channels")]);
}

void CliGuardsTest::addressTwoFiftyFiveIsRefusedWhereNoModuleAnswersIt()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-A4")}));
    const QString path = line.file(QStringLiteral("a4.cfg"));
    QVERIFY(saveModule(line, 1, path));
    const int before = static_cast<int>(line.requests().size());
    const QString expected = QStringLiteral("At address 255 a module answers only the beckon and takes only the information "
                                            "write; give the module's own address (velmor-cli beckon tells it).");
    for (const QStringList& command : {words("write --address 255 --port") << line.port() << QStringLiteral("--config") << path,
                                       words("balance --address 255 --port") << line.port(),
                                       words("read --address 255 --port") << line.port()}) {
        const CliResult refused = runEn(command);
        QCOMPARE(refused.exitCode, 2);
        QCOMPARE(refused.errText(), expected);
    }
    QCOMPARE(line.requestsSoFar().size(), before);
    QVERIFY(!line.changed());
}

// The information write goes to 255, where a module answers the beckon: the
// beckon tells the model, then the write goes out, and nothing else.
void CliGuardsTest::informationWriteLearnsTheModelByTheBeckonThenWrites()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("3:TM-C16")}));
    const QString path = line.file(QStringLiteral("c16.cfg"));
    QVERIFY(saveModule(line, 3, path));
    QByteArray bytes = fileBytes(path);
    bytes.replace(moduleImage::kBusAddress, 2, QByteArray("\x0B\x00", 2));
    bytes.replace(moduleImage::kModuleNumber, 2, QByteArray("\x39\x30", 2));  // 12345
    QVERIFY(writeFile(path, bytes));
    const int before = static_cast<int>(line.requests().size());

    const CliResult info = runEn(words("--json write-info --only-one-module --port") << line.port() << QStringLiteral("--config") << path);
    QCOMPARE(info.exitCode, 0);
    QCOMPARE(info.json()[QStringLiteral("busAddress")].toInt(), 11);
    QCOMPARE(info.json()[QStringLiteral("moduleNumber")].toInt(), 12345);
    const QList<Request> sent = line.requests().mid(before);
    QCOMPARE(sent.size(), 2);
    QCOMPARE(sent[0].address, 255);
    QCOMPARE(sent[0].command, kCmdBeckon);
    QCOMPARE(sent[1].address, 255);
    QCOMPARE(sent[1].command, kCmdWrite);
    // The module took the file's information: it answers at its new address.
    const CliResult back = runEn(words("--json read --address 11 --port") << line.port());
    QCOMPARE(back.exitCode, 0);
    QCOMPARE(back.json()[QStringLiteral("moduleNumber")].toInt(), 12345);
}

void CliGuardsTest::informationWriteRefusesAModuleOfAnotherModel()
{
    const A4FileBesideATmC16 rig;
    QVERIFY(rig.ready);
    const QString& a4 = rig.a4;
    const WatchedLine& other = rig.other;
    const CliResult refused = runEn(words("write-info --only-one-module --port") << other.port() << QStringLiteral("--config") << a4);
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), QStringLiteral("The module at address 5 is a TM-C16, but the file holds a TM-A4; nothing was written. "
                                               "Give --force to write it anyway."));
    const QList<Request> sent = other.requestsSoFar();
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent[0].command, kCmdBeckon);
    QVERIFY(!other.changed());
}

void CliGuardsTest::forcedInformationWriteSendsTheWriteAlone()
{
    const A4FileBesideATmC16 rig;
    QVERIFY(rig.ready);
    const QString& a4 = rig.a4;
    const WatchedLine& other = rig.other;
    const CliResult forced = runEn(words("write-info --force --only-one-module --port") << other.port() << QStringLiteral("--config") << a4);
    QCOMPARE(forced.exitCode, 0);
    const QList<Request> sent = other.requests();
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent[0].address, 255);
    QCOMPARE(sent[0].command, kCmdWrite);
    QVERIFY(other.changed());
}

void CliGuardsTest::channelsBeyondTheModuleAreRefused()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-A4")}, words("--balance-delay 100")));
    const CliResult refused = runEn(words("balance --address 1 --channels 3,5 --port") << line.port());
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), QStringLiteral("--channels names channel 5, but the module at address 1 has 4 channels; "
                                               "no balance was sent. Give --force to send it anyway."));
    const QList<Request> sent = line.requestsSoFar();
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent[0].command, kCmdRead);
    QVERIFY(!line.changed());

    QCOMPARE(runEn(words("balance --force --address 1 --channels 3,5 --port") << line.port()).exitCode, 0);
    const QList<Request> after = line.requests();
    QVERIFY(std::any_of(after.begin(), after.end(), [](const Request& r) { return r.command == kCmdBalance; }));
    QVERIFY(line.changed());
}

void CliGuardsTest::filesThatAreNotRegularAreRefusedAtOnce()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-A4")}));
    const QString fifo = line.file(QStringLiteral("setup.fifo"));
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString notRegular = QStringLiteral("Open configure file fail!\n%1 is not a regular file.");

    // Each would block for ever on the FIFO (runCli gives up after two minutes).
    const QList<QStringList> loads = {
        words("show") << fifo,
        words("write --address 1 --port") << line.port() << QStringLiteral("--config") << fifo,
        words("write-info --only-one-module --port") << line.port() << QStringLiteral("--config") << fifo,
        words("read --address 1 --port") << line.port() << QStringLiteral("--save") << fifo,
        words("report") << fifo << QStringLiteral("--out") << line.file(QStringLiteral("report.pdf")),
    };
    for (const QStringList& command : loads) {
        const CliResult result = runEn(command);
        QVERIFY2(result.exitCode == 4, qPrintable(command.join(QLatin1Char(' '))));
        QCOMPARE(result.errText(), notRegular.arg(fifo));
    }
    // A device is no place for a configuration either, and stays a device.
    const CliResult device = runEn(words("read --address 1 --save /dev/null --port") << line.port());
    QCOMPARE(device.exitCode, 4);
    QCOMPARE(device.errText(), notRegular.arg(QStringLiteral("/dev/null")));
    QVERIFY(QFileInfo::exists(QStringLiteral("/dev/null")) && !QFileInfo(QStringLiteral("/dev/null")).isFile());
    QCOMPARE(line.requestsSoFar().size(), 0);
    QVERIFY(!line.changed());

    // The simulator's state file is held to the same rule.
    SimProcess stateOnFifo;
    QVERIFY(!stateOnFifo.start(QStringList{QStringLiteral("--state"), fifo}));
    QVERIFY(stateOnFifo.error().contains(QStringLiteral("is not a regular file")));
}

void CliGuardsTest::searchFailsWhenAModuleIsNotReadWholly()
{
    // Module 5 answers the search (its first exchange) and the information
    // read (its second), then stays silent on its first channel group.
    const QStringList modules{QStringLiteral("2:TM-C16"), QStringLiteral("5:TM-A4")};
    const QStringList fault = words("--fault 5:silence:3");
    WatchedLine line;
    QVERIFY(line.start(modules, fault));
    const QString name = line.sim().portName();
    const CliResult text = runEn(words("search --port") << name, line.sim().portsDir());
    QCOMPARE(text.exitCode, 1);
    QCOMPARE(text.errText(), QStringLiteral("No respond.\nModule 2 (") + name + QStringLiteral(", address 5) could not be read wholly."));
    QVERIFY(text.out.trimmed().endsWith("Found 2 modules."));
    WatchedLine again;
    QVERIFY(again.start(modules, fault));
    const CliResult json = runEn(words("--json search --port") << again.port());
    QCOMPARE(json.exitCode, 1);
    QCOMPARE(json.json()[QStringLiteral("incomplete")].toArray(), QJsonArray{2});
}

void CliGuardsTest::searchTakesEachLineOnce()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("3:TM-A4")}));
    const CliResult result = runEn(words("search --port") << line.sim().portName() << QStringLiteral("--port") << line.port()
                                                          << QStringLiteral("--port") << line.sim().devicePath(),
                                   line.sim().portsDir());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out.trimmed().split('\n').size(), 2);
    QVERIFY(result.out.trimmed().endsWith("Found 1 modules."));
    // 17 addresses searched once, then the module's five whole-read requests.
    QCOMPARE(line.requests().size(), 17 + 5);
}

void CliGuardsTest::searchStopsWhenTheTableIsFull()
{
    QStringList modules;
    for (int address = 0; address <= 16; ++address)
        modules << QStringLiteral("%1:TM-A4").arg(address);
    WatchedLine first;
    WatchedLine second;
    QVERIFY(first.start(modules));
    QVERIFY(second.start(modules, words("--name SIM2")));
    const CliResult result = runEn(words("search --port") << first.port() << QStringLiteral("--port") << second.port());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errText(), QStringLiteral("The module table is full: the search stopped at 33 modules."));
    QVERIFY(result.out.trimmed().endsWith("Found 33 modules."));
    // The lines are searched at once, so the second line's address 16 may
    // have been asked; its module is not in the table all the same.
    const QStringList listed = QString::fromUtf8(result.out).trimmed().split(QLatin1Char('\n'));
    QCOMPARE(listed.size(), kModuleSlots + 1);
    QVERIFY2(listed[kModuleSlots - 1].startsWith(QStringLiteral("33\tSIM2\t15\t")), qPrintable(listed[kModuleSlots - 1]));
}

void CliGuardsTest::killedSimulatorsPortIsNeverListedOrOpened()
{
    QTemporaryDir folder;
    SimProcess killed;
    QVERIFY(killed.start(words("--fast --ports-dir") << folder.path()));
    const QString link = QDir(folder.path()).filePath(killed.portName());
    const QString device = killed.devicePath();
    killed.process().kill();  // SIGKILL: no chance to take the link down
    QVERIFY(killed.process().waitForFinished());
    QVERIFY(QFileInfo(link).isSymLink());

    // Another program is given the same pseudo-terminal number.
    QList<int> masters;
    int reused = -1;
    while (reused < 0 && masters.size() < 64) {
        const int fd = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        QVERIFY(fd >= 0);
        masters.append(fd);
        ::grantpt(fd);
        ::unlockpt(fd);
        if (QString::fromLocal8Bit(::ptsname(fd)) == device)
            reused = fd;
    }
    QVERIFY2(reused >= 0, "the pseudo-terminal number was not given out again");
    QVERIFY(QFileInfo(link).exists());  // the old link leads somewhere again

    const CliResult byPath = runEn(words("read --address 1 --port") << link, folder.path());
    QCOMPARE(byPath.exitCode, 3);
    const CliResult byName = runEn(words("read --address 1 --port") << killed.portName(), folder.path());
    QCOMPARE(byName.exitCode, 3);
    const CliResult ports = runEn(words("ports"), folder.path());
    QVERIFY(!ports.out.contains(killed.portName().toUtf8()));
    char byte = 0;
    QCOMPARE(::read(reused, &byte, 1), ssize_t(-1));  // nothing reached the other program
    for (int fd : masters)
        ::close(fd);

    // The name is free for a new line.
    SimProcess next;
    QVERIFY2(next.start(words("--fast --ports-dir") << folder.path()), qPrintable(next.error()));
    QCOMPARE(next.portName(), killed.portName());
    QVERIFY(runEn(words("ports"), folder.path()).out.contains(next.portName().toUtf8() + '\t'));
    QCOMPARE(runEn(words("read --address 1 --port") << next.portName(), folder.path()).exitCode, 0);
}

void CliGuardsTest::hangupTakesThePublishedPortDown()
{
    SimProcess sim;
    QVERIFY(sim.start(words("--fast")));
    const QString link = sim.linkPath();
    QVERIFY(QFileInfo(link).isSymLink());
    ::kill(static_cast<pid_t>(sim.process().processId()), SIGHUP);
    QVERIFY(sim.process().waitForFinished());
    QCOMPARE(sim.process().exitCode(), 0);
    QVERIFY(!QFileInfo(link).isSymLink());
    QVERIFY(QDir(sim.portsDir()).isEmpty());
}

void CliGuardsTest::aNameAndItsDeviceNeverTalkAtOnce()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-A4")}));
    const QString name = line.sim().portName();
    const QString device = line.sim().devicePath();
    {
        ComPort holder;
        QVERIFY(holder.openDevice(device));
        const CliResult result = runEn(words("read --address 1 --port") << name, line.sim().portsDir());
        QCOMPARE(result.exitCode, 3);
        QVERIFY2(result.errText().startsWith(QStringLiteral("Open COM port fail.\n") + name + QStringLiteral(" (")),
                 qPrintable(result.errText()));
    }
    {
        ComPort holder;
        QVERIFY(holder.openDevice(line.port()));
        QCOMPARE(runEn(words("read --address 1 --port") << device).exitCode, 3);
    }
    QCOMPARE(line.requestsSoFar().size(), 0);
    QCOMPARE(runEn(words("read --address 1 --port") << device).exitCode, 0);
}

void CliGuardsTest::fullDiskKeepsTheOldStateWhole()
{
    QTemporaryDir dir;
    const QString state = dir.filePath(QStringLiteral("state.json"));
    const QStringList arguments = words("--fast --module 1:TM-C16 --balance-delay 50 --state") << state;
    {
        SimProcess sim;
        QVERIFY(sim.start(arguments));
        QCOMPARE(runEn(words("balance --address 1 --port") << sim.linkPath()).exitCode, 0);
        QVERIFY(sim.stop());
    }
    const QByteArray kept = fileBytes(state);
    QVERIFY(kept.size() > 4096);

    // The disk takes no more than 4 KiB per file from now on.
    SimProcess sim;
    sim.limitFileSize(4096);
    QVERIFY(sim.start(arguments));
    QCOMPARE(runEn(words("balance --address 1 --channels 2 --port") << sim.linkPath()).exitCode, 0);
    QByteArray said;
    QVERIFY(QTest::qWaitFor([&] {
        said += sim.process().readAllStandardError();
        return said.contains("previous state is kept");
    }, 5000));
    QVERIFY(said.contains("velmor-sim: cannot write the state " + state.toUtf8()));
    QCOMPARE(fileBytes(state), kept);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("state.json")});
    // The line goes on answering.
    QCOMPARE(runEn(words("read --address 1 --port") << sim.linkPath()).exitCode, 0);
}

void CliGuardsTest::frameLogIsOnDiskLineByLine()
{
    WatchedLine line;
    QVERIFY(line.start({QStringLiteral("1:TM-A4")}));
    QCOMPARE(runEn(words("read --address 1 --port") << line.port()).exitCode, 0);
    // Read while the simulator still runs: every frame is there already.
    QCOMPARE(line.requests().size(), 5);
}

void CliGuardsTest::lateModuleDoesNotHoldTheLine()
{
    WatchedLine line;
    // Module 1 answers every request 1.5 s late, long after the search has
    // given up on it and asked module 2.
    QVERIFY(line.start({QStringLiteral("1:TM-A4"), QStringLiteral("2:TM-A4")}, words("--fault 1:late:0:1500")));
    const CliResult result = runEn(words("search --port") << line.port());
    QCOMPARE(result.exitCode, 0);
    const QList<QByteArray> lines = result.out.trimmed().split('\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[0].startsWith("1\t"));
    QCOMPARE(lines[0].split('\t').value(2), QByteArray("2"));
    QCOMPARE(lines[1], QByteArray("Found 1 modules."));
}

void CliGuardsTest::controlCharactersAreShownEscaped()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("odd.cfg"));
    QVERIFY(writeFile(path, moduleImageBytes().replace(moduleImage::kModelName, 8, "TM\x1b[2J\x07Z")));
    const CliResult text = runEn(words("show") << path);
    QCOMPARE(text.exitCode, 0);
    QVERIFY(text.out.contains("TM\\x1B[2J\\x07Z"));
    QVERIFY(!text.out.contains('\x1b') && !text.out.contains('\x07'));
    const CliResult json = runEn(words("--json show") << path);
    QCOMPARE(json.json()[QStringLiteral("modelName")].toString().left(8), QStringLiteral("TM\x1b[2J\x07Z"));

    // A port's name is a file name in a folder anyone may write to.
    SimProcess sim;
    QVERIFY(sim.start(QStringList{QStringLiteral("--fast"), QStringLiteral("--module"), QStringLiteral("3:TM-A4"),
                                  QStringLiteral("--name"), QStringLiteral("S\x1b]0;x\x07\x7f" "1")}));
    const CliResult ports = runEn(words("ports"), sim.portsDir());
    QVERIFY(ports.out.contains("S\\x1B]0;x\\x07\\x7F1\t"));
    const CliResult search = runEn(words("search"), sim.portsDir());
    QCOMPARE(search.exitCode, 0);
    QVERIFY(search.out.startsWith("1\tS\\x1B]0;x\\x07\\x7F1\t3\tTM-A4\t"));
    for (const CliResult* result : {&ports, &search})
        QVERIFY(!result->out.contains('\x1b') && !result->out.contains('\x07'));
}

void CliGuardsTest::everyMessageComesInBothLanguages()
{
    const CliResult help = runCli(words("--lang zh --help"));
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.out.startsWith("用法：velmor-cli"));
    QVERIFY(!help.out.contains("Usage") && !help.out.contains("Show"));
    for (const char* command : {"ports", "search", "read", "write", "write-info", "beckon", "balance", "show", "report"}) {
        const CliResult zh = runCli(words("--lang zh") << QString::fromLatin1(command) << QStringLiteral("--help"));
        QCOMPARE(zh.exitCode, 0);
        QVERIFY(zh.out.startsWith("用法：velmor-cli " + QByteArray(command)));
        // Every option's description is Chinese, Qt's "Options:" included.
        QVERIFY(zh.out.contains("选项："));
        for (const QByteArray& row : zh.out.split('\n'))
            if (row.startsWith("  -"))
                QVERIFY2(QString::fromUtf8(row).contains(QRegularExpression(QStringLiteral("\\p{Han}"))), row.constData());
        const CliResult en = runCli(words("--lang en") << QString::fromLatin1(command) << QStringLiteral("--help"));
        QVERIFY(en.out.startsWith("Usage: velmor-cli " + QByteArray(command)));
        QVERIFY(!QString::fromUtf8(en.out).contains(QRegularExpression(QStringLiteral("\\p{Han}"))));
    }

    const QList<QPair<QStringList, QPair<QString, QString>>> errors = {
        {words("read --address 3"), {QStringLiteral("需要 --port。"), QStringLiteral("--port is required.")}},
        {words("read --port x --address 999"), {QStringLiteral("--address 取 0 到 254 的数。"), QStringLiteral("--address takes a number from 0 to 254.")}},
        {words("read --bogus"), {QStringLiteral("未知选项“bogus”。"), QStringLiteral("Unknown option 'bogus'.")}},
        {words("write --port x --address 1"), {QStringLiteral("需要 --config。"), QStringLiteral("--config is required.")}},
        {words("show"), {QStringLiteral("show 只取一个配置文件。"), QStringLiteral("show takes one configuration file.")}},
        {words("balance --port x --address 1 --channels 0"),
         {QStringLiteral("--channels 取 1 到 16 的通道号，例如 1,2,5-8。"), QStringLiteral("--channels takes channel numbers 1 to 16, e.g. 1,2,5-8.")}},
        {words("balance --port x --address 255"),
         {QStringLiteral("在地址 255 上模块只应答召唤、只接受模块信息写入；请给出模块自己的地址（velmor-cli beckon 会告诉它）。"),
          QStringLiteral("At address 255 a module answers only the beckon and takes only the information write; give the "
                         "module's own address (velmor-cli beckon tells it).")}},
        {words("show /nonexistent/x.cfg"),
         {QStringLiteral("打开配置文件操作失败!\n/nonexistent/x.cfg：此文件或目录不存在"),
          QStringLiteral("Open configure file fail!\n/nonexistent/x.cfg: No such file or directory")}},
        {words("report x.cfg"), {QStringLiteral("需要 --out。"), QStringLiteral("--out is required.")}},
        {words("report --out r.html"), {QStringLiteral("report 只取一个配置文件。"), QStringLiteral("report takes one configuration file.")}},
        {words("report x.cfg --out r.doc"),
         {QStringLiteral("报告的文件名须以 .pdf 或 .html 结尾：r.doc"), QStringLiteral("The report's file name must end in .pdf or .html: r.doc")}},
        {words("report /nonexistent/x.cfg --out /nonexistent/r.pdf"),
         {QStringLiteral("打开配置文件操作失败!\n/nonexistent/x.cfg：此文件或目录不存在"),
          QStringLiteral("Open configure file fail!\n/nonexistent/x.cfg: No such file or directory")}},
    };
    for (const auto& [arguments, texts] : errors) {
        QCOMPARE(runCli(words("--lang zh") + arguments).errText(), texts.first);
        QCOMPARE(runCli(words("--lang en") + arguments).errText(), texts.second);
    }
    QVERIFY(runCli(words("--lang zh frobnicate")).errText().startsWith(QStringLiteral("未知命令 frobnicate。\n用法：")));
    QVERIFY(runCli(words("--lang zh --bogus")).errText().startsWith(QStringLiteral("未知选项 --bogus。\n用法：")));
    // A wrong --lang is told in the system's language.
    QCOMPARE(runCli(words("--lang fr ports"), {}, QStringLiteral("zh_CN.UTF-8")).errText(), QStringLiteral("--lang 只取 zh 或 en。"));
    QCOMPARE(runCli(words("--lang fr ports")).errText(), QStringLiteral("--lang takes zh or en."));
}

void CliGuardsTest::cAndPosixLocalesReadEnglish()
{
    for (const QString& locale : {QStringLiteral("C"), QStringLiteral("POSIX"), QStringLiteral("C.UTF-8")}) {
        QCOMPARE(runCli(words("show /nonexistent/x.cfg"), {}, locale).errText(),
                 QStringLiteral("Open configure file fail!\n/nonexistent/x.cfg: No such file or directory"));
        QVERIFY(runCli(words("--help"), {}, locale).out.startsWith("Usage: velmor-cli"));
    }
}

void CliGuardsTest::portFailureNamesThePortAndTheReason()
{
    const CliResult zh = runCli(words("--lang zh read --address 1 --port /nonexistent/ttyUSB9"));
    QCOMPARE(zh.exitCode, 3);
    QCOMPARE(zh.errText(), QStringLiteral("打开串口失败。\nttyUSB9 (/nonexistent/ttyUSB9)：此文件或目录不存在"));
    // A path that will not open ends the search with 3 like the other commands,
    // even when it is the only port.
    const CliResult search = runEn(words("search --port /nonexistent/ttyGone"));
    QCOMPARE(search.exitCode, 3);
    QCOMPARE(search.errText(), QStringLiteral("Open ttyGone fail.\nttyGone (/nonexistent/ttyGone): No such file or directory"));
    QCOMPARE(search.out.trimmed(), QByteArray("No module to be found."));
}

QTEST_GUILESS_MAIN(CliGuardsTest)
#include "cli_guards_test.moc"
