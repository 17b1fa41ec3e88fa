#pragma once

#include "cli_options.h"
#include "session.h"
#include "model/language.h"

#include <QCommandLineParser>

namespace velmor::cli {

// The steps that several commands share. Each returns an exit code: 0 to go
// on, anything else to end the command with (its message already printed).

// A usage error: the text on standard error, exit 2.
int usage(const Session& session, const Text& text);

// --port: resolved and made the current module's port.
int takePort(Session& session, const QCommandLineParser& parser, PortEntry& port);
// A --port argument that names no port: said as a port that will not open.
int unknownPort(const Session& session, const QString& argument);
// --address 0..254 as the current module's address. A module takes nothing
// but the beckon and the information write at 255, so 255 is refused.
int takeAddress(Session& session, const QCommandLineParser& parser);
// A file to be read or written must be a regular file (or not there yet).
int refuseIrregularFile(Session& session, const QString& path);
// Replaces the current module's record from a configuration file.
int loadFile(Session& session, const QString& path);

// Prints the module after a flow that worked; the exit code says how it went.
int finish(Session& session, bool ok, const PortEntry& port);

}  // namespace velmor::cli
