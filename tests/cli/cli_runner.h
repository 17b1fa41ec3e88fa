#pragma once

#include "model/module_table.h"

#include <QByteArray>
#include <QJsonObject>
#include <QProcessEnvironment>
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

// Runs the real velmor-cli with `arguments`, listing the ports published in
// `portsDir`, with the given locale (LC_ALL).
CliResult runCli(const QStringList& arguments, const QString& portsDir = {},
                 const QString& locale = QStringLiteral("en_US.UTF-8"));

// A record from velmor-cli's JSON, on top of the defaults.
ModuleRecord recordOf(const QJsonObject& json);
// A file's bytes, empty when it cannot be read.
QByteArray fileBytes(const QString& path);

}  // namespace velmor::testing
