#include "messages.h"

namespace velmor::msg {

QString openPortFail(const QString& portName, Language language)
{
    return pick(kOpenPortPrefix, language) + portName + pick(kOpenPortSuffix, language);
}

QString foundModules(int count, Language language)
{
    return pick(kFoundPrefix, language) + QString::number(count) + pick(kFoundSuffix, language);
}

}  // namespace velmor::msg
