#include "message.h"

#include <QLocale>

namespace velmor::texts::message {

QString fileFailure(const QString& path, const QString& reason, Language language)
{
    if (reason.isEmpty())
        return pick(kNotRegularFile, language).arg(path);
    return pick(kReason, language).arg(path, reason);
}

QString shortFile(const QString& path, qsizetype size, qsizetype whole, int firstKept, bool infoWhole, Language language)
{
    // Sizes with their thousands marked, as "8,679" reads in either language.
    const auto grouped = [](qsizetype n) { return QLocale(QLocale::English).toString(n); };
    if (!infoWhole)
        return pick(kShortFileNoInfo, language).arg(path, grouped(size), grouped(whole));
    return pick(kShortFile, language).arg(path, grouped(size), grouped(whole)).arg(firstKept);
}

QString openPortFail(const QString& portName, Language language)
{
    return pick(kOpenPortPrefix, language) + portName + pick(kOpenPortSuffix, language);
}

QString foundModules(int count, Language language)
{
    return pick(kFoundPrefix, language) + QString::number(count) + pick(kFoundSuffix, language);
}

}  // namespace velmor::texts::message
