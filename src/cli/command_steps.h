#pragma once

#include "cli_options.h"
#include "session.h"
#include "texts/language.h"

#include <QCommandLineParser>

#include <optional>

namespace velmor::cli {

// The steps that several commands share. Each returns an exit code: 0 to go
// on, anything else to end the command with (its message already printed).

// A usage error: the text on standard error, exit 2.
int usage(const Session& session, const Text& text);

// --port: resolved and made the current module's port.
int takePort(Session& session, const QCommandLineParser& parser, PortEntry& port);
// A --port argument that names no port: said as a port that will not open
// (exit 3), or, for a malformed network address, with the right form (exit 2).
int unknownPort(const Session& session, const QString& argument);
// --address 0..254 as the current module's address. A module takes nothing
// but the beckon and the information write at 255, so 255 is refused.
int takeAddress(Session& session, const QCommandLineParser& parser);
// "Open configure file fail!" and, on a second line, the file and why
// (`reason` empty: not a regular file); exit 4.
int configFileFailed(const Session& session, const QString& path, const QString& reason);
// A file to be read or written must be a regular file (or not there yet).
int refuseIrregularFile(Session& session, const QString& path);

// --port taken (takePort), and its line held for the whole command against
// every other Velmor program, from its first request to its last; exit 3,
// said ("Open COM port fail." and who holds it), when it stayed busy through
// the wait.
int takeHeldPort(Session& session, const QCommandLineParser& parser, LineActivity activity, PortEntry& port,
                 std::optional<Operations::LineHold>& hold);

// Prints the module after a flow that worked and records the flow in the
// history (Session::recordFlow); the exit code says how it went.
int finish(Session& session, const char* command, std::optional<EntryKind> kind, bool ok, const PortEntry& port);

}  // namespace velmor::cli
