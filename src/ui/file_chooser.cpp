#include "file_chooser.h"

#include <QFileDialog>

namespace velmor {

QString SystemFileChooser::openFileName() { return QFileDialog::getOpenFileName(owner_); }

QString SystemFileChooser::saveFileName() { return QFileDialog::getSaveFileName(owner_); }

QString SystemFileChooser::reportFileName(const QString& pdfFilter, const QString& htmlFilter)
{
    QFileDialog dialog(owner_);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({pdfFilter, htmlFilter});
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog, htmlFilter](const QString& filter) {
        dialog.setDefaultSuffix(filter == htmlFilter ? QStringLiteral("html") : QStringLiteral("pdf"));
    });
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

}  // namespace velmor
