#pragma once

#include "edit/setup_differences.h"
#include "history/history_store.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QTableView;
class QTableWidget;

namespace velmor {

class CellGrid;
class FileChooser;

// The history of the module shown (by its model and module number, on any
// line and address), newest first, filtered by kind and date. Two entries,
// or one and the module now, or one and a configuration file, are compared:
// the differing cells are marked in grids laid out as the main window's.
// "Restore..." hands the chosen entry to the window, which writes it.
class HistoryDialog : public QDialog {
    Q_OBJECT
public:
    HistoryDialog(const HistoryTarget& target, const SetupState& state, FileChooser& files, QWidget* parent);

    // The entries listed so far (a page more as the list scrolls), newest
    // first, without their images.
    const QList<HistoryEntry>& entries() const { return shown_; }
    // The list filled anew by the filters.
    void refresh();
    // The chosen entries compared (two), or the chosen one with the module now.
    void compareChosen();
    // The chosen entry compared with a configuration file the operator picks.
    void compareWithFile();

signals:
    void restoreAsked(const velmor::HistoryEntry& entry);

private:
    Language language() const { return languageOf(state_.languageMode); }
    // The chosen entries with their images, the older first.
    QList<HistoryEntry> chosen();
    QString nameOf(const HistoryEntry& entry) const;
    void compare(const ModuleRecord& a, const QString& aName, const ModuleRecord& b, const QString& bName);
    void say(const QString& text);

    const SetupState& state_;
    FileChooser& files_;
    HistoryStore store_;
    QString unavailable_;
    QList<HistoryEntry> shown_;
    QComboBox* kinds_;
    QCheckBox* sinceOn_;
    QDateEdit* since_;
    QTableView* list_;
    class EntryList;
    EntryList* entryList_;
    QLabel* comparing_;
    QTableWidget* information_;
    CellGrid* channels_;
    CellGrid* adjust_;
    CellGrid* calibration_;
};

}  // namespace velmor
