#include "command_steps.h"

#include "config/config_file.h"
#include "model/cli_texts.h"
#include "model/network_port_texts.h"
#include "serial/network_port.h"
#include "model/messages.h"
#include "protocol/frame.h"
#include "shown_text.h"

namespace velmor::cli {

int usage(const Session& session, const Text& text)
{
    printError(pick(text, session.language()));
    return kExitUsage;
}

int takePort(Session& session, const QCommandLineParser& parser, PortEntry& port)
{
    if (!parser.isSet(optionName(Opt::Port)))
        return usage(session, cli_text::kPortRequired);
    const QString argument = parser.value(optionName(Opt::Port));
    if (!session.choosePort(argument, port))
        return unknownPort(session, argument);
    return kExitDone;
}

int unknownPort(const Session& session, const QString& argument)
{
    if (namesNetworkScheme(argument)) {
        printError(pick(net::kNotANetworkPort, session.language()) + QLatin1Char(' ') + shownText(argument));
        return kExitUsage;
    }
    // As the window says it when a request's port will not open.
    printError(pick(msg::kOpenComPortFail, session.language()));
    printError(pick(cli_text::kPortReason, session.language())
                   .arg(shownText(argument), pick(cli_text::kNoSuchPort, session.language())));
    return kExitPortFailed;
}

int takeAddress(Session& session, const QCommandLineParser& parser)
{
    bool ok = false;
    const int address = parser.value(optionName(Opt::Address)).toInt(&ok);
    if (ok && address == kBroadcastAddress)
        return usage(session, cli_text::kAddress255);
    if (!parser.isSet(optionName(Opt::Address)) || !ok || address < 0 || address > kBroadcastAddress)
        return usage(session, cli_text::kAddressRange);
    session.record().busAddress = static_cast<qint16>(address);
    return kExitDone;
}

int configFileFailed(const Session& session, const QString& path, const QString& reason)
{
    printError(pick(msg::kOpenConfigFail, session.language()));
    printError(msg::fileFailure(shownText(path), shownText(reason), session.language()));
    return kExitFileFailed;
}

int refuseIrregularFile(Session& session, const QString& path)
{
    if (isRegularFileOrAbsent(path))
        return kExitDone;
    return configFileFailed(session, path, QString());
}

int holdPortLine(Session& session, LineActivity activity, std::optional<Operations::LineHold>& hold)
{
    hold.emplace(session.operations(), session.operations().currentPort(), activity);
    if (hold->held())
        return kExitDone;
    printError(pick(msg::kOpenComPortFail, session.language()));
    printError(shownText(Operations::lineBusyText(session.operations().currentPort()->name,
                                                  session.operations().busyHolder(), session.language())));
    return kExitPortFailed;
}

int finish(Session& session, bool ok, const PortEntry& port)
{
    if (ok)
        session.printRecord(port.name);
    return session.outcome(ok);
}

}  // namespace velmor::cli
