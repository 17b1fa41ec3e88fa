#include "session.h"

#include "console_output.h"
#include "files/whole_file.h"
#include "history/flow_entries.h"
#include "model/record_json.h"
#include "protocol/frame_text.h"
#include "protocol/replies.h"
#include "record_text.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/frame_log.h"
#include "texts/message.h"

#include <QJsonArray>
#include <QJsonDocument>


namespace velmor::cli {
namespace {

// The log target that stands for none.
constexpr char kNowhere[] = "/dev/null";

// --trace: a request as sent ("> "), a reply as checked ("< ", the frame
// without the noise ahead of it); a wait that ran out shows nothing.
void trace(const FrameRow& row)
{
    const bool reply = row.outcome == FrameOutcome::Accepted || row.outcome == FrameOutcome::Refused;
    if (row.direction == FrameDirection::Out)
        printError(QStringLiteral("> ") + frameToText(row.frame).remove(QStringLiteral("\r\n")));
    else if (reply)
        printError(QStringLiteral("< ") + frameToText(frameWithin(row.frame).toByteArray()).remove(QStringLiteral("\r\n")));
}

}  // namespace

Session::Session(const GlobalOptions& options)
    : options_(options), operations_(state_, port_, dialogs_), history_(options.history, HistoryQueue::defaultPath())
{
    state_.reset();
    state_.languageMode = options.languageMode;
    lines_.update(listPorts(), {}, state_.table);
    port_.setPorts(lines_.ports());
    QObject::connect(&operations_.exchange(), &Exchange::frameLogged, &frameLog_, &FrameLog::append);
    // Beside "No respond." or "Return data fail.": what the module now holds.
    QObject::connect(&operations_, &Operations::writeStoppedPartway,
                     [this](const WriteProgress& progress) { printError(writeProgressText(progress, language())); });
    if (options.trace)
        QObject::connect(&frameLog_, &FrameLog::appended, &trace);
}

bool Session::logFramesTo(const QString& path)
{
    if (path == QLatin1String(kNowhere))
        return true;
    QString reason;
    if (!isRegularFileOrAbsent(path)) {
        printError(pick(texts::frame_log::kCannotWrite, language()).arg(shownText(path), pick(texts::cli::kNotRegular, language())));
        return false;
    }
    if (!logFile_.open(path, &reason)) {
        printError(pick(texts::frame_log::kCannotWrite, language()).arg(shownText(path), shownText(reason)));
        return false;
    }
    QObject::connect(&frameLog_, &FrameLog::appended, [this, path](const FrameRow& row) {
        QString why;
        if (logFailed_ || logFile_.append(row, &why))
            return;
        logFailed_ = true;
        printError(pick(texts::frame_log::kStoppedWriting, language()).arg(shownText(path), shownText(why)));
    });
    return true;
}

bool Session::choosePort(const QString& argument, PortEntry& chosen)
{
    const std::optional<PortEntry> port = lines_.resolve(argument);
    if (!port)
        return false;
    port_.setPorts(lines_.ports());
    chosen = *port;
    record().portNumber = static_cast<qint16>(port->number);
    return true;
}

void Session::record(const HistoryEntry& entry)
{
    if (const QString notice = recordNoticeText(history_.record(entry), language()); !notice.isEmpty())
        printError(shownText(notice));
}

void Session::recordFlow(const char* command, std::optional<EntryKind> kind, bool ok)
{
    const QString failure = ok ? QString() : failureName(operations_.exchange().failure());
    if (const std::optional<HistoryEntry> entry =
            flowEntry(record(), portName(record().portNumber), kind, failure, QLatin1String(command)))
        record(*entry);
}

void Session::recordFile(EntryKind kind, const QString& path)
{
    record(fileEntry(kind, record(), portName(record().portNumber), path));
}

int Session::outcome(bool ok)
{
    if (ok)
        return kExitDone;
    switch (operations_.exchange().failure()) {
    case Failure::PortNotOpened:
        if (const PortEntry* port = lines_.find(record().portNumber))
            printError(portFailureText(*port));
        return kExitPortFailed;
    case Failure::LineBusy:
        if (const PortEntry* port = lines_.find(record().portNumber))
            printError(shownText(Operations::lineBusyText(port->name, operations_.busyHolder(), language())));
        return kExitPortFailed;
    case Failure::NoReply:
    case Failure::BadReply: return kExitExchangeFailed;
    case Failure::None: break;
    }
    return kExitExchangeFailed;
}

QString Session::portFailureText(const PortEntry& port) const
{
    return portFailureText(port, port_.openFailure(), port_.openFailureReason());
}

QString Session::portFailureText(const PortEntry& port, OpenFailure failure, const QString& systemReason) const
{
    const Language lang = language();
    QString reason;
    switch (failure) {
    case OpenFailure::NoSuchPort: reason = pick(texts::cli::kNoSuchPort, lang); break;
    case OpenFailure::PublisherGone: reason = pick(texts::cli::kPublisherGone, lang); break;
    case OpenFailure::System:
    case OpenFailure::None: reason = systemReason; break;
    }
    const QString where = port.name == port.device ? port.device : port.name + QStringLiteral(" (") + port.device + QLatin1Char(')');
    return pick(texts::message::kReason, lang).arg(shownText(where), shownText(reason));
}

void Session::printRecord(const QString& portName)
{
    if (options_.json)
        printJson(recordToJson(record()));
    else
        printText(recordText(record(), portName, language()));
}

void Session::printJson(const QJsonValue& value)
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    printOut(document.toJson(QJsonDocument::Indented));
}

void Session::printText(const QString& text)
{
    printOut(text.endsWith(QLatin1Char('\n')) ? text.toUtf8() : (text + QLatin1Char('\n')).toUtf8());
}

QString Session::portName(int number) const
{
    const PortEntry* port = lines_.find(number);
    return port ? port->name : QString::number(number);
}

}  // namespace velmor::cli
