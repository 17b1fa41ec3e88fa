#pragma once

#include "link/operator_dialogs.h"
#include "model/capabilities.h"
#include "model/module_table.h"

#include <QHash>
#include <QWidget>

#include <array>
#include <iterator>
#include <optional>

class QComboBox;
class QLineEdit;

namespace velmor {

// The current module's information: the model and capability lists, each
// with the read-only text of its choice (txtModulePar), the module number and
// the firmware version. A choice or a typed number is stored into the current
// module's record at once; a number out of range is told and not stored.
class ModuleInfoFields : public QWidget {
    Q_OBJECT
public:
    static constexpr int kLists = static_cast<int>(std::size(kListedCapabilities));

    ModuleInfoFields(SetupState& state, OperatorDialogs& dialogs, QWidget* parent = nullptr);

    // Every list refilled in the language and set to the record's codes.
    void showModule();
    // The boxes emptied, as at start-up.
    void clearBoxes();
    // Marks the rows edited and not yet sent (rows as moduleInfoCells counts
    // them), each with its accessible description; the others unmarked.
    void markUnsent(const QHash<int, QString>& descriptions);
    bool isMarkedUnsent(int infoRow) const;

signals:
    // The operator stored a choice or a number into the record.
    void edited();

private:
    // The language the window was started in, held by the state.
    Language language() const { return languageOf(state_.languageMode); }
    void listChosen(int list, int index);
    // The box's number when it lies within 0..highest; else the error is told.
    std::optional<int> typedNumber(const QLineEdit* box, int highest);

    SetupState& state_;
    OperatorDialogs& dialogs_;
    std::array<QComboBox*, kLists> lists_{};
    std::array<QLineEdit*, kLists> texts_{};
    QLineEdit* txtModuleNumber_;
    QLineEdit* txtVer_;
    // Each panel row's value box (the number, or the text beside the list)
    // and its list, if it has one.
    struct RowControls {
        QLineEdit* box = nullptr;
        QComboBox* list = nullptr;
    };
    QList<RowControls> rows_;
};

}  // namespace velmor
