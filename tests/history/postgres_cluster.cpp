#include "postgres_cluster.h"

#include <QCollator>
#include <QDir>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTcpServer>

#include <pwd.h>
#include <unistd.h>

namespace velmor::testing {
namespace {

// The newest server's programs: /usr/lib/postgresql/15/bin on Debian 12.
QString serverPrograms()
{
    QStringList versions = QDir(QStringLiteral("/usr/lib/postgresql")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QCollator numeric;
    numeric.setNumericMode(true);
    std::sort(versions.begin(), versions.end(), numeric);
    for (auto it = versions.crbegin(); it != versions.crend(); ++it) {
        const QString bin = QStringLiteral("/usr/lib/postgresql/%1/bin").arg(*it);
        if (QFile::exists(bin + QStringLiteral("/initdb")))
            return bin;
    }
    return QString();
}

// A port of the loopback that nothing listens on now.
int freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
}

}  // namespace

PostgresCluster::PostgresCluster()
    : bin_(serverPrograms())
    , data_(folder_.filePath(QStringLiteral("data")))
    , port_(freePort())
{
    if (bin_.isEmpty()) {
        failure_ = QStringLiteral("no PostgreSQL server under /usr/lib/postgresql (scripts/install-deps.sh installs it)");
        return;
    }
    if (geteuid() == 0) {
        const passwd* server = getpwnam("postgres");
        if (!server || chown(qPrintable(folder_.path()), server->pw_uid, server->pw_gid) != 0) {
            failure_ = QStringLiteral("the postgres system user cannot be given %1").arg(folder_.path());
            return;
        }
    }
    if (!run(QStringLiteral("initdb"), {QStringLiteral("--pgdata=") + data_, QStringLiteral("--username=velmor"),
                                        QStringLiteral("--auth=trust"), QStringLiteral("--encoding=UTF8"),
                                        QStringLiteral("--no-locale"), QStringLiteral("--no-sync")})
        || !start())
        return;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("cluster-setup"));
        db.setHostName(QStringLiteral("127.0.0.1"));
        db.setPort(port_);
        db.setUserName(QStringLiteral("velmor"));
        db.setDatabaseName(QStringLiteral("postgres"));
        if (!db.open() || !QSqlQuery(db).exec(QStringLiteral("CREATE DATABASE velmor")))
            failure_ = QStringLiteral("cannot make the database: ") + db.lastError().text();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("cluster-setup"));
}

PostgresCluster::~PostgresCluster() { stop(); }

bool PostgresCluster::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QStringList command{bin_ + QLatin1Char('/') + program};
    command += arguments;
    if (geteuid() == 0)
        command = QStringList{QStringLiteral("runuser"), QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--")}
                + command;
    process.start(command.first(), command.mid(1));
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        failure_ = QStringLiteral("%1 failed: %2").arg(program, QString::fromLocal8Bit(process.readAll()).trimmed());
        return false;
    }
    return true;
}

bool PostgresCluster::start()
{
    const QString options = QStringLiteral("-c listen_addresses=127.0.0.1 -p %1 -k %2").arg(port_).arg(folder_.path());
    running_ = run(QStringLiteral("pg_ctl"), {QStringLiteral("--pgdata=") + data_, QStringLiteral("--wait"),
                                              QStringLiteral("--log=") + folder_.filePath(QStringLiteral("server.log")),
                                              QStringLiteral("--options=") + options, QStringLiteral("start")});
    return running_;
}

bool PostgresCluster::stop()
{
    if (!running_)
        return true;
    running_ = !run(QStringLiteral("pg_ctl"), {QStringLiteral("--pgdata=") + data_, QStringLiteral("--wait"),
                                               QStringLiteral("--mode=fast"), QStringLiteral("stop")});
    return !running_;
}

std::optional<HistoryTarget> PostgresCluster::freshDatabase(const QString& name)
{
    bool made = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("cluster-fresh"));
        db.setHostName(QStringLiteral("127.0.0.1"));
        db.setPort(port_);
        db.setUserName(QStringLiteral("velmor"));
        db.setDatabaseName(QStringLiteral("postgres"));
        made = db.open() && QSqlQuery(db).exec(QStringLiteral("CREATE DATABASE %1").arg(name));
        if (!made)
            failure_ = db.lastError().text();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("cluster-fresh"));
    if (!made)
        return std::nullopt;
    HistoryTarget fresh = target();
    fresh.database = name;
    return fresh;
}

HistoryTarget PostgresCluster::target() const
{
    return *historyTargetNamed(QStringLiteral("postgresql://velmor@127.0.0.1:%1/velmor").arg(port_));
}

}  // namespace velmor::testing
