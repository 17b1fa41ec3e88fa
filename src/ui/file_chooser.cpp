#include "file_chooser.h"

#include <QFileDialog>

namespace velmor {

QString SystemFileChooser::openFileName() { return QFileDialog::getOpenFileName(owner_); }

QString SystemFileChooser::saveFileName() { return QFileDialog::getSaveFileName(owner_); }

}  // namespace velmor
