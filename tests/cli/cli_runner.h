#pragma once

#include "model/module_table.h"
#include "support/file_bytes.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace velmor::testing {

struct CliResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;

    QString errText() const { return QString::fromUtf8(err).trimmed(); }
    QJsonObject json() const;
};

class SmallDisk;

// How velmor-cli is run: the ports it lists (those published in `portsDir`),
// its locale (LC_ALL), and where its standard output goes.
struct CliRun {
    QString portsDir;
    QString locale = QStringLiteral("en_US.UTF-8");
    QString stdoutFile;          // standard output into this file (/dev/full, say)
    bool stdoutClosed = false;   // standard output closed before it starts
    const SmallDisk* disk = nullptr;  // the limit of this disk holds for it
};

// Runs the real velmor-cli with `arguments`.
CliResult runCli(const QStringList& arguments, const CliRun& run);
// The same, listing the ports published in `portsDir`, with the given locale.
CliResult runCli(const QStringList& arguments, const QString& portsDir = {},
                 const QString& locale = QStringLiteral("en_US.UTF-8"));

// A record from velmor-cli's JSON, on top of the defaults.
ModuleRecord recordOf(const QJsonObject& json);

}  // namespace velmor::testing
