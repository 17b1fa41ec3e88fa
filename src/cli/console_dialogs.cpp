#include "console_dialogs.h"

#include <cstdio>

namespace velmor::cli {

void printError(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stderr);
    std::fputc('\n', stderr);
    std::fflush(stderr);
}

void ConsoleDialogs::showMessage(const QString&, const QString& text)
{
    if (held_)
        kept_.append(text);
    else
        printError(text);
}

bool ConsoleDialogs::confirm(const QString&, const QString& text)
{
    if (!answer_)
        printError(text);
    return answer_;
}

QStringList ConsoleDialogs::takeHeld()
{
    QStringList out;
    out.swap(kept_);
    return out;
}

}  // namespace velmor::cli
