// velmor-cli rack: every module on every line at once, saved as a rack file,
// or the lines checked against one. Nothing is written to any module.

#include "commands.h"

#include "command_steps.h"
#include "config/config_image.h"
#include "config/image_layout.h"
#include "config/rack_file.h"
#include "edit/setup_differences.h"
#include "model/fixed_text.h"
#include "shown_text.h"
#include "texts/rack.h"

#include "texts/cli.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace velmor::cli {
namespace {

// A module of the table, as a rack names it.
RackModule rackModuleOf(const Session& session, const ModuleRecord& module)
{
    return {session.portName(module.portNumber), module.busAddress, trimmedText(module.modelName), module.moduleNumber,
            configImage(module).left(kStoredBytes)};
}

QStringList lineNames(const QList<PortEntry>& ports)
{
    QStringList names;
    for (const PortEntry& port : ports)
        names << port.name;
    return names;
}

int saveRack(Session& session, const QCommandLineParser& parser, const QString& path)
{
    if (const int refused = refuseIrregularFile(session, path))
        return refused;
    QList<PortEntry> ports;
    if (const int code = searchedPorts(session, parser, ports))
        return code;
    const LinesRead read = readLines(session, ports);
    recordSearch(session, ports, read.found, read.unread, read.portFailed);
    Rack rack{QDateTime::currentDateTimeUtc(), QStringLiteral(VELMOR_VERSION), lineNames(ports), {}};
    QString text;
    for (int i = 0; i < read.found; ++i) {
        const ModuleRecord& module = session.state().table[static_cast<size_t>(i)];
        const RackModule m = rackModuleOf(session, module);
        if (read.unread.contains(i)) {
            printError(pick(texts::rack::kNotWhollyRead, session.language()).arg(shownText(m.line)).arg(m.address));
            continue;
        }
        rack.modules << m;
        text += QStringList{shownText(m.line), QString::number(m.address), shownText(m.model), QString::number(m.moduleNumber)}
                    .join(QLatin1Char('\t'))
              + QLatin1Char('\n');
    }
    if (const QString failure = writeRackFile(path, rack); !failure.isEmpty()) {
        printError(pick(texts::rack::kCannotWrite, session.language()).arg(shownText(path), shownText(failure)));
        return kExitFileFailed;
    }
    session.printText(text);
    if (read.portFailed)
        return kExitPortFailed;
    return read.found > 0 && read.unread.isEmpty() ? kExitDone : kExitExchangeFailed;
}

// One module's place in a check: what the file holds there and what answered.
struct Checked {
    RackModule module;  // the file's, or the live one for an extra module
    const Text* state = nullptr;
    QStringList cells;  // the differing cells, as the grids show them
};

int checkRack(Session& session, const QString& path)
{
    const Language language = session.language();
    QString error;
    const std::optional<Rack> rack = readRackFile(path, language, &error);
    if (!rack) {
        // Refused before anything is sent.
        printError(error);
        return QFileInfo::exists(path) ? kExitUsage : kExitFileFailed;
    }
    QList<PortEntry> ports;
    for (const QString& line : rack->lines) {
        PortEntry port;
        if (!session.choosePort(line, port))
            return unknownPort(session, line);
        ports << port;
    }
    const LinesRead read = readLines(session, ports);
    recordSearch(session, ports, read.found, read.unread, read.portFailed);
    QList<RackModule> live;
    for (int i = 0; i < read.found; ++i)
        live << rackModuleOf(session, session.state().table[static_cast<size_t>(i)]);

    QList<Checked> checked;
    for (const RackModule& kept : rack->modules) {
        const auto at = std::find_if(live.begin(), live.end(), [&](const RackModule& m) {
            return m.line == kept.line && m.address == kept.address;
        });
        if (at == live.end()) {
            checked.append({kept, &texts::rack::kMissing, {}});
            continue;
        }
        const RackModule now = *at;
        live.erase(at);
        if (now.model != kept.model || now.moduleNumber != kept.moduleNumber) {
            checked.append({now, &texts::rack::kForeign, {}});
            continue;
        }
        ModuleRecord a = defaultModule(), b = defaultModule();
        applyImage(kept.image, a);
        applyImage(now.image, b);
        QStringList cells;
        for (const CellDifference& d : sentDifferences(a, b, -1, language))
            cells << QStringLiteral("%1 %2 → %3").arg(d.name, d.before, d.after);
        checked.append({kept, cells.isEmpty() ? &texts::rack::kSame : &texts::rack::kDifferent, cells});
    }
    for (const RackModule& extra : live)
        checked.append({extra, &texts::rack::kExtra, {}});

    bool allSame = true;
    QJsonArray list;
    QString text;
    for (const Checked& c : checked) {
        allSame = allSame && c.state == &texts::rack::kSame;
        list.append(QJsonObject{{QStringLiteral("line"), c.module.line},
                                {QStringLiteral("address"), c.module.address},
                                {QStringLiteral("model"), c.module.model},
                                {QStringLiteral("moduleNumber"), c.module.moduleNumber},
                                {QStringLiteral("status"), pick(*c.state, Language::English)},
                                {QStringLiteral("cells"), QJsonArray::fromStringList(c.cells)}});
        text += QStringList{shownText(c.module.line), QString::number(c.module.address), shownText(c.module.model),
                            QString::number(c.module.moduleNumber), pick(*c.state, language),
                            shownText(c.cells.join(QStringLiteral("; ")))}
                    .join(QLatin1Char('\t'))
              + QLatin1Char('\n');
    }
    if (session.json())
        session.printJson(list);
    else
        session.printText(text);
    if (read.portFailed)
        return kExitPortFailed;
    return allSame ? kExitDone : kExitExchangeFailed;
}

}  // namespace

void declareRack(QCommandLineParser& parser, Language language)
{
    parser.addPositionalArgument(QStringLiteral("save|check"), pick(texts::rack::kRackSummary, language));
    parser.addPositionalArgument(pick(texts::cli::kFileValue, language), pick(texts::rack::kRackUsage, language));
    addOptions(parser, {Opt::Ports}, language);
}

int runRack(Session& session, const QCommandLineParser& parser)
{
    const QStringList args = parser.positionalArguments();
    if (args.size() == 2 && args[0] == QLatin1String("save"))
        return saveRack(session, parser, args[1]);
    if (args.size() == 2 && args[0] == QLatin1String("check") && !parser.isSet(optionName(Opt::Port)))
        return checkRack(session, args[1]);
    return usage(session, texts::rack::kRackUsage);
}

}  // namespace velmor::cli
