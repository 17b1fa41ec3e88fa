#pragma once

#include "link/operator_dialogs.h"

#include <QStringList>

namespace velmor::cli {

// Message boxes become lines on standard error; a question is answered by
// what the command line said in advance.
class ConsoleDialogs : public OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override;
    bool confirm(const QString& title, const QString& text) override;

    void setAnswer(bool ok) { answer_ = ok; }
    // While held, messages are kept instead of printed (the search prints its
    // closing report on standard output).
    void hold(bool held) { held_ = held; }
    QStringList takeHeld();

private:
    bool answer_ = false;
    bool held_ = false;
    QStringList kept_;
};

void printError(const QString& text);

}  // namespace velmor::cli
