#pragma once

#include <QHash>
#include <QRandomGenerator>
#include <QString>

#include <functional>

class QAbstractItemView;
class QMainWindow;
class QTabBar;
class QWidget;

namespace velmor::testing {

// One operator event, chosen but not sent yet: what it is, for the report,
// and how it is sent.
struct OperatorEvent {
    QString description;
    std::function<void()> send;
};

// The hands of an operator who does anything at all: a random event on
// what is in front of them (a list or menu dropped down, a modal dialog, or
// the main window), sent through Qt's event system as the mouse and the
// keyboard send it: clicks on visible, enabled controls, grid cells and tabs,
// drags over grid rows, clicks anywhere (locked controls too), keys into the
// focused control, entries of the menu bar.
class OperatorHands {
public:
    // Controls and menu entries named in `rarely` (by object name) are taken
    // one time in n that they come up, keys into them too; n = 0 is never.
    OperatorHands(QRandomGenerator& random, QHash<QString, int> rarely);

    // `front` is the popup, the modal dialog or the main window.
    OperatorEvent choose(QWidget* front);
    // Escape into `front`: a dialog or popup goes away.
    OperatorEvent escape(QWidget* front);

private:
    OperatorEvent onWindow(QMainWindow* window);
    OperatorEvent onPopup(QWidget* popup);
    OperatorEvent onDialog(QWidget* dialog);

    OperatorEvent clickControl(QWidget* front);
    OperatorEvent clickTab(QWidget* front);
    OperatorEvent clickTabOf(QTabBar* bar);
    OperatorEvent dragOverRows(QWidget* front);
    OperatorEvent clickGrid(QWidget* front);
    OperatorEvent clickCell(QAbstractItemView* view);
    OperatorEvent typeKey(QWidget* front);
    OperatorEvent pickMenuEntry(QMainWindow* window);
    OperatorEvent clickAnywhere(QWidget* front);

    // False when one of `rarely` is passed over this time.
    bool taken(const QString& name);
    template <typename T>
    T* any(const QList<T*>& list)
    {
        return list.isEmpty() ? nullptr : list.at(static_cast<int>(random_.bounded(static_cast<quint32>(list.size()))));
    }
    int below(int n) { return static_cast<int>(random_.bounded(static_cast<quint32>(n))); }

    QRandomGenerator& random_;
    QHash<QString, int> rarely_;
};

}  // namespace velmor::testing
