#pragma once

// A module read into the window from a simulated line, and the grids'
// cells clicked and chosen as an operator does.

#include "window_rig.h"

#include "ui/cell_grid.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QPushButton>
#include <QTest>

namespace velmor::testing {

// A module of that model read wholly into the window from its own line.
struct ReadModule {
    explicit ReadModule(int modelCode, int languageMode = kEnglish)
        : line({{1, modelCode}}, Pacing::Fast, QStringLiteral("SIM1")), rig(languageMode)
    {
        chooseModule(rig.window, line, 1);
        QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    }
    frmMain& window() { return rig.window; }
    ModuleRecord& record() { return rig.window.state().current(); }
    ChannelRecord& channel(int index) { return record().channels[static_cast<size_t>(index)]; }
    CellGrid* grid(const char* name) { return child<CellGrid>(rig.window, name); }

    SimLine line;
    WindowRig rig;
};

inline QPoint centreOf(CellGrid* grid, int row, int column)
{
    return grid->visualRect(grid->model()->index(row - 1, column)).center();
}

inline void clickCell(CellGrid* grid, int row, int column, Qt::KeyboardModifiers modifiers = {})
{
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers, centreOf(grid, row, column));
}

inline QString cellText(CellGrid* grid, int row, int column) { return grid->cellModel()->cellText(row, column); }

// A choice in the open list, made with the keys in its pop-up.
inline void chooseItem(QComboBox* list, int item)
{
    QAbstractItemView* view = list->view();
    QTRY_VERIFY(view->isVisible());
    QTest::keyClick(view, Qt::Key_Home);
    for (int i = 0; i < item; ++i)
        QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Return);
}

}  // namespace velmor::testing
