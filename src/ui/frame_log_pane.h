#pragma once

#include "frame_log_model.h"
#include "link/frame_log.h"

#include <QDockWidget>

class QMainWindow;
class QTableView;

namespace velmor {

class Exchange;
class FileChooser;
class OperatorDialogs;

// The frame log at the window's foot, hidden until its View menu entry
// (toggleViewAction()) shows it. It follows the exchanges live, showing the
// newest row unless the operator has scrolled up, and offers "Export to
// CSV..." and "Clear". The log is kept while the pane is hidden.
class FrameLogPane : public QDockWidget {
    Q_OBJECT
public:
    // Docks itself in `window`, hidden, and follows `exchange`.
    FrameLogPane(const Exchange& exchange, FileChooser& files, OperatorDialogs& dialogs, Language language,
                 QMainWindow* window);

    // The log the pane shows. A search of all lines at once, whose lines have
    // exchanges of their own, logs here while the log follows it.
    FrameLog& log() { return log_; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    // Once, from the texts a column can hold: sizing columns to their
    // contents would look at every row whenever one is added.
    void setColumnWidths();
    QWidget* buildButtons();
    void rowsAdded(int first, int last);
    // "Export to CSV...": the whole log as a new file the operator names.
    void exportCsv();

    FrameLog log_;
    FrameLogModel model_;
    QTableView* table_;
    FileChooser& files_;
    OperatorDialogs& dialogs_;
    Language language_;
    // The newest row was in sight before the last rows came.
    bool following_ = true;
};

}  // namespace velmor
