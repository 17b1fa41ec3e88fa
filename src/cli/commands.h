#pragma once

#include "config/record_check.h"
#include "link/concurrent_search.h"
#include "session.h"

#include <QCommandLineParser>

namespace velmor::cli {

struct Command {
    const char* name;
    const Text* synopsis;
    const Text* summary;
    void (*declare)(QCommandLineParser& parser, Language language);
    int (*run)(Session& session, const QCommandLineParser& parser);
};

// Every command of velmor-cli, in the order the help lists them.
const QList<Command>& commands();

// The commands that live in files of their own.
int runSearch(Session& session, const QCommandLineParser& parser);
int runWrite(Session& session, const QCommandLineParser& parser);
int runWriteInfo(Session& session, const QCommandLineParser& parser);
int runBalance(Session& session, const QCommandLineParser& parser);
void declareEdit(QCommandLineParser& parser, Language language);
void declareReport(QCommandLineParser& parser, Language language);
int runReport(Session& session, const QCommandLineParser& parser);
int runEdit(Session& session, const QCommandLineParser& parser);
void declareHistory(QCommandLineParser& parser, Language language);
int runHistory(Session& session, const QCommandLineParser& parser);
void declareDiff(QCommandLineParser& parser, Language language);
void declareRack(QCommandLineParser& parser, Language language);
int runRack(Session& session, const QCommandLineParser& parser);
int reportRack(Session& session, const QCommandLineParser& parser, const QString& path);
int runDiff(Session& session, const QCommandLineParser& parser);

// What the commands share across their files.

// The ports a search takes (--port given, else every listed one), or an
// exit code when one cannot be named.
int searchedPorts(Session& session, const QCommandLineParser& parser, QList<PortEntry>& ports);
// Every port searched at once and each module found read wholly, into the
// session's table; messages before the search's report go to standard error.
struct LinesRead {
    int found = 0;      // into the table
    QList<int> unread;  // found but not read wholly
    // Every module found, whether the table holds it or not.
    QList<ConcurrentSearch::Found> every;
    bool portFailed = false;
    QString report;     // the search's closing report
};
// A whole rack's search is not bounded by the table (ConcurrentSearch::keepEveryModule).
LinesRead readLines(Session& session, const QList<PortEntry>& ports, bool wholeRack = false);
// The search in the history: which lines, which modules; and every module it
// read wholly, as a read.
void recordSearch(Session& session, const QList<PortEntry>& ports, const LinesRead& read);

// "1,2,5-8" as a channel mask (bit c for channel c+1); false on anything else.
bool channelMask(const QString& list, qint32& mask);
// A configuration file into the current record. Unless `force`, only a module's
// record is taken (else `refusal` names the file and the fault, exit 2); a FIFO
// or a device, or a file that cannot be read, exits 4. `loaded`, when given,
// receives the bytes the file held.
int loadCheckedRecord(Session& session, const QString& path, bool force, const Text& refusal,
                      QByteArray* loaded = nullptr);
// Why bytes are not a module's record ("it has 4000 bytes, not 8679").
QString recordFaultText(const RecordCheck& check, const QString& path, Language language);

}  // namespace velmor::cli
