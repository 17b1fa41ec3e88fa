// The flows over a serial server: ser2net on 127.0.0.1 in front of the
// simulated line's pseudo-terminal, reached as tcp:// and as rfc2217://, must
// do exactly what they do on the pseudo-terminal itself.

#include "config/config_file.h"
#include "link/frame_log.h"
#include "link_rig.h"
#include "protocol/replies.h"
#include "support/ser2net_process.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace velmor;
using namespace velmor::testing;

namespace {

enum class Route { Local, Raw, Rfc2217 };

constexpr int kAddress = 2;
constexpr int kPortNumber = 1;

// A line with one TM-C16, reached the way `route` says. ser2net's side of the
// line is set as `serverLine` says.
class RoutedLine {
public:
    RoutedLine(Route route, const sim::LineSettings& settings, const QString& serverLine = QStringLiteral("4800n81"))
        : line_({sim::ModuleAt{kAddress, 2}}, settings)
    {
        if (!line_.isReady()) {
            error_ = line_.error();
            return;
        }
        if (route == Route::Local) {
            entry_ = {QStringLiteral("SIM1"), kPortNumber, line_.devicePath()};
            return;
        }
        const auto accepter = route == Route::Raw ? Ser2netProcess::Accepter::Raw : Ser2netProcess::Accepter::Rfc2217;
        const int index = server_.addConnection(accepter, line_.devicePath(), serverLine);
        if (!server_.start()) {
            error_ = server_.error();
            return;
        }
        entry_ = {server_.url(index), kPortNumber, server_.url(index)};
    }

    bool isReady() const { return error_.isEmpty(); }
    QString error() const { return error_; }
    const PortEntry& entry() const { return entry_; }
    SimLine& sim() { return line_; }
    Ser2netProcess& server() { return server_; }

    // Points the rig's port list and current module at this line.
    void select(LinkRig& rig) const
    {
        rig.port.setPorts({entry_});
        rig.state.current().portNumber = kPortNumber;
        rig.state.current().busAddress = kAddress;
    }

private:
    SimLine line_;
    Ser2netProcess server_;
    PortEntry entry_;
    QString error_;
};

sim::LineSettings fastLine()
{
    sim::LineSettings settings;
    settings.fast = true;
    settings.balanceDelayMs = 300;
    return settings;
}

// Everything a session of operations leaves behind, on both sides of the line.
struct Outcome {
    QList<QByteArray> sent;      // as the program wrote them
    QList<QByteArray> received;  // as the program took them
    QList<QByteArray> requests;  // as the module heard them
    QList<QByteArray> replies;   // as the module said them
    QStringList messages;
    int found = 0;
    ModuleRecord record;
    QByteArray savedFile;
};

bool containsByte(const QList<QByteArray>& frames, char byte)
{
    return std::any_of(frames.begin(), frames.end(), [&](const QByteArray& f) { return f.contains(byte); });
}

}  // namespace

class RemoteLineTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void everyFlowDoesOverTheNetworkWhatItDoesLocally();
    void rfc2217SetsTheLineTo4800_8N1WhateverTheServerWasTold();
    void lineHeldByAnotherClientRefusesTheOpenWithTheServersWords();
    void serverThatIsNotRunningGivesThePortOpenMessage_data();
    void serverThatIsNotRunningGivesThePortOpenMessage();
    void serverStoppingDuringAWriteChainEndsItWithOneMessage_data();
    void serverStoppingDuringAWriteChainEndsItWithOneMessage();

private:
    void runSession(Route route, Outcome& outcome);
};

void RemoteLineTest::init() { VELMOR_REQUIRE_SER2NET(); }

// Search, information write to address 255 with module number 65535, send
// everything, beckon, balance of every channel, read everything, save.
void RemoteLineTest::runSession(Route route, Outcome& outcome)
{
    RoutedLine line(route, fastLine());
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    LinkRig rig;
    line.select(rig);
    FrameLog log;
    QObject::connect(&rig.operations.exchange(), &Exchange::frameLogged, &log, &FrameLog::append);
    connect(&log, &FrameLog::appended, this, [&](const FrameRow& row) {
        if (row.direction == FrameDirection::Out)
            outcome.sent << row.frame;
        else if (row.outcome == FrameOutcome::Accepted || row.outcome == FrameOutcome::Refused)
            outcome.received << frameWithin(row.frame).toByteArray();
    });

    ModuleSearch search(rig.operations, rig.dialogs);
    outcome.found = search.searchLinesAndReport({line.entry()}, kPortNumber);
    QCOMPARE(outcome.found, 1);

    ModuleRecord& record = rig.state.current();
    record.moduleNumber = 65535;  // 0xFF 0xFF on the wire
    for (size_t c = 0; c < 16; ++c) {
        record.channels[c].cutoff = 500 + static_cast<int>(c);
        record.channels[c].gainAdjustTable[1] = 0xFFFF - static_cast<int>(c);
    }
    QVERIFY(rig.operations.confirmAndWriteModuleInfo());
    QVERIFY(rig.operations.writeEverything());
    QVERIFY(rig.operations.beckon());
    rig.state.channelMask[static_cast<size_t>(rig.state.currentModule)] = -1;  // mask 0xFF 0xFF
    QVERIFY(rig.operations.balanceAndReadBack());
    QVERIFY(rig.operations.readEverything());

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("module.cfg"));
    QVERIFY(saveConfigFile(file, rig.state.current()));
    outcome.savedFile = readConfigBytes(file).value_or(QByteArray());
    outcome.record = rig.state.current();
    outcome.messages = rig.dialogs.texts();
    outcome.requests = line.sim().requests();
    outcome.replies = line.sim().replies();
}

