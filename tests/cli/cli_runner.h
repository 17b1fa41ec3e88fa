#pragma once

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

}  // namespace velmor::testing
