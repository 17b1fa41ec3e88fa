#pragma once

#include "texts/language.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace velmor {

// What velmor is asked on its command line (Qt's own options taken out).
struct WindowArguments {
    std::optional<int> languageMode;  // --lang, for this run only
    QString file;                     // a configuration file to open at start
    std::optional<QString> history;   // --history STORE
    bool noHistory = false;           // --no-history
};

// The language of a run: --lang, else the one chosen under View > Language,
// else the system's. Settled before any message, so that even one about an
// argument before --lang comes in the language asked for.
int startLanguageMode(const QStringList& arguments);

// Reads the arguments of a window's run (without the program's name, and
// without --version or --help, which are answered before any window) into
// `into`; the message for a wrong argument, in `language`, or an empty string.
QString readWindowArguments(const QStringList& arguments, WindowArguments& into, Language language);

}  // namespace velmor
