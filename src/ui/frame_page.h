#pragma once

#include <QScrollArea>

namespace velmor {

// A frame on its page of the stacked frames. The frame fills the page and is
// never squeezed below its minimum height: a window shorter than that (a
// small screen, a large scale factor) scrolls the page instead, so that the
// window never outgrows the screen and every control stays reachable.
class FramePage : public QScrollArea {
    Q_OBJECT
public:
    explicit FramePage(QWidget* frame);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitFrame();
};

}  // namespace velmor
