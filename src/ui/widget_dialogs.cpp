#include "widget_dialogs.h"

#include <QInputDialog>
#include <QMessageBox>

namespace velmor {
namespace {

QMessageBox::StandardButton ask(QWidget* owner, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons)
{
    QMessageBox box(QMessageBox::NoIcon, title, text, buttons, owner);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void WidgetDialogs::showMessage(const QString& title, const QString& text)
{
    ask(owner_, title, text, QMessageBox::Ok);
}

bool WidgetDialogs::confirm(const QString& title, const QString& text)
{
    return ask(owner_, title, text, QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok;
}

QString WidgetDialogs::askText(const QString& title, const QString& prompt)
{
    QInputDialog box(owner_);
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.setInputMode(QInputDialog::TextInput);
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

}  // namespace velmor
