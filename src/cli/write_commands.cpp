// write and write-info: a configuration file sent to a module, behind the
// guards that keep a wrong file or a wrong module from harm.

#include "command_steps.h"
#include "commands.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "config/record_check.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/message.h"

#include <QFileInfo>

namespace velmor::cli {

QString recordFaultText(const RecordCheck& check, const QString& path, Language language)
{
    switch (check.fault) {
    case RecordFault::Size: {
        const qint64 size = QFileInfo(path).size();
        return size == 1 ? pick(texts::cli::kWrongSizeOne, language) : pick(texts::cli::kWrongSize, language).arg(size);
    }
    case RecordFault::ModelCode: return pick(texts::cli::kBadModelCode, language).arg(check.value);
    case RecordFault::ModelName: return pick(texts::cli::kBadModelName, language);
    case RecordFault::ChannelCount: return pick(texts::cli::kBadChannelCount, language).arg(check.value);
    case RecordFault::None: break;
    }
    return {};
}

int loadCheckedRecord(Session& session, const QString& path, bool force, const Text& refusal, QByteArray* loaded)
{
    if (const int code = refuseIrregularFile(session, path))
        return code;
    QString reason;
    const std::optional<QByteArray> bytes = readConfigBytes(path, &reason);
    if (!bytes)
        return configFileFailed(session, path, reason);
    const RecordCheck check = checkStoredRecord(*bytes);
    if (check.fault != RecordFault::None && !force) {
        printError(pick(refusal, session.language()).arg(shownText(path), recordFaultText(check, path, session.language())));
        return kExitUsage;
    }
    applyImage(bytes->first(std::min<qsizetype>(bytes->size(), kStoredBytes)), session.record());
    if (loaded)
        *loaded = *bytes;
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
        return usage(session, texts::cli::kConfigRequired);
    return loadCheckedRecord(session, parser.value(optionName(Opt::Config)), forced(parser), texts::cli::kNotModuleRecord);
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
    printError(pick(texts::cli::kModelDiffers, session.language())
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
    std::optional<Operations::LineHold> line;
    if (const int code = takeHeldPort(session, parser, LineActivity::Writing, port, line))
        return code;
    const ModuleRecord fromFile = session.record();
    if (const int code = checkModuleModel(session, parser, fromFile, &Operations::readModuleInfo))
        return code;
    return finish(session, "write", EntryKind::Write, session.operations().writeEverything(), port);
}

int runWriteInfo(Session& session, const QCommandLineParser& parser)
{
    if (const int code = loadModuleFile(session, parser))
        return code;
    // The write reaches every module on the line: without the confirmation
    // the question is printed and nothing is sent.
    if (!parser.isSet(optionName(Opt::OnlyOneModule))) {
        printError(pick(texts::message::kOnlyOneModule, session.language()));
        printError(pick(texts::cli::kOnlyOneRefused, session.language()));
        return kExitUsage;
    }
    PortEntry port;
    std::optional<Operations::LineHold> line;
    if (const int code = takeHeldPort(session, parser, LineActivity::Writing, port, line))
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
    return finish(session, "write-info", EntryKind::Write, session.operations().confirmAndWriteModuleInfo(), port);
}

}  // namespace velmor::cli
