// frmMain's history window, and an entry's setup restored to the module.

#include "frm_main.h"

#include "config/config_image.h"
#include "edit/setup_differences.h"
#include "flow_summary.h"
#include "history_dialog.h"
#include "model/fixed_text.h"
#include "rack/write_groups.h"
#include "module_view.h"
#include "texts/desktop.h"
#include "texts/history.h"
#include "texts/message.h"
#include "unsent_edits.h"
#include "window_title.h"

namespace velmor {

void frmMain::MnuFile_History_Click()
{
    // What the flows handed over is in the store before it is read.
    settleHistory();
    auto* dialog = new HistoryDialog(historyTarget_, state_, files_, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &HistoryDialog::restoreAsked, this, &frmMain::restoreEntry);
    dialog->show();
}

void frmMain::restoreEntry(const HistoryEntry& entry)
{
    using namespace texts::history;
    const QString title = pick(texts::message::kTitle, language());
    const ModuleRecord& held = unsent_->held().of(state_.currentModule);
    ModuleRecord wanted = state_.current();
    applyImage(entry.image, wanted);
    // The module stays where it is: on its line, at its address.
    wanted.portNumber = state_.current().portNumber;
    wanted.busAddress = state_.current().busAddress;
    if (wanted.modelCode != held.modelCode) {
        dialogs_.showMessage(title, pick(kRestoreOtherModel, language())
                                        .arg(entry.id)
                                        .arg(trimmedText(wanted.modelName), trimmedText(held.modelName)));
        return;
    }
    const QList<CellDifference> differences = sentDifferences(held, wanted, state_.currentMask(), language());
    if (differences.isEmpty()) {
        dialogs_.showMessage(title, pick(kNothingToRestore, language()).arg(entry.id));
        return;
    }
    const QList<WriteGroup> groups = groupsToSend(differences);
    QStringList cells, sent;
    for (const CellDifference& d : differences)
        cells << cellChangeText(d);
    for (const WriteGroup& group : groups)
        sent << writeGroupName(group, language());
    const QString separator = pick(texts::desktop::kNameSeparator, language());
    if (!dialogs_.confirm(title, pick(kRestoreQuestion, language())
                                     .arg(entry.id)
                                     .arg(moduleTitle(held, language()), cells.join(separator), sent.join(separator))))
        return;
    state_.current() = wanted;
    view_.showAll();
    runFlow(pick(kDidRestore, language()).arg(moduleOnLine(state_, lines_, language())).arg(entry.id),
            [this, groups] {
                for (const WriteGroup& group : groups) {
                    // The information reaches every module on the line: the operator is asked before it goes.
                    const bool ok = group.part == SetupPart::Information ? operations_.confirmAndWriteModuleInfo()
                                                                         : sendWriteGroup(operations_, group);
                    if (!ok)
                        return;
                }
            },
            EntryKind::Write);
}

}  // namespace velmor
