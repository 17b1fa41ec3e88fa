#pragma once

#include "history/history_target.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmor::testing {

// A throw-away PostgreSQL server of the test's own: a cluster made by initdb
// in a temporary folder, listening on the loopback only (its socket in that
// folder), with a superuser "velmor" let in without a password and a
// database "velmor". initdb refuses to run as root, so under root the server
// runs as the postgres system user. Stopped and removed at the end.
class PostgresCluster {
public:
    PostgresCluster();
    ~PostgresCluster();
    PostgresCluster(const PostgresCluster&) = delete;
    PostgresCluster& operator=(const PostgresCluster&) = delete;

    // Empty when the server is up; else what went wrong.
    const QString& failure() const { return failure_; }
    bool start();
    bool stop();
    int port() const { return port_; }
    // postgresql://velmor@127.0.0.1:PORT/velmor
    HistoryTarget target() const;
    // A new empty database of that name on the server, as a store.
    std::optional<HistoryTarget> freshDatabase(const QString& name);

private:
    // Runs one of the server's programs (as the postgres user under root).
    bool run(const QString& program, const QStringList& arguments);

    QTemporaryDir folder_;
    QString bin_;
    QString data_;
    int port_ = 0;
    bool running_ = false;
    QString failure_;
};

}  // namespace velmor::testing
