#include "monkey_hands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>

namespace velmor::testing {
namespace {

struct Key {
    Qt::Key key;
    QString text;  // empty for keys that type nothing
};

// Digits, letters, minus, point, the editing and moving keys, and Chinese
// characters (which come as text from an input method, with no key of their own).
QList<Key> operatorKeys()
{
    QList<Key> keys;
    for (char c = '0'; c <= '9'; ++c)
        keys.append({Qt::Key(Qt::Key_0 + (c - '0')), QString(QChar::fromLatin1(c))});
    for (char c = 'a'; c <= 'z'; ++c)
        keys.append({Qt::Key(Qt::Key_A + (c - 'a')), QString(QChar::fromLatin1(c))});
    keys.append({Qt::Key_Minus, QStringLiteral("-")});
    keys.append({Qt::Key_Period, QStringLiteral(".")});
    keys.append({Qt::Key_Space, QStringLiteral(" ")});
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Left,
                        Qt::Key_Right, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Home, Qt::Key_End})
        keys.append({key, QString()});
    for (const char16_t* text : {u"中", u"文", u"模", u"块", u"零", u"点", u"。", u"μ"})
        keys.append({Qt::Key_unknown, QString::fromUtf16(text)});
    return keys;
}

QString nameOf(const QObject* object)
{
    return object->objectName().isEmpty() ? QString::fromLatin1(object->metaObject()->className()) : object->objectName();
}

QString keyName(const Key& key)
{
    if (!key.text.isEmpty())
        return QStringLiteral("'%1'").arg(key.text);
    return QKeySequence(key.key).toString();
}

void send(QWidget* target, const Key& key)
{
    if (key.key != Qt::Key_unknown) {
        QTest::keyClick(target, key.key);
        return;
    }
    QKeyEvent press(QEvent::KeyPress, key.key, Qt::NoModifier, key.text);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key.key, Qt::NoModifier, key.text);
    QCoreApplication::sendEvent(target, &release);
}

// The controls an operator can click in `front`.
QList<QWidget*> clickable(QWidget* front)
{
    QList<QWidget*> found;
    for (QWidget* w : front->findChildren<QWidget*>()) {
        if (!w->isVisible() || !w->isEnabled())
            continue;
        if (qobject_cast<QAbstractButton*>(w) || qobject_cast<QComboBox*>(w) || qobject_cast<QLineEdit*>(w)
            || qobject_cast<QTabBar*>(w) || qobject_cast<QAbstractItemView*>(w))
            found.append(w);
    }
    return found;
}

template <typename T>
QList<T*> shown(QWidget* front)
{
    QList<T*> found;
    for (T* w : front->findChildren<T*>())
        if (w->isVisible() && w->isEnabled())
            found.append(w);
    return found;
}

// The tables in `front`, not their headers.
QList<QAbstractItemView*> grids(QWidget* front)
{
    QList<QAbstractItemView*> found;
    for (QAbstractItemView* view : shown<QAbstractItemView>(front))
        if (!qobject_cast<QHeaderView*>(view))
            found.append(view);
    return found;
}

// The cells whose centre lies in the view's visible part.
QList<QModelIndex> visibleCells(QAbstractItemView* view)
{
    QList<QModelIndex> cells;
    const QAbstractItemModel* model = view->model();
    if (!model)
        return cells;
    for (int r = 0; r < model->rowCount(view->rootIndex()); ++r)
        for (int c = 0; c < model->columnCount(view->rootIndex()); ++c) {
            const QModelIndex index = model->index(r, c, view->rootIndex());
            if (view->viewport()->rect().contains(view->visualRect(index).center()))
                cells.append(index);
        }
    return cells;
}

}  // namespace

OperatorHands::OperatorHands(QRandomGenerator& random, QHash<QString, int> rarely)
    : random_(random), rarely_(std::move(rarely))
{
}

bool OperatorHands::taken(const QString& name)
{
    const auto odds = rarely_.constFind(name);
    if (odds == rarely_.constEnd())
        return true;
    return *odds > 0 && below(*odds) == 0;
}

