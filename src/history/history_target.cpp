#include "history_target.h"

#include <QDir>
#include <QStandardPaths>
#include <QUrl>

namespace velmor {

QString HistoryTarget::text() const
{
    switch (kind) {
    case Kind::Off: return QStringLiteral("off");
    case Kind::SQLite: return path;
    case Kind::PostgreSQL: break;
    }
    QUrl url;
    url.setScheme(QStringLiteral("postgresql"));
    url.setUserName(user);
    url.setHost(host);
    url.setPort(port);
    url.setPath(QLatin1Char('/') + database);
    return url.toString();
}

std::optional<HistoryTarget> historyTargetNamed(const QString& text)
{
    HistoryTarget target;
    if (text == QLatin1String("off"))
        return target;
    if (!text.contains(QLatin1String("://"))) {
        if (text.isEmpty())
            return std::nullopt;
        target.kind = HistoryTarget::Kind::SQLite;
        target.path = text;
        return target;
    }
    const QUrl url(text, QUrl::StrictMode);
    const bool postgres = url.scheme() == QLatin1String("postgresql") || url.scheme() == QLatin1String("postgres");
    if (!url.isValid() || !postgres || !url.password().isEmpty() || url.host().isEmpty())
        return std::nullopt;
    target.kind = HistoryTarget::Kind::PostgreSQL;
    target.user = url.userName();
    target.host = url.host();
    target.port = url.port(5432);
    target.database = url.path().mid(1);
    return target;
}

HistoryTarget defaultHistoryTarget()
{
    HistoryTarget target;
    target.kind = HistoryTarget::Kind::SQLite;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    target.path = QDir(folder).filePath(QStringLiteral("velmor/history.sqlite"));
    return target;
}

std::optional<HistoryTarget> chosenHistoryTarget(bool noHistory, const QString& given, const QString& setting,
                                                 QString* error)
{
    if (noHistory)
        return HistoryTarget{};
    for (const QString& text : {given, qEnvironmentVariable(kHistoryVariable), setting}) {
        if (text.isEmpty())
            continue;
        const std::optional<HistoryTarget> target = historyTargetNamed(text);
        if (!target && error)
            *error = text;
        return target;
    }
    return defaultHistoryTarget();
}

}  // namespace velmor
