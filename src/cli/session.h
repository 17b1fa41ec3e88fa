#pragma once

#include "console_dialogs.h"
#include "exit_codes.h"
#include "history/history_recorder.h"
#include "link/frame_log.h"
#include "link/frame_log_csv.h"
#include "link/module_search.h"
#include "link/operations.h"
#include "link/port_lines.h"
#include "texts/language.h"

#include <QJsonValue>

namespace velmor::cli {

struct GlobalOptions {
    bool json = false;
    bool trace = false;
    QString logPath;  // --log FILE
    int languageMode = 1;
    HistoryTarget history;  // --history, --no-history, VELMOR_HISTORY
};

// What every command works with: the module table, the port, the flows and
// the way results are printed.
class Session {
public:
    explicit Session(const GlobalOptions& options);

    SetupState& state() { return state_; }
    ModuleRecord& record() { return state_.current(); }
    Operations& operations() { return operations_; }
    ConsoleDialogs& dialogs() { return dialogs_; }
    ComPort& port() { return port_; }
    Language language() const { return languageOf(state_.languageMode); }
    bool json() const { return options_.json; }

    // The frame log follows the session's exchange; --trace prints its rows.
    // A search of all lines at once, whose lines have exchanges of their own,
    // logs while frameLog() follows it.
    // --log: every row of the frame log appended to `path` as it comes; false,
    // having said why, when the file cannot be opened for appending or is not
    // a regular file (a FIFO would block for ever). /dev/null logs nothing.
    bool logFramesTo(const QString& path);
    // A row could not be written (said once on standard error); the
    // exchanges went on as asked.
    bool logFailed() const { return logFailed_; }
    FrameLog& frameLog() { return frameLog_; }

    // The listed ports, and the one a --port argument names (made current).
    const QList<PortEntry>& ports() const { return lines_.ports(); }
    bool choosePort(const QString& argument, PortEntry& chosen);

    // The exit code of the last flow: done, or how its exchange failed. A
    // port that would not open also gets a line that names it and says why.
    int outcome(bool ok);
    // "NAME (DEVICE): reason" for the port's last failed open.
    QString portFailureText(const PortEntry& port) const;
    QString portFailureText(const PortEntry& port, OpenFailure failure, const QString& systemReason) const;

    void printRecord(const QString& portName);
    void printJson(const QJsonValue& value);
    void printText(const QString& text);
    // Name of the port with this number, or the number itself.
    QString portName(int number) const;

    // The run's history: its store, when it has one and it opens.
    HistoryRecorder& history() { return history_; }
    // Keeps the entry; what the operator must know of it goes to standard error.
    void record(const HistoryEntry& entry);
    // The end of the command's flow on the current module: an entry of
    // `kind` when it did what it was asked (none without a kind), else a
    // failure event naming the command and how its exchange failed.
    void recordFlow(const char* command, std::optional<EntryKind> kind, bool ok);
    // A configuration file saved or opened, with the current record as its image.
    void recordFile(EntryKind kind, const QString& path);

private:
    GlobalOptions options_;
    SetupState state_;
    ComPort port_;
    ConsoleDialogs dialogs_;
    Operations operations_;
    PortLines lines_;
    FrameLog frameLog_;
    CsvLogFile logFile_;
    HistoryRecorder history_;
    bool logFailed_ = false;
};

}  // namespace velmor::cli
