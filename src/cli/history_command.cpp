// velmor-cli history: the entries of the history store, newest first, and
// an entry written back as a configuration file; velmor-cli diff: two
// setups compared cell by cell.

#include "commands.h"

#include "command_steps.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "edit/setup_differences.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/history.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTimeZone>

namespace velmor::cli {
namespace {

// The store to look into; null (having said why, with the exit code in
// `code`) when the history is off or cannot be opened.
HistoryStore* openedStore(Session& session, int& code)
{
    if (session.history().isOff()) {
        code = usage(session, texts::history::kHistoryOff);
        return nullptr;
    }
    QString error;
    HistoryStore* store = session.history().store(&error);
    if (!store) {
        printError(pick(texts::history::kCannotOpen, session.language()).arg(shownText(error)));
        code = kExitFileFailed;
    }
    return store;
}

// An entry that holds a module's setup, by its id; else said why.
std::optional<HistoryEntry> setupEntry(Session& session, const QString& idText, int& code)
{
    HistoryStore* store = openedStore(session, code);
    if (!store)
        return std::nullopt;
    bool ok = false;
    const qint64 id = idText.toLongLong(&ok);
    QString error;
    const std::optional<HistoryEntry> entry = ok ? store->entry(id, &error) : std::nullopt;
    if (!entry) {
        printError(pick(texts::history::kNoEntry, session.language()).arg(shownText(idText)));
        code = kExitUsage;
        return std::nullopt;
    }
    if (entry->image.isEmpty()) {
        printError(pick(texts::history::kNoImage, session.language()).arg(id).arg(kindName(entry->kind)));
        code = kExitUsage;
        return std::nullopt;
    }
    return entry;
}

QString localTime(const QDateTime& utc) { return utc.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

int exportEntry(Session& session, const QCommandLineParser& parser)
{
    const QStringList args = parser.positionalArguments();
    if (args.size() != 2 || !parser.isSet(optionName(Opt::OutFile)))
        return usage(session, texts::history::kExportUsage);
    int code = kExitDone;
    const std::optional<HistoryEntry> entry = setupEntry(session, args[1], code);
    if (!entry)
        return code;
    const QString out = parser.value(optionName(Opt::OutFile));
    if (const int refused = refuseIrregularFile(session, out))
        return refused;
    // The bytes recorded, as they were: not rebuilt from a record.
    if (const QString failure = writeWholeFile(out, entry->image); !failure.isEmpty())
        return configFileFailed(session, out, failure);
    return kExitDone;
}

// --since as the operator writes it: a date, or a date and time, local.
std::optional<QDateTime> sinceOf(const QString& text)
{
    QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    if (!time.isValid())
        time = QDateTime(QDate::fromString(text, Qt::ISODate), QTime(0, 0));
    return time.isValid() ? std::optional(time) : std::nullopt;
}

}  // namespace

void declareHistory(QCommandLineParser& parser, Language language)
{
    addOptions(parser, {Opt::Module, Opt::Port, Opt::Address, Opt::Since, Opt::Kind, Opt::OutFile}, language);
}

int runHistory(Session& session, const QCommandLineParser& parser)
{
    const QStringList args = parser.positionalArguments();
    if (!args.isEmpty() && args.first() == QLatin1String("export"))
        return exportEntry(session, parser);
    if (!args.isEmpty())
        return usage(session, texts::history::kExportUsage);
    HistoryFilter filter;
    if (parser.isSet(optionName(Opt::Module))) {
        bool ok = false;
        filter.moduleNumber = parser.value(optionName(Opt::Module)).toInt(&ok);
        if (!ok || filter.moduleNumber < 0 || filter.moduleNumber > 65535)
            return usage(session, texts::history::kBadModule);
    }
    if (parser.isSet(optionName(Opt::Address)) && !parser.isSet(optionName(Opt::Port)))
        return usage(session, texts::history::kAddressNeedsPort);
    if (parser.isSet(optionName(Opt::Port))) {
        PortEntry port;
        filter.line = session.choosePort(parser.value(optionName(Opt::Port)), port) ? port.name
                                                                                   : parser.value(optionName(Opt::Port));
        if (parser.isSet(optionName(Opt::Address))) {
            if (const int code = takeAddress(session, parser))
                return code;
            filter.address = session.record().busAddress;
        }
    }
    if (parser.isSet(optionName(Opt::Since))) {
        const std::optional<QDateTime> since = sinceOf(parser.value(optionName(Opt::Since)));
        if (!since)
            return usage(session, texts::history::kBadSince);
        filter.since = *since;
    }
    if (parser.isSet(optionName(Opt::Kind))) {
        filter.kind = kindNamed(parser.value(optionName(Opt::Kind)));
        if (!filter.kind)
            return usage(session, texts::history::kBadKind);
    }
    int code = kExitDone;
    HistoryStore* store = openedStore(session, code);
    if (!store)
        return code;
    QString error;
    const QList<HistoryEntry> entries = store->find(filter, &error);
    if (!error.isEmpty()) {
        printError(pick(texts::history::kCannotOpen, session.language()).arg(shownText(error)));
        return kExitFileFailed;
    }
    QJsonArray list;
    QString text;
    for (const HistoryEntry& e : entries) {
        QJsonObject object = entryJson(e);
        object.remove(QStringLiteral("image"));  // `history export` writes it
        list.append(object);
        text += QStringList{QString::number(e.id), localTime(e.time), kindName(e.kind), shownText(e.line),
                            e.address < 0 ? QString() : QString::number(e.address), shownText(e.model),
                            e.moduleNumber < 0 ? QString() : QString::number(e.moduleNumber), shownText(e.outcome),
                            shownText(e.workstation), shownText(e.user), shownText(e.detail)}
                    .join(QLatin1Char('\t'))
              + QLatin1Char('\n');
    }
    if (session.json())
        session.printJson(list);
    else if (!text.isEmpty())
        session.printText(text);
    return kExitDone;
}

namespace {

// A setup named on the command line, into `record`.
int setupOf(Session& session, const QString& name, ModuleRecord& record)
{
    record = defaultModule();
    if (name.startsWith(QLatin1String("history:"))) {
        int code = kExitDone;
        const std::optional<HistoryEntry> entry = setupEntry(session, name.mid(8), code);
        if (entry)
            applyImage(entry->image, record);
        return code;
    }
    if (name.startsWith(QLatin1String("live:"))) {
        const QStringList parts = name.mid(5).split(QLatin1Char(':'));
        bool ok = false;
        const int address = parts.value(parts.size() - 1).toInt(&ok);
        if (parts.size() < 2 || !ok || address < 0 || address >= 255)
            return usage(session, texts::history::kDiffUsage);
        const QString portName = parts.mid(0, parts.size() - 1).join(QLatin1Char(':'));
        PortEntry port;
        if (!session.choosePort(portName, port))
            return unknownPort(session, portName);
        session.record().busAddress = static_cast<qint16>(address);
        const bool read = session.operations().readEverything();
        session.recordFlow("diff", EntryKind::Read, read);
        if (!read)
            return session.outcome(false);
        record = session.record();
        return kExitDone;
    }
    if (const int code = loadCheckedRecord(session, name, false, texts::cli::kNotModuleRecord))
        return code;
    record = session.record();
    return kExitDone;
}

}  // namespace

void declareDiff(QCommandLineParser& parser, Language language)
{
    parser.addPositionalArgument(QStringLiteral("A"), pick(texts::history::kDiffUsage, language));
    parser.addPositionalArgument(QStringLiteral("B"), pick(texts::history::kDiffUsage, language));
}

int runDiff(Session& session, const QCommandLineParser& parser)
{
    const QStringList args = parser.positionalArguments();
    if (args.size() != 2)
        return usage(session, texts::history::kDiffUsage);
    const Language language = session.language();
    ModuleRecord a, b;
    if (const int code = setupOf(session, args[0], a))
        return code;
    if (const int code = setupOf(session, args[1], b))
        return code;
    // The automatic-balance marks belong to neither setup.
    const QList<CellDifference> differences = setupDifferences(a, b, -1, language);
    QStringList groups;
    for (const WriteGroup& group : groupsToSend(differences))
        groups << writeGroupName(group, language);
    if (session.json()) {
        QJsonArray cells;
        for (const CellDifference& d : differences)
            cells.append(QJsonObject{{QStringLiteral("part"), setupPartName(d.part, Language::English)},
                                     {QStringLiteral("row"), d.row},
                                     {QStringLiteral("column"), d.column},
                                     {QStringLiteral("name"), d.name},
                                     {QStringLiteral("a"), d.before},
                                     {QStringLiteral("b"), d.after},
                                     {QStringLiteral("reference"), d.reference}});
        session.printJson(QJsonObject{{QStringLiteral("same"), differences.isEmpty()},
                                      {QStringLiteral("differences"), cells},
                                      {QStringLiteral("groupsToSend"), QJsonArray::fromStringList(groups)}});
    } else if (differences.isEmpty()) {
        session.printText(pick(texts::history::kSame, language));
    } else {
        QString text;
        for (const CellDifference& d : differences)
            text += QStringList{setupPartName(d.part, language), shownText(d.name), shownText(d.before), shownText(d.after)}
                        .join(QLatin1Char('\t'))
                  + QLatin1Char('\n');
        if (!groups.isEmpty())
            text += pick(texts::history::kGroupsToSend, language).arg(groups.join(QStringLiteral(", "))) + QLatin1Char('\n');
        session.printText(text);
    }
    return differences.isEmpty() ? kExitDone : kExitExchangeFailed;
}

}  // namespace velmor::cli
