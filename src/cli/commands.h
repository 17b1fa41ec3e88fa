#pragma once

#include "session.h"

#include <QCommandLineParser>

namespace velmor::cli {

struct Command {
    const char* name;
    const char* synopsis;
    const char* summary;
    void (*declare)(QCommandLineParser& parser);
    int (*run)(Session& session, const QCommandLineParser& parser);
};

// Every command of velmor-cli, in the order the help lists them.
const QList<Command>& commands();

}  // namespace velmor::cli
