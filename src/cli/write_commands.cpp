// write and write-info: a configuration file sent to a module, behind the
// guards that keep a wrong file or a wrong module from harm.

#include "command_steps.h"
#include "commands.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "config/record_check.h"
#include "model/cli_texts.h"
#include "model/messages.h"
#include "shown_text.h"

#include <QFileInfo>

namespace velmor::cli {

namespace {

QString faultText(const RecordCheck& check, const QString& path, Language language)
{
    switch (check.fault) {
    case RecordFault::Size: return pick(cli_text::kWrongSize, language).arg(QFileInfo(path).size());
    case RecordFault::ModelCode: return pick(cli_text::kBadModelCode, language).arg(check.value);
    case RecordFault::ModelName: return pick(cli_text::kBadModelName, language);
    case RecordFault::ChannelCount: return pick(cli_text::kBadChannelCount, language).arg(check.value);
    case RecordFault::None: break;
    }
    return {};
}

}  // namespace

int loadCheckedRecord(Session& session, const QString& path, bool force, const Text& refusal)
{
    if (const int code = refuseIrregularFile(session, path))
        return code;
    const std::optional<QByteArray> bytes = readConfigBytes(path);
    if (!bytes) {
        printError(pick(msg::kOpenConfigFail, session.language()));
        return kExitFileFailed;
    }
    const RecordCheck check = checkStoredRecord(*bytes);
    if (check.fault != RecordFault::None && !force) {
        printError(pick(refusal, session.language()).arg(shownText(path), faultText(check, path, session.language())));
        return kExitUsage;
    }
    applyImage(bytes->first(std::min<qsizetype>(bytes->size(), kStoredBytes)), session.record());
    return kExitDone;
}

namespace {

bool forced(const QCommandLineParser& parser) { return parser.isSet(optionName(Opt::ForceWrite)); }

// --config into the current record. Unless forced, only the record of a
// module is taken: an empty or foreign file would otherwise write zeros into
// a module's coefficients.
int loadModuleFile(Session& session, const QCommandLineParser& parser)
{
    if (!parser.isSet(optionName(Opt::Config)))
        return usage(session, cli_text::kConfigRequired);
    return loadCheckedRecord(session, parser.value(optionName(Opt::Config)), forced(parser), cli_text::kNotModuleRecord);
}

// Learns the module's information into the current record by `ask` (the
// module is then named by what it says of itself) and, unless forced,
// refuses a module of another model than the file's.
int checkModuleModel(Session& session, const QCommandLineParser& parser, const ModuleRecord& fromFile,
                     bool (Operations::*ask)())
{
    if (!(session.operations().*ask)())
        return session.outcome(false);
    const ModuleRecord& module = session.record();
    if (module.modelCode == fromFile.modelCode || forced(parser))
        return kExitDone;
    printError(pick(cli_text::kModelDiffers, session.language())
                   .arg(QString::number(module.busAddress), shownText(trimmedText(module.modelName)),
                        shownText(trimmedText(fromFile.modelName))));
    return kExitUsage;
}

}  // namespace

int runWrite(Session& session, const QCommandLineParser& parser)
{
    if (const int code = loadModuleFile(session, parser))
        return code;
    if (const int code = takeAddress(session, parser))
        return code;
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    const ModuleRecord fromFile = session.record();
    if (const int code = checkModuleModel(session, parser, fromFile, &Operations::readModuleInfo))
        return code;
    return finish(session, session.operations().cmdFrame1Send(), port);
}

int runWriteInfo(Session& session, const QCommandLineParser& parser)
{
    if (const int code = loadModuleFile(session, parser))
        return code;
    // The write reaches every module on the line: without the confirmation
    // the question is printed and nothing is sent.
    if (!parser.isSet(optionName(Opt::OnlyOneModule))) {
        printError(pick(msg::kOnlyOneModule, session.language()));
        return kExitUsage;
    }
    PortEntry port;
    if (const int code = takePort(session, parser, port))
        return code;
    ModuleRecord fromFile = session.record();
    // A module answers only the beckon at 255 (with its information): that is
    // how the model is learnt. Forced, nothing goes out before the write.
    if (!forced(parser)) {
        if (const int code = checkModuleModel(session, parser, fromFile, &Operations::beckon))
            return code;
    }
    // What goes out is the file's information, not what the module just said.
    fromFile.portNumber = session.record().portNumber;
    session.record() = fromFile;
    session.dialogs().setAnswer(true);
    return finish(session, session.operations().cmdFrame3Send(), port);
}

}  // namespace velmor::cli
