#pragma once

#include "link/operator_dialogs.h"

#include <QPointer>
#include <QWidget>

namespace velmor {

// The window's message boxes: OK only (or OK and Cancel) and no icon, and its
// input prompts, owned by the main window so that they are modal to it.
class WidgetDialogs : public OperatorDialogs {
public:
    explicit WidgetDialogs(QWidget* owner) : owner_(owner) {}

    void showMessage(const QString& title, const QString& text) override;
    bool confirm(const QString& title, const QString& text) override;
    QString askText(const QString& title, const QString& prompt) override;

private:
    QPointer<QWidget> owner_;
};

}  // namespace velmor