OperatorEvent OperatorHands::choose(QWidget* front)
{
    if (front->windowType() == Qt::Popup)
        return onPopup(front);
    if (auto* window = qobject_cast<QMainWindow*>(front))
        return onWindow(window);
    return onDialog(front);
}

OperatorEvent OperatorHands::escape(QWidget* front)
{
    QWidget* target = front->focusWidget() ? front->focusWidget() : front;
    return {QStringLiteral("Escape into %1").arg(nameOf(front)), [target] { QTest::keyClick(target, Qt::Key_Escape); }};
}

OperatorEvent OperatorHands::onWindow(QMainWindow* window)
{
    // Weights out of 100; a kind with nothing to act on this time gives way
    // to another.
    for (int attempt = 0; attempt < 8; ++attempt) {
        const int roll = below(100);
        OperatorEvent event;
        if (roll < 28)
            event = clickControl(window);
        else if (roll < 40)  // the grids are where most editing happens
            event = clickGrid(window);
        else if (roll < 46)
            event = clickTab(window);
        else if (roll < 50)
            event = dragOverRows(window);
        else if (roll < 60)
            event = pickMenuEntry(window);
        else if (roll < 68)
            event = clickAnywhere(window);
        else
            event = typeKey(window);
        if (event.send)
            return event;
    }
    return escape(window);
}

OperatorEvent OperatorHands::onPopup(QWidget* popup)
{
    if (below(5) == 0) {
        OperatorEvent event = typeKey(popup);
        if (event.send)
            return event;
    }
    if (auto* menu = qobject_cast<QMenu*>(popup)) {
        QList<QAction*> entries;
        for (QAction* a : menu->actions())
            if (a->isEnabled() && a->isVisible() && !a->isSeparator() && taken(a->objectName()))
                entries.append(a);
        if (QAction* entry = any(entries)) {
            const QPoint at = menu->actionGeometry(entry).center();
            return {QStringLiteral("click menu entry %1").arg(nameOf(entry)),
                    [menu, at] { QTest::mouseClick(menu, Qt::LeftButton, {}, at); }};
        }
        return escape(popup);
    }
    if (QAbstractItemView* list = any(shown<QAbstractItemView>(popup))) {
        OperatorEvent event = clickCell(list);
        if (event.send)
            return event;
    }
    return escape(popup);
}

OperatorEvent OperatorHands::onDialog(QWidget* dialog)
{
    OperatorEvent event = below(2) == 0 ? clickControl(dialog) : typeKey(dialog);
    return event.send ? event : escape(dialog);
}

OperatorEvent OperatorHands::clickControl(QWidget* front)
{
    for (int attempt = 0; attempt < 4; ++attempt) {
        QWidget* control = any(clickable(front));
        if (!control)
            return {};
        if (!taken(nameOf(control)))
            continue;
        if (auto* view = qobject_cast<QAbstractItemView*>(control))
            return clickCell(view);
        if (auto* bar = qobject_cast<QTabBar*>(control))
            return clickTabOf(bar);
        QPoint at = control->rect().center();
        if (qobject_cast<QLineEdit*>(control))  // anywhere along the text
            at.setX(below(std::max(1, control->width())));
        return {QStringLiteral("click %1").arg(nameOf(control)),
                [control, at] { QTest::mouseClick(control, Qt::LeftButton, {}, at); }};
    }
    return {};
}

OperatorEvent OperatorHands::clickTab(QWidget* front)
{
    QList<QTabBar*> bars;
    for (QTabBar* bar : shown<QTabBar>(front))
        if (bar->count() > 0)
            bars.append(bar);
    QTabBar* bar = any(bars);
    return bar ? clickTabOf(bar) : OperatorEvent{};
}

OperatorEvent OperatorHands::clickTabOf(QTabBar* bar)
{
    if (bar->count() == 0)
        return {};
    const int tab = below(bar->count());
    const QPoint at = bar->tabRect(tab).center();
    return {QStringLiteral("tab %1 of %2").arg(tab).arg(nameOf(bar)),
            [bar, at] { QTest::mouseClick(bar, Qt::LeftButton, {}, at); }};
}

