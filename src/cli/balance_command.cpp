// balance: the bridge balance of chosen channels, refused for channels the
// module does not have.

#include "command_steps.h"
#include "commands.h"
#include "texts/cli.h"

#include <QRegularExpression>

#include <bit>

namespace velmor::cli {

bool channelMask(const QString& list, qint32& mask)
{
    static const QRegularExpression item(QStringLiteral("^(\\d+)(?:-(\\d+))?$"));
    quint32 bits = 0;
    for (const QString& part : list.split(QLatin1Char(','))) {
        const QRegularExpressionMatch m = item.match(part.trimmed());
        if (!m.hasMatch())
            return false;
        const int first = m.captured(1).toInt();
        const int last = m.captured(2).isEmpty() ? first : m.captured(2).toInt();
        if (first < 1 || last > kWiredChannels || first > last)
            return false;
        for (int c = first; c <= last; ++c)
            bits |= 1u << (c - 1);
    }
    mask = static_cast<qint32>(bits);
    return true;
}

namespace {

// With --channels, reads the module's information first and refuses channels
// past its channel count, unless forced.
int refuseMissingChannels(Session& session, const QCommandLineParser& parser, qint32 mask)
{
    if (!parser.isSet(optionName(Opt::Channels)) || parser.isSet(optionName(Opt::ForceBalance)))
        return kExitDone;
    if (!session.operations().readModuleInfo())
        return session.outcome(false);
    const ModuleRecord& module = session.record();
    const int highest = std::bit_width(static_cast<quint32>(mask));
    if (highest <= module.channelCount)
        return kExitDone;
    printError(pick(texts::cli::kChannelBeyondModule, session.language())
                   .arg(highest)
                   .arg(module.busAddress)
                   .arg(module.channelCount));
    return kExitUsage;
}

}  // namespace

int runBalance(Session& session, const QCommandLineParser& parser)
{
    if (const int code = takeAddress(session, parser))
        return code;
    qint32 mask = -1;
    if (parser.isSet(optionName(Opt::Channels)) && !channelMask(parser.value(optionName(Opt::Channels)), mask))
        return usage(session, texts::cli::kChannelsSyntax);
    session.state().currentMask() = mask;
    PortEntry port;
    std::optional<Operations::LineHold> line;
    if (const int code = takeHeldPort(session, parser, LineActivity::Balancing, port, line))
        return code;
    if (const int code = refuseMissingChannels(session, parser, mask))
        return code;
    return finish(session, "balance", EntryKind::Balance, session.operations().balanceAndReadBack(), port);
}

}  // namespace velmor::cli
