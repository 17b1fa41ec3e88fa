// frmMain's files: the configuration file opened and saved, and the setup
// report exported.

#include "frm_main.h"

#include "config/config_file.h"
#include "file_chooser.h"
#include "history/flow_entries.h"
#include "main_menus.h"
#include "operator_settings.h"
#include "module_view.h"
#include "recent_menu.h"
#include "port_search_bar.h"
#include "report/report_file.h"
#include "report/setup_report.h"
#include "serial/port_list.h"
#include "texts/desktop.h"
#include "texts/message.h"
#include "texts/report.h"
#include "unsent_edits.h"

#include <QDateTime>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace velmor {
namespace {

// The one local file of a drag, or nothing.
QString droppedFile(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 && urls.first().isLocalFile() ? urls.first().toLocalFile() : QString();
}

}  // namespace

void frmMain::MnuFile_Open_Click()
{
    const QString path = files_.openFileName();
    if (!path.isEmpty())
        openConfigFile(path);
}

void frmMain::openConfigFile(const QString& path)
{
    // A file that cannot be read leaves the record as it was, without a
    // box; the rest happens all the same. The status bar says why, and says
    // what a short file left of the record.
    QString reason;
    qsizetype size = 0;
    if (!loadConfigFile(path, state_.current(), &reason, &size)) {
        notify(texts::message::fileFailure(path, reason, language()));
    } else {
        fileInUse(path);
        openedFrom_ = path;
        // What was opened is no edit: marks measure edits from here on.
        unsent_->held().take(state_.currentModule, state_.current());
        const QString shortFile = shortFileNotice(path, size, language());
        notify(shortFile.isEmpty() ? pick(texts::desktop::kOpened, language()).arg(path) : shortFile);
        keep(fileEntry(EntryKind::Open, state_.current(), currentLine(), path));
    }
    // The file's port belongs to the machine it came from: the first port
    // listed now takes its place.
    applyPorts(listPorts());
    bar_->selectFirstPort();
    if (!lines_.isEmpty())
        state_.current().portNumber = static_cast<qint16>(bar_->selectedPortNumber());
    view_.showAll();
    showTitle();
}

void frmMain::openRecentFile(const QString& path)
{
    if (QFileInfo::exists(path)) {
        openConfigFile(path);
        return;
    }
    forgetFile(path);
    menus_->recentFiles()->refresh();
    dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::desktop::kRecentGone, language()).arg(path));
}

void frmMain::fileInUse(const QString& path)
{
    documentPath_ = path;
    rememberFile(path);
    menus_->recentFiles()->refresh();
    showTitle();
}

void frmMain::dragEnterEvent(QDragEnterEvent* event)
{
    if (!flowRunning_ && !droppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event)
{
    const QString path = droppedFile(event->mimeData());
    if (flowRunning_ || path.isEmpty())
        return;
    event->acceptProposedAction();
    openConfigFile(path);
}

void frmMain::MnuFile_Save_Click() { save(configPath_); }

void frmMain::MnuFile_SaveAs_Click()
{
    const QString path = files_.saveFileName();
    if (!path.isEmpty())
        save(path);
}

void frmMain::MnuFile_ExportReport_Click()
{
    const QString path =
        files_.reportFileName(pick(texts::report::kPdfFilter, language()), pick(texts::report::kHtmlFilter, language()));
    if (path.isEmpty())
        return;
    const std::optional<ReportFormat> format = reportFormatFor(path);
    if (!format) {
        dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::report::kNeedsSuffix, language()).arg(path));
        return;
    }
    const ModuleRecord& record = state_.current();
    const PortEntry* port = lines_.find(record.portNumber);
    const QString line = port ? port->name : QString::number(record.portNumber);
    const QString source = openedFrom_.isEmpty() ? reportSourceLine(line, record.busAddress, language())
                                                 : reportSourceFile(openedFrom_, language());
    const ReportSubject subject{line, state_.currentMask(), QDateTime::currentDateTime(), source};
    const QString failure = writeReportFile(path, *format, setupReportHtml(record, subject, language()), language());
    if (!failure.isEmpty())
        dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::report::kCannotWrite, language()).arg(path, failure));
}

void frmMain::save(const QString& path)
{
    QString reason;
    if (saveConfigFile(path, state_.current(), &reason)) {
        fileInUse(path);
        notify(pick(texts::desktop::kSaved, language()).arg(path));
        keep(fileEntry(EntryKind::Save, state_.current(), currentLine(), path));
        return;
    }
    dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::message::kOpenConfigFail, language()));
    notify(texts::message::fileFailure(path, reason, language()));
}

}  // namespace velmor
