#include "frame_page.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

namespace velmor {

FramePage::FramePage(QWidget* frame)
{
    setFrameShape(QFrame::NoFrame);
    // The page is no stop for Tab, and a click on a frame's background or on
    // a control that takes no focus leaves the focus where it is.
    setFocusPolicy(Qt::NoFocus);
    // The page is never narrower than its frame (minimumSizeHint).
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(frame);
}

QSize FramePage::sizeHint() const { return widget()->sizeHint(); }

// As narrow as the frame can be beside a scroll bar; as short as a page that
// scrolls can be.
QSize FramePage::minimumSizeHint() const
{
    return QSize(widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(),
                 QScrollArea::minimumSizeHint().height());
}

void FramePage::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fitFrame();
}

void FramePage::fitFrame()
{
    // Wrapped captions need less height on a wider page.
    const QSize least = widget()->minimumSizeHint();
    const QSize room = maximumViewportSize();
    const int bar = verticalScrollBar()->sizeHint().width();
    const auto heightAt = [&](int width) {
        return widget()->hasHeightForWidth() ? std::min(least.height(), widget()->heightForWidth(width)) : least.height();
    };
    const bool scrolls = room.height() < heightAt(std::max(room.width(), least.width()));
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    const int width = std::max(room.width() - (scrolls ? bar : 0), least.width());
    widget()->resize(width, std::max(room.height(), heightAt(width)));
}

}  // namespace velmor
