#pragma once

#include "operations.h"
#include "serial/port_list.h"

#include <QObject>

#include <atomic>

namespace velmor {

// The search of every listed port at addresses 0..16, then a whole read of
// every module found.
class ModuleSearch : public QObject {
    Q_OBJECT
public:
    static constexpr int kAddresses = 17;

    ModuleSearch(Operations& operations, OperatorDialogs& dialogs, QObject* parent = nullptr);

    // Searches `ports` in order; `selectedPort` is the number the chooser shows.
    // Returns how many modules were found and recorded.
    int searchLinesAndReport(const QList<PortEntry>& ports, int selectedPort);
    // The same without the closing report.
    int searchLines(const QList<PortEntry>& ports, int selectedPort);
    // "Found n modules." or "No module found.", in the state's language.
    static void report(const SetupState& state, OperatorDialogs& dialogs);
    static void report(int found, Language language, OperatorDialogs& dialogs);
    // Table indices of the modules found whose whole read failed.
    const QList<int>& unreadModules() const { return unread_; }
    // Asks no address after the one in flight; the modules found so far are
    // read and reported as at the end of a search. Safe from any thread.
    void stopAsking() { stopAsking_ = true; }
    // Stops asking, as stopAsking(), once `flag` is set (a search of several lines at once).
    void stopWith(const std::atomic<bool>& flag) { sharedStop_ = &flag; }

signals:
    void progressMaximum(int maximum);
    void progress(int value);
    // The line's address that is being asked now, the n-th of kAddresses.
    void asking(const velmor::PortEntry& port, int address);
    // The module tabs: one per module found, in table order.
    void modulesFound(int count);
    // The three operation panels and the Balance, Read and Send menu entries.
    void operationsEnabled(bool enabled);
    // A port would not open; its message has just been shown.
    void portNotOpened(const velmor::PortEntry& port);
    // Another program held a port's line all the while it was waited for;
    // its message ("Open COM n fail.") has just been shown.
    void lineBusy(const velmor::PortEntry& port, const velmor::LineHolder& holder);

private:
    bool searchPort(const PortEntry& port, int p);

    Operations& operations_;
    OperatorDialogs& dialogs_;
    QList<int> unread_;
    // Whether to stop asking now.
    bool stopped() const { return stopAsking_ || (sharedStop_ && *sharedStop_); }

    std::atomic<bool> stopAsking_ = false;
    const std::atomic<bool>* sharedStop_ = nullptr;
};

}  // namespace velmor
