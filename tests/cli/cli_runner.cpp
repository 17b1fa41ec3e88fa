#include "cli_runner.h"

#include "model/record_json.h"
#include "support/small_disk.h"

#include <QFile>
#include <QJsonDocument>
#include <QProcess>

namespace velmor::testing {

QJsonObject CliResult::json() const
{
    return QJsonDocument::fromJson(out).object();
}

CliResult runCli(const QStringList& arguments, const QString& portsDir, const QString& locale)
{
    CliRun run;
    run.portsDir = portsDir;
    run.locale = locale;
    return runCli(arguments, run);
}

CliResult runCli(const QStringList& arguments, const CliRun& run)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VELMOR_PORTS_DIR"), run.portsDir.isEmpty() ? QStringLiteral("/nonexistent") : run.portsDir);
    environment.insert(QStringLiteral("LC_ALL"), run.locale);
    environment.insert(QStringLiteral("LANG"), run.locale);
    process.setProcessEnvironment(environment);
    if (!run.stdoutFile.isEmpty())
        process.setStandardOutputFile(run.stdoutFile);
    QStringList command = QStringList{QStringLiteral(VELMOR_CLI_EXECUTABLE)} + arguments;
    if (run.disk)
        command = run.disk->wrap(command.first(), command.mid(1));
    if (run.stdoutClosed)
        command = QStringList{QStringLiteral("/bin/sh"), QStringLiteral("-c"), QStringLiteral("exec \"$@\" >&-"),
                              QStringLiteral("sh")} + command;
    process.start(command.first(), command.mid(1));
    CliResult result;
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

ModuleRecord recordOf(const QJsonObject& json)
{
    ModuleRecord record = defaultModule();
    QString error;
    if (!recordFromJson(json, record, &error))
        qWarning("%s", qPrintable(error));
    return record;
}

}  // namespace velmor::testing
