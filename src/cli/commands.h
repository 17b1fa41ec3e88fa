#pragma once

#include "session.h"

#include <QCommandLineParser>

namespace velmor::cli {

struct Command {
    const char* name;
    const Text* synopsis;
    const Text* summary;
    void (*declare)(QCommandLineParser& parser, Language language);
    int (*run)(Session& session, const QCommandLineParser& parser);
};

// Every command of velmor-cli, in the order the help lists them.
const QList<Command>& commands();

// The commands that live in files of their own.
int runSearch(Session& session, const QCommandLineParser& parser);
int runWrite(Session& session, const QCommandLineParser& parser);
int runWriteInfo(Session& session, const QCommandLineParser& parser);
int runBalance(Session& session, const QCommandLineParser& parser);

}  // namespace velmor::cli
