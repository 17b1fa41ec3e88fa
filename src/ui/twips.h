#pragma once

#include <QWidget>

#include <cmath>

namespace velmor {

// The window's sizes are given in twips, 1440 to the inch; they become pixels
// at the screen's logical resolution, rounded to the nearest.
inline int twipsToPixels(int twips, double dpi) { return static_cast<int>(std::lround(twips * dpi / 1440.0)); }

inline int twipsToPixels(int twips, const QWidget* widget) { return twipsToPixels(twips, widget->logicalDpiX()); }

// Widths of the main window in twips. The frames, their grid and the module
// tabs keep these distances to the window's inner width at every size.
namespace twips {
inline constexpr int kMinimumWidth = 8000;
inline constexpr int kFrameLeft = 240;           // Frame1's left edge
inline constexpr int kFrameMargin = 455;         // Frame1: inner width less this
inline constexpr int kModuleTabsMargin = 210;    // TabStripCom: inner width less this
}  // namespace twips

}  // namespace velmor
