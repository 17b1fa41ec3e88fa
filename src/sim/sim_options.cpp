#include "sim_options.h"

#include "model/models.h"
#include "protocol/frame.h"

#include <limits>

namespace velmor::sim {
namespace {

const QString kName = QStringLiteral("name");
const QString kModule = QStringLiteral("module");
const QString kSeed = QStringLiteral("seed");
const QString kState = QStringLiteral("state");
const QString kFast = QStringLiteral("fast");
const QString kTurnaround = QStringLiteral("turnaround");
const QString kBalanceDelay = QStringLiteral("balance-delay");
const QString kFault = QStringLiteral("fault");
const QString kVanishAfter = QStringLiteral("vanish-after");
const QString kLog = QStringLiteral("log");
const QString kPortsDir = QStringLiteral("ports-dir");

bool fail(QString* error, const QString& why)
{
    if (error)
        *error = why;
    return false;
}

// A whole number from 0 to `most`.
bool readCount(const QCommandLineParser& parser, const QString& option, qint64 most, qint64& value, QString* error)
{
    if (!parser.isSet(option))
        return true;
    bool ok = false;
    const qint64 v = parser.value(option).toLongLong(&ok);
    if (!ok || v < 0 || v > most)
        return fail(error, QStringLiteral("--%1 must be a number from 0 to %2").arg(option).arg(most));
    value = v;
    return true;
}

bool readInt(const QCommandLineParser& parser, const QString& option, int& value, QString* error)
{
    qint64 v = value;
    if (!readCount(parser, option, std::numeric_limits<int>::max(), v, error))
        return false;
    value = static_cast<int>(v);
    return true;
}

}  // namespace

void addSimOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Simulates signal-conditioning modules sharing one serial line, on a pseudo-terminal.\n"
        "Publishes the line as a symbolic link NAME in the folder of virtual ports, then prints\n"
        "\"NAME<TAB>/dev/pts/N\" on one line when ready. Stops on SIGINT, SIGTERM or SIGHUP."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QString kinds = faultKindNames().join(QStringLiteral(", "));
    parser.addOptions({
        {kName, QStringLiteral("Name of the published port (default SIM1)."), QStringLiteral("NAME")},
        {kModule,
         QStringLiteral("A module at address ADDR (0-254) of model MODEL: a name such as TM-C16 or a "
                        "model code 0-8. Repeat for several modules; default 1:TM-C16."),
         QStringLiteral("ADDR:MODEL")},
        {kSeed, QStringLiteral("Seed of the modules' generated values (default 1)."), QStringLiteral("N")},
        {kState,
         QStringLiteral("Keeps the modules' memory in this JSON file: loaded at start when it exists (its "
                        "modules then stand for the whole line and --module is not used), saved after every "
                        "write and balance."),
         QStringLiteral("FILE")},
        {kFast, QStringLiteral("No 4800-baud pacing: a reply goes out whole after the turnaround.")},
        {kTurnaround, QStringLiteral("Milliseconds from the end of a request to its reply (default 5)."),
         QStringLiteral("MS")},
        {kBalanceDelay,
         QStringLiteral("Milliseconds from a balance request until the new balance values are in place "
                        "(default 1000)."),
         QStringLiteral("MS")},
        {kFault,
         QStringLiteral("A fault of the module that starts at ADDR. KIND: %1. AT: 0 (default) every "
                        "exchange, n the module's n-th exchange only; for dropoff, the number of exchanges "
                        "it answers before going silent. PARAM: truncate, bytes missing (default 1); late, "
                        "extra delay in ms (default 1500); split, ms between three pieces (default 100); tail, how many of the reply's last bytes go "
                        "ahead of it (default 54). "
                        "Repeatable.")
             .arg(kinds),
         QStringLiteral("ADDR:KIND[:AT[:PARAM]]")},
        {kVanishAfter,
         QStringLiteral("The line disappears after N exchanges, as an unplugged adapter would; the link is "
                        "removed and the simulator ends."),
         QStringLiteral("N")},
        {kLog, QStringLiteral("Log every frame to FILE instead of standard error."), QStringLiteral("FILE")},
        {kPortsDir,
         QStringLiteral("Folder to publish the port in (default: VELMOR_PORTS_DIR, else the per-user "
                        "folder of virtual ports)."),
         QStringLiteral("DIR")},
    });
}

bool readSimOptions(const QCommandLineParser& parser, SimOptions& options, QString* error)
{
    if (parser.isSet(kName)) {
        options.name = parser.value(kName);
        if (options.name.isEmpty() || options.name.contains(QLatin1Char('/')))
            return fail(error, QStringLiteral("--name must be a plain file name"));
    }
    if (parser.isSet(kModule)) {
        options.modules.clear();
        for (const QString& text : parser.values(kModule)) {
            const std::optional<ModuleAt> wanted = parseModuleArgument(text, error);
            if (!wanted)
                return false;
            options.modules.append(*wanted);
        }
    }
    qint64 seed = options.seed;
    if (!readCount(parser, kSeed, std::numeric_limits<quint32>::max(), seed, error))
        return false;
    options.seed = static_cast<quint32>(seed);
    options.stateFile = parser.value(kState);
    options.line.fast = parser.isSet(kFast);
    if (!readInt(parser, kTurnaround, options.line.turnaroundMs, error)
        || !readInt(parser, kBalanceDelay, options.line.balanceDelayMs, error)
        || !readInt(parser, kVanishAfter, options.line.vanishAfter, error))
        return false;
    for (const QString& text : parser.values(kFault)) {
        const std::optional<Fault> fault = parseFault(text, error);
        if (!fault)
            return false;
        options.faults.append(*fault);
    }
    options.logFile = parser.value(kLog);
    options.portsDir = parser.value(kPortsDir);
    return true;
}

std::optional<ModuleAt> parseModuleArgument(QStringView text, QString* error)
{
    const QList<QStringView> parts = text.split(QLatin1Char(':'));
    bool ok = false;
    ModuleAt wanted;
    if (parts.size() == 2)
        wanted.address = parts[0].toInt(&ok);
    if (!ok || wanted.address < 0 || wanted.address >= kBroadcastAddress) {
        fail(error, QStringLiteral("module \"%1\": expected ADDR:MODEL with ADDR 0 to 254").arg(text));
        return std::nullopt;
    }
    wanted.modelCode = parts[1].toInt(&ok);
    if (ok && wanted.modelCode >= 0 && wanted.modelCode < kModelCount)
        return wanted;
    for (int code = 0; code < kModelCount; ++code) {
        if (parts[1].compare(QStringView(kModels[code].name), Qt::CaseInsensitive) == 0) {
            wanted.modelCode = code;
            return wanted;
        }
    }
    fail(error, QStringLiteral("module \"%1\": MODEL must be a model name such as TM-C16 or a code 0 to 8").arg(text));
    return std::nullopt;
}

}  // namespace velmor::sim
