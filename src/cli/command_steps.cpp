#include "command_steps.h"

#include "config/config_file.h"
#include "protocol/frame.h"
#include "serial/network_port.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/message.h"
#include "texts/network.h"

namespace velmor::cli {

int usage(const Session& session, const Text& text)
{
    printError(pick(text, session.language()));
    return kExitUsage;
}

int takePort(Session& session, const QCommandLineParser& parser, PortEntry& port)
{
    if (!parser.isSet(optionName(Opt::Port)))
        return usage(session, texts::cli::kPortRequired);
    const QString argument = parser.value(optionName(Opt::Port));
    if (!session.choosePort(argument, port))
        return unknownPort(session, argument);
    return kExitDone;
}

int unknownPort(const Session& session, const QString& argument)
{
    if (namesNetworkScheme(argument)) {
        printError(pick(texts::network::kNotANetworkPort, session.language()) + QLatin1Char(' ') + shownText(argument));
        return kExitUsage;
    }
    // As the window says it when a request's port will not open.
    printError(pick(texts::message::kOpenComPortFail, session.language()));
    printError(pick(texts::message::kReason, session.language())
                   .arg(shownText(argument), pick(texts::cli::kNoSuchPort, session.language())));
    return kExitPortFailed;
}

int takeAddress(Session& session, const QCommandLineParser& parser)
{
    bool ok = false;
    const int address = parser.value(optionName(Opt::Address)).toInt(&ok);
    if (ok && address == kBroadcastAddress)
        return usage(session, texts::cli::kAddress255);
    if (!parser.isSet(optionName(Opt::Address)) || !ok || address < 0 || address > kBroadcastAddress)
        return usage(session, texts::cli::kAddressRange);
    session.record().busAddress = static_cast<qint16>(address);
    return kExitDone;
}

int configFileFailed(const Session& session, const QString& path, const QString& reason)
{
    printError(pick(texts::message::kOpenConfigFail, session.language()));
    printError(texts::message::fileFailure(shownText(path), shownText(reason), session.language()));
    return kExitFileFailed;
}

int refuseIrregularFile(Session& session, const QString& path)
{
    if (isRegularFileOrAbsent(path))
        return kExitDone;
    return configFileFailed(session, path, QString());
}

int takeHeldPort(Session& session, const QCommandLineParser& parser, LineActivity activity, PortEntry& port,
                 std::optional<Operations::LineHold>& hold)
{
    if (const int code = takePort(session, parser, port))
        return code;
    hold.emplace(session.operations(), session.operations().currentPort(), activity);
    if (hold->held())
        return kExitDone;
    printError(pick(texts::message::kOpenComPortFail, session.language()));
    printError(shownText(Operations::lineBusyText(session.operations().currentPort()->name,
                                                  session.operations().busyHolder(), session.language())));
    return kExitPortFailed;
}

int finish(Session& session, const char* command, std::optional<EntryKind> kind, bool ok, const PortEntry& port)
{
    session.recordFlow(command, kind, ok);
    if (ok)
        session.printRecord(port.name);
    return session.outcome(ok);
}

}  // namespace velmor::cli
