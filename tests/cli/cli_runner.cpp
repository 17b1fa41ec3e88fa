#include "cli_runner.h"

#include "model/record_json.h"

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
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VELMOR_PORTS_DIR"), portsDir.isEmpty() ? QStringLiteral("/nonexistent") : portsDir);
    environment.insert(QStringLiteral("LC_ALL"), locale);
    environment.insert(QStringLiteral("LANG"), locale);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VELMOR_CLI_EXECUTABLE), arguments);
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

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace velmor::testing
