#pragma once

#include "texts/language.h"

#include <QByteArrayView>
#include <QWidget>

#include <array>

class QLabel;
class QTabBar;

namespace velmor {

// A label that shows a frame as text: fixed pitch, selectable, room for the
// four lines of a whole frame. A screen reader reads the frame as its name;
// what the frame is goes into its description.
QLabel* frameLabel(const QString& name, const Text& description, Language language);

// The names of one pane's controls: its tab strip, its two captions and its
// two label arrays.
struct FrameTextNames {
    const char* tabStrip;
    const char* sentCaption;
    const char* returnedCaption;
    const char* sentLabels;
    const char* returnedLabels;
};

inline constexpr FrameTextNames kOperateNames{"TabStripOperate", "Label1", "Label2", "lblModuleOperateString",
                                              "lblModuleOperateReturnString"};
inline constexpr FrameTextNames kNoOperateNames{"TabStripNoOperate", "Label3", "Label4", "lblModuleNoOperateString",
                                                "lblModuleNoOperateReturnString"};

// The frames of the four channel groups as hexadecimal text, sent above and
// returned below; a tab strip chooses the group on show.
class FrameTextPane : public QWidget {
    Q_OBJECT
public:
    static constexpr int kGroups = 4;

    FrameTextPane(const FrameTextNames& names, Language language, QWidget* parent = nullptr);

    // As a click on tab g+1: that group's captions and labels, the others hidden.
    void selectGroup(int g);
    int shownGroup() const;
    void showSent(int g, QByteArrayView frame);
    void showReturned(int g, QByteArrayView frame);

private:
    QTabBar* tabs_;
    QLabel* sentCaption_;
    QLabel* returnedCaption_;
    std::array<QLabel*, kGroups> sent_{};
    std::array<QLabel*, kGroups> returned_{};
};

}  // namespace velmor