OperatorEvent OperatorHands::clickGrid(QWidget* front)
{
    QAbstractItemView* view = any(grids(front));
    return view ? clickCell(view) : OperatorEvent{};
}

OperatorEvent OperatorHands::clickCell(QAbstractItemView* view)
{
    const QAbstractItemModel* model = view->model();
    if (!model || model->rowCount(view->rootIndex()) == 0 || model->columnCount(view->rootIndex()) == 0)
        return {};
    const QModelIndex cell = model->index(below(model->rowCount(view->rootIndex())),
                                          below(model->columnCount(view->rootIndex())), view->rootIndex());
    return {QStringLiteral("click cell (%1, %2) of %3").arg(cell.row()).arg(cell.column()).arg(nameOf(view)),
            [view, cell] {
                // Scrolled into sight first, as the operator would.
                view->scrollTo(cell);
                QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
            }};
}

OperatorEvent OperatorHands::dragOverRows(QWidget* front)
{
    QAbstractItemView* view = any(grids(front));
    if (!view)
        return {};
    const QList<QModelIndex> cells = visibleCells(view);
    if (cells.isEmpty())
        return {};
    const QModelIndex from = cells.at(below(static_cast<int>(cells.size())));
    QList<QModelIndex> sameColumn;
    for (const QModelIndex& cell : cells)
        if (cell.column() == from.column())
            sameColumn.append(cell);
    const QModelIndex to = sameColumn.at(below(static_cast<int>(sameColumn.size())));
    const QPoint start = view->visualRect(from).center();
    const QPoint end = view->visualRect(to).center();
    QWidget* viewport = view->viewport();
    return {QStringLiteral("drag rows %1 to %2 of column %3 of %4").arg(from.row()).arg(to.row()).arg(from.column()).arg(nameOf(view)),
            [viewport, start, end] {
                QTest::mousePress(viewport, Qt::LeftButton, {}, start);
                QTest::mouseMove(viewport, end);
                QTest::mouseRelease(viewport, Qt::LeftButton, {}, end);
            }};
}

OperatorEvent OperatorHands::typeKey(QWidget* front)
{
    static const QList<Key> keys = operatorKeys();
    const Key key = keys.at(below(static_cast<int>(keys.size())));
    // What has the focus in front of the operator: an operator cannot type
    // into a box that does not show.
    QWidget* target = front->focusWidget();
    if (!target || !target->isVisible())
        target = front;
    if (!taken(nameOf(target)))
        return {};
    return {QStringLiteral("key %1 into %2").arg(keyName(key), nameOf(target)), [target, key] { send(target, key); }};
}

OperatorEvent OperatorHands::pickMenuEntry(QMainWindow* window)
{
    QList<QAction*> entries;
    for (QAction* top : window->menuBar()->actions()) {
        if (!top->menu())
            continue;
        for (QAction* a : top->menu()->actions())
            if (a->isEnabled() && a->isVisible() && !a->isSeparator() && !a->menu())
                entries.append(a);
    }
    for (int attempt = 0; attempt < 4; ++attempt) {
        QAction* entry = any(entries);
        if (entry && taken(nameOf(entry)))
            return {QStringLiteral("menu %1").arg(nameOf(entry)), [entry] { entry->trigger(); }};
    }
    return {};
}

OperatorEvent OperatorHands::clickAnywhere(QWidget* front)
{
    const QPoint at(below(std::max(1, front->width())), below(std::max(1, front->height())));
    QWidget* target = front->childAt(at);
    if (!target)
        target = front;
    if (!taken(nameOf(target)))
        return {};
    const QPoint local = target->mapFrom(front, at);
    return {QStringLiteral("click at (%1, %2) on %3%4")
                .arg(at.x())
                .arg(at.y())
                .arg(nameOf(target), target->isEnabled() ? QString() : QStringLiteral(" (locked)")),
            [target, local] { QTest::mouseClick(target, Qt::LeftButton, {}, local); }};
}

}  // namespace velmor::testing
