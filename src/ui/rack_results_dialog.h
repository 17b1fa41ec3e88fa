#pragma once

#include "texts/language.h"

#include <QDialog>
#include <QStringList>

class QLabel;
class QTableWidget;

namespace velmor {

// One row of a rack's results: the module and where it answers, what became
// of it, and the cells or groups behind that.
struct RackResultRow {
    QString line;
    int address = 0;
    QString model;
    int moduleNumber = 0;
    QString status;
    QString details;
    bool fine = true;  // same, saved, unchanged or restored: nothing to look at
};

// The result of File > Rack > Save, Check or Restore: a summary line over a
// table of every module (line, address, model, module number, status,
// details), the rows that need a look marked. Text can be selected and copied.
class RackResultsDialog : public QDialog {
    Q_OBJECT
public:
    RackResultsDialog(const QString& title, const QString& summary, const QList<RackResultRow>& rows,
                      Language language, QWidget* parent);

    QTableWidget* table() const { return table_; }

private:
    QTableWidget* table_;
};

}  // namespace velmor
