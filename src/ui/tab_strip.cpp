#include "tab_strip.h"

#include <QSignalBlocker>

namespace velmor {

void followTabs(QTabBar* strip, QObject* context, const std::function<void(int)>& clicked)
{
    QObject::connect(strip, &QTabBar::currentChanged, context, clicked);
    // A press on a tab comes before it becomes current: only a press on the
    // current one changes nothing and needs running here.
    QObject::connect(strip, &QTabBar::tabBarClicked, context, [strip, clicked](int index) {
        if (index >= 0 && index == strip->currentIndex())
            clicked(index);
    });
}

void showTab(QTabBar* strip, int index)
{
    const QSignalBlocker quiet(strip);
    strip->setCurrentIndex(index);
}

}  // namespace velmor
