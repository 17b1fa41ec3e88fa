#pragma once

#include "edit/frequency_dialog_rules.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QDialog>

#include <array>

class QButtonGroup;
class QLineEdit;
class QRadioButton;

namespace velmor {

// The frequency dialog over a cut-off cell: shows the state of
// edit/frequency_dialog_rules.h and forwards the operator's steps to it. It never
// writes the record; after Accepted the caller hands state() to
// acceptFrequencyDialog with the grid's selected rows.
class frmFrequence : public QDialog {
    Q_OBJECT
public:
    frmFrequence(const ModuleRecord& module, const QString& cellText, Language language,
                 QWidget* parent = nullptr);

    const FrequencyDialogState& state() const { return state_; }

    void txtEdit_Change(const QString& text);
    void txtEdit_LostFocus();
    void Option1_Click(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCaptions();
    void showText();

    const ModuleRecord module_;  // a copy: the dialog only reads it
    Language language_;
    FrequencyDialogState state_;
    QLineEdit* txtEdit_;
    std::array<QRadioButton*, 2> option1_{};
    QButtonGroup* options_;
};

}  // namespace velmor
