#include "unsent_edits.h"

#include "cell_grid.h"
#include "edit/setup_differences.h"
#include "module_info_fields.h"
#include "operation_panels.h"
#include "texts/desktop.h"
#include "window_title.h"

namespace velmor {

UnsentEdits::UnsentEdits(const SetupState& state, ChannelSetupPanel* frame1, AdjustPanel* frame2,
                         ModuleInfoFields* fields)
    : state_(state), frame1_(frame1), frame2_(frame2), fields_(fields)
{
    // A screen reader reads the count as the label's text.
    setObjectName(QStringLiteral("lblUnsent"));
    hide();
}

void UnsentEdits::allHeld()
{
    held_.takeAll(state_.table);
    names_.fill({});
    refresh();
}

void UnsentEdits::refresh()
{
    const Language language = languageOf(state_.languageMode);
    const int slot = state_.currentModule;
    QHash<QPair<int, int>, QString> channels, adjust, calibration;
    QHash<int, QString> information;
    QStringList names;
    for (const CellDifference& d : sentDifferences(held_.of(slot), state_.current(), state_.currentMask(), language)) {
        // The address chooser picks the module to talk to: no edit of a setup.
        if (d.part == SetupPart::Information && d.row == kInfoAddressRow)
            continue;
        names << d.name;
        const QString description = pick(texts::desktop::kUnsentCell, language).arg(d.before);
        CellGrid* grid = nullptr;
        QHash<QPair<int, int>, QString>* marks = nullptr;
        switch (d.part) {
        case SetupPart::Information: information.insert(d.row, description); continue;
        case SetupPart::Channels: grid = frame1_->channelGrid(), marks = &channels; break;
        case SetupPart::Adjust: grid = frame2_->adjustGrid(), marks = &adjust; break;
        case SetupPart::Calibration: grid = frame1_->calibrationGrid(), marks = &calibration; break;
        }
        // A cell that shows something else (a refused value, a layout the
        // record has left since the grid was drawn) is not this edit's.
        if (grid->cellModel()->cellText(d.row, d.column) == d.after)
            marks->insert({d.row, d.column}, description);
    }
    frame1_->channelGrid()->cellModel()->markCells(channels);
    frame1_->calibrationGrid()->cellModel()->markCells(calibration);
    frame2_->adjustGrid()->cellModel()->markCells(adjust);
    fields_->markUnsent(information);
    names_.at(static_cast<size_t>(slot)) = names;

    const int total = count();
    setText(pick(texts::desktop::kUnsentCount, language).arg(total));
    setToolTip(summary());
    setVisible(total > 0);
}

int UnsentEdits::count() const
{
    qsizetype total = 0;
    for (const QStringList& names : names_)
        total += names.size();
    return static_cast<int>(total);
}

QString UnsentEdits::summary() const
{
    const Language language = languageOf(state_.languageMode);
    QStringList modules;
    for (size_t slot = 0; slot < names_.size(); ++slot)
        if (!names_[slot].isEmpty())
            modules << pick(texts::desktop::kUnsentOfModule, language)
                           .arg(moduleTitle(state_.table[slot], language), names_[slot].join(pick(texts::desktop::kNameSeparator, language)));
    return modules.join(QStringLiteral("; "));
}

}  // namespace velmor
