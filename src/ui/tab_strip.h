#pragma once

#include <QTabBar>

#include <functional>

namespace velmor {

// Every way a tab strip's current tab changes (a click, the arrow keys, the
// wheel, an accessibility action, the program) runs `clicked` once with the
// new index; a click on the tab that is already current runs it too, as a
// click handler does. A handler that makes a tab current uses showTab().
void followTabs(QTabBar* strip, QObject* context, const std::function<void(int)>& clicked);

// Makes `index` current without running the strip's handler.
void showTab(QTabBar* strip, int index);

}  // namespace velmor