void RemoteLineTest::everyFlowDoesOverTheNetworkWhatItDoesLocally()
{
    Outcome local;
    runSession(Route::Local, local);
    if (QTest::currentTestFailed())
        return;
    // The session does put 0xFF on the wire both ways.
    QVERIFY(containsByte(local.requests, '\xFF') && containsByte(local.replies, '\xFF'));
    QCOMPARE(local.record.moduleNumber, 65535);
    QCOMPARE(local.savedFile.size(), 8679);

    for (const Route route : {Route::Raw, Route::Rfc2217}) {
        const char* name = route == Route::Raw ? "tcp" : "rfc2217";
        Outcome remote;
        runSession(route, remote);
        if (QTest::currentTestFailed())
            return;
        QVERIFY2(remote.requests == local.requests, name);
        QVERIFY2(remote.replies == local.replies, name);
        // Byte for byte through the server: what the program wrote is what the
        // module heard, and what the module said is what the program took.
        QVERIFY2(remote.sent == remote.requests, name);
        QVERIFY2(remote.received == remote.replies, name);
        QCOMPARE(remote.messages, local.messages);
        QVERIFY2(remote.record == local.record, name);
        QVERIFY2(remote.savedFile == local.savedFile, name);
    }
}

void RemoteLineTest::rfc2217SetsTheLineTo4800_8N1WhateverTheServerWasTold()
{
    // ser2net is told 9600 baud, even parity, 7 data bits, 2 stop bits. A
    // pseudo-terminal always keeps 8 data bits and no parity, so what shows of
    // that is the speed and the stop bits.
    const QString serverLine = QStringLiteral("9600e72");
    for (const Route route : {Route::Raw, Route::Rfc2217}) {
        RoutedLine line(route, fastLine(), serverLine);
        QVERIFY2(line.isReady(), qPrintable(line.error()));
        LinkRig rig;
        line.select(rig);
        QVERIFY(rig.operations.readModuleInfo());
        // The connection, and so ser2net's hold on the line, outlives the exchange.
        const QString expected = route == Route::Raw ? QStringLiteral("9600 8N2") : QStringLiteral("4800 8N1");
        QTRY_COMPARE(line.sim().line().lineFormat().value_or(sim::LineFormat{}).text(), expected);
    }
}

void RemoteLineTest::lineHeldByAnotherClientRefusesTheOpenWithTheServersWords()
{
    RoutedLine line(Route::Rfc2217, fastLine());
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    LinkRig holder;
    line.select(holder);
    QVERIFY(holder.operations.readModuleInfo());  // its connection stays while idle
    LinkRig other;
    line.select(other);
    QVERIFY(!other.operations.readModuleInfo());
    VELMOR_COMPARE_SAID(other.dialogs.texts(), QStringList{QStringLiteral("Open COM port fail.")});
    QCOMPARE(other.port.openFailureReason(), QStringLiteral("Port already in use"));
    QCOMPARE(line.sim().requests().size(), 1);
}

void RemoteLineTest::serverThatIsNotRunningGivesThePortOpenMessage_data()
{
    QTest::addColumn<Route>("route");
    QTest::newRow("tcp") << Route::Raw;
    QTest::newRow("rfc2217") << Route::Rfc2217;
}

void RemoteLineTest::serverThatIsNotRunningGivesThePortOpenMessage()
{
    QFETCH(Route, route);
    RoutedLine line(route, fastLine());
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    line.server().stop();
    LinkRig rig;
    line.select(rig);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!rig.operations.readEverything());
    qInfo("refused after %lld ms", clock.elapsed());
    QCOMPARE(rig.dialogs.messages, (QList<QPair<QString, QString>>{{QStringLiteral("Error"), QStringLiteral("Open COM port fail.")}}));
    QCOMPARE(rig.operations.exchange().failure(), Failure::PortNotOpened);
    QCOMPARE(rig.port.openFailure(), OpenFailure::System);
    QCOMPARE(rig.port.openFailureReason(), QStringLiteral("Connection refused"));
    QVERIFY(line.sim().requests().isEmpty());
}

void RemoteLineTest::serverStoppingDuringAWriteChainEndsItWithOneMessage_data()
{
    serverThatIsNotRunningGivesThePortOpenMessage_data();
}

void RemoteLineTest::serverStoppingDuringAWriteChainEndsItWithOneMessage()
{
    QFETCH(Route, route);
    constexpr int kStopAt = 4;
    RoutedLine line(route, fastLine());
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    // The module keeps quiet on the request during which ser2net goes, so
    // that only the lost connection can end that exchange before its time-out.
    line.sim().addFault(kAddress, sim::FaultKind::Silence, kStopAt);
    int heard = 0;
    connect(&line.sim().line(), &sim::VirtualLine::frameLogged, this, [&](sim::Direction direction, const QByteArray&) {
        if (direction == sim::Direction::Received && ++heard == kStopAt)
            line.server().terminate();
    });
    LinkRig rig;
    line.select(rig);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!rig.operations.writeEverything());
    const qint64 elapsed = clock.elapsed();
    qInfo("the chain ended %lld ms after it began", elapsed);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No respond.")});
    QCOMPARE(line.sim().requests().size(), kStopAt);
    QVERIFY2(elapsed < Exchange::kOverAtStart, qPrintable(QString::number(elapsed)));
    QTRY_VERIFY(!line.server().isRunning());
    QVERIFY(rig.operations.sequenceDone());
}

QTEST_GUILESS_MAIN(RemoteLineTest)
#include "remote_line_test.moc"
