#pragma once

#include "link/operator_dialogs.h"
#include "texts/language.h"

#include <QDialog>

namespace velmor {

// The about box: the program's name, its version from the build, and the
// system-information tool where the system has one.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    frmAbout(Language language, OperatorDialogs& dialogs, QWidget* parent = nullptr);

    void cmdSysInfo_Click();

private:
    Language language_;
    OperatorDialogs& dialogs_;
};

// The system-information tool's path, empty where there is none (only
// Windows has it).
QString systemInfoTool();

}  // namespace velmor
