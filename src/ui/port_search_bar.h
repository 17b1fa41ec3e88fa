#pragma once

#include "serial/port_list.h"
#include "texts/language.h"

#include <QGroupBox>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace velmor {

// Frame6, the operation area: the port chooser, the module-address chooser,
// the search button and the search's progress bar.
class PortSearchBar : public QGroupBox {
    Q_OBJECT
public:
    PortSearchBar(Language language, QWidget* parent = nullptr);

    // Fills cmbComPort (text: the port's name, item data: its number), with
    // "Add network port..." last. The port chosen before stays chosen when it
    // is still there, else the first.
    void setPorts(const QList<PortEntry>& ports);
    void selectFirstPort();
    // The selected port's number, 0 when the list is empty.
    int selectedPortNumber() const;
    void showAddress(int address);
    // Selects the port of that number when it is listed; else nothing changes.
    void showPort(int number);

    QProgressBar* progressBar() const { return progress_; }
    // The lists and the button follow the window's lock; while a search
    // runs the button reads "Stop" and stays usable until it is clicked.
    void setCommandsEnabled(bool enabled);
    void setSearching(bool searching);

signals:
    void portChosen(int number);       // cmbComPort_Click
    void addressChosen(int address);   // cmbModuleIndex_Click
    void searchClicked();              // cmdSearch_Click
    void stopClicked();                // the search button, while a search runs
    // "Add network port..." was chosen; the chooser shows the port it showed before.
    void addNetworkPortChosen();

private:
    void portActivated(int index);
    void refresh();

    QString addCaption_;
    QComboBox* cmbComPort_;
    QComboBox* cmbModuleIndex_;
    QPushButton* cmdSearch_;
    QProgressBar* progress_;
    int shown_ = -1;  // the index of the port shown, -1 when none is listed
    QString searchCaption_;
    QString stopCaption_;
    QString stopHint_;
    QString searchHint_;  // the button's tool tip when it searches
    bool commandsOn_ = true;
    bool searching_ = false;
    bool stopAsked_ = false;
};

}  // namespace velmor
