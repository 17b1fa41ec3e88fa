#include "module_info_fields.h"

#include "model/limits.h"

#include "cell_grid.h"
#include "edit/grid_cells.h"
#include "key_filter.h"
#include "model/number_text.h"
#include "object_names.h"
#include "texts/grid.h"
#include "texts/message.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

namespace velmor {
namespace {

// The list of each capability, in the order of kListedCapabilities.
constexpr const char* kListNames[] = {"cmbModuleType", "cmbExcitationType", "cmbBalanceType", "cmbACType",
                                      "cmbGainType",   "cmbFilterType",     "cmbHoldType",    "cmbZeroType",
                                      "cmbAdjustType", "cmbIntegral"};

// The panel's rows, top to bottom: lblModule[row] and its control, a list
// (its index in kListedCapabilities) or one of the two number boxes.
constexpr int kModuleNumberRow = -1;
constexpr int kVersionRow = -2;
struct Row {
    const Text& label;
    int list;
};
constexpr Row kRows[] = {
    {texts::grid::kModelLabel, 0},     {texts::grid::kNumberLabel, kModuleNumberRow}, {texts::grid::kVersionLabel, kVersionRow},
    {texts::grid::kBalanceLabel, 2},   {texts::grid::kExcitationLabel, 1},            {texts::grid::kCouplingLabel, 3},
    {texts::grid::kFilterLabel, 5},    {texts::grid::kHoldLabel, 6},                  {texts::grid::kZeroAdjustLabel, 7},
    {texts::grid::kGainAdjustLabel, 8}, {texts::grid::kGainLabel, 4},                 {texts::grid::kIntegralLabel, 9},
};

QLineEdit* numberBox(const char* name, const Text& label, Language language)
{
    auto* box = new QLineEdit;
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(pick(label, language));
    filterDigitKeys(box);
    return box;
}

}  // namespace

ModuleInfoFields::ModuleInfoFields(SetupState& state, OperatorDialogs& dialogs, QWidget* parent)
    : QWidget(parent)
    , state_(state)
    , dialogs_(dialogs)
    , txtModuleNumber_(numberBox("txtModuleNumber", texts::grid::kNumberLabel, language()))
    , txtVer_(numberBox("txtVer", texts::grid::kVersionLabel, language()))
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(2, 1);
    for (int row = 0; row < static_cast<int>(std::size(kRows)); ++row) {
        auto* label = new QLabel(pick(kRows[row].label, language()));
        label->setObjectName(arrayName("lblModule", row));
        layout->addWidget(label, row, 0);
        const int list = kRows[row].list;
        if (list < 0) {
            QLineEdit* box = list == kModuleNumberRow ? txtModuleNumber_ : txtVer_;
            label->setBuddy(box);
            layout->addWidget(box, row, 1);
            rows_.append({box, nullptr});
            continue;
        }
        auto* combo = new QComboBox;
        combo->setObjectName(QLatin1String(kListNames[list]));
        // Long option texts are read in full beside the list.
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(10);
        auto* text = new QLineEdit;
        text->setObjectName(arrayName("txtModulePar", list));
        text->setReadOnly(true);
        text->setFocusPolicy(Qt::ClickFocus);
        text->setAccessibleName(label->text() + pick(texts::grid::kChosenTextSuffix, language()));
        label->setBuddy(combo);
        layout->addWidget(combo, row, 1);
        layout->addWidget(text, row, 2);
        lists_[list] = combo;
        texts_[list] = text;
        rows_.append({text, combo});
        connect(combo, &QComboBox::activated, this, [this, list](int index) { listChosen(list, index); });
    }
    connect(txtModuleNumber_, &QLineEdit::textEdited, this, [this] {
        if (const auto number = typedNumber(txtModuleNumber_, kModuleNumberHighest)) {
            state_.current().moduleNumber = *number;
            emit edited();
        }
    });
    connect(txtVer_, &QLineEdit::textEdited, this, [this] {
        if (const auto number = typedNumber(txtVer_, kVersionHighest)) {
            state_.current().version = static_cast<quint8>(*number);
            emit edited();
        }
    });
}

void ModuleInfoFields::showModule()
{
    const ModuleRecord& record = state_.current();
    txtVer_->setText(QString::number(record.version));
    txtModuleNumber_->setText(QString::number(record.moduleNumber));
    for (int list = 0; list < kLists; ++list) {
        const Capability capability = kListedCapabilities[list];
        const QSignalBlocker quiet(lists_[list]);
        lists_[list]->clear();
        lists_[list]->addItems(optionList(capability, language()));
        lists_[list]->setCurrentIndex(shownIndex(capability, capabilityCode(record, capability)));
        texts_[list]->setText(lists_[list]->currentText());
        texts_[list]->setCursorPosition(0);
    }
}

void ModuleInfoFields::clearBoxes()
{
    txtVer_->clear();
    txtModuleNumber_->clear();
    for (QLineEdit* text : texts_)
        text->clear();
}

void ModuleInfoFields::listChosen(int list, int index)
{
    const Capability capability = kListedCapabilities[list];
    ModuleRecord& record = state_.current();
    // Choosing what is already shown keeps the record's own code, even an
    // unknown one such as 200.
    if (index != shownIndex(capability, capabilityCode(record, capability)))
        setCapabilityCode(record, capability, static_cast<quint8>(index));
    texts_[list]->setText(lists_[list]->currentText());
    texts_[list]->setCursorPosition(0);
    emit edited();
}

void ModuleInfoFields::markUnsent(const QHash<int, QString>& descriptions)
{
    for (int row = 0; row < rows_.size(); ++row) {
        const QString description = descriptions.value(row + kInfoModelRow);
        QLineEdit* box = rows_[row].box;
        if (box->accessibleDescription() == description)
            continue;
        // The box's own colours come back with an empty palette.
        QPalette palette;
        if (!description.isEmpty()) {
            palette = box->palette();
            palette.setColor(QPalette::Base, QColor(kMarkedCellColor));
            palette.setColor(QPalette::Text, QColor(kColouredCellText));
        }
        box->setPalette(palette);
        box->setAccessibleDescription(description);
        box->setToolTip(description);
        // The list keeps its hint as its tool tip.
        if (QComboBox* list = rows_[row].list)
            list->setAccessibleDescription(description);
    }
}

bool ModuleInfoFields::isMarkedUnsent(int infoRow) const
{
    const int row = infoRow - kInfoModelRow;
    return row >= 0 && row < rows_.size() && !rows_[row].box->accessibleDescription().isEmpty();
}

std::optional<int> ModuleInfoFields::typedNumber(const QLineEdit* box, int highest)
{
    const auto number = wholeNumberWithin(box->text(), highest);
    if (!number)
        dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::message::kInputDataError, language()));
    return number;
}

}  // namespace velmor
