#include "console_dialogs.h"

#include "shown_text.h"

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
    // A message may carry a port's name from the folder of published ports.
    if (held_)
        kept_.append(shownText(text));
    else
        printError(shownText(text));
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
