#include "frame_text_pane.h"

#include "object_names.h"
#include "protocol/frame_text.h"
#include "tab_strip.h"
#include "texts/grid.h"
#include "texts/window.h"

#include <QFontDatabase>
#include <QLabel>
#include <QTabBar>
#include <QVBoxLayout>

namespace velmor {

QLabel* frameLabel(const QString& name, const Text& description, Language language)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setAccessibleDescription(pick(description, language));
    label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Three lines of 16 bytes and a fourth of 7 for a whole frame.
    label->setMinimumHeight(4 * label->fontMetrics().lineSpacing());
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

FrameTextPane::FrameTextPane(const FrameTextNames& names, Language language, QWidget* parent)
    : QWidget(parent)
    , tabs_(new QTabBar)
    , sentCaption_(new QLabel(pick(texts::window::kSentCaption, language)))
    , returnedCaption_(new QLabel(pick(texts::window::kReturnedCaption, language)))
{
    tabs_->setObjectName(QLatin1String(names.tabStrip));
    tabs_->setAccessibleName(pick(texts::window::kGroupTabsName, language));
    tabs_->setExpanding(false);
    for (const Text& caption : texts::grid::kChannelGroupTabs)
        tabs_->addTab(pick(caption, language));
    sentCaption_->setObjectName(QLatin1String(names.sentCaption));
    returnedCaption_->setObjectName(QLatin1String(names.returnedCaption));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs_);
    layout->addWidget(sentCaption_);
    for (int g = 0; g < kGroups; ++g) {
        sent_[g] = frameLabel(arrayName(names.sentLabels, g), texts::window::kSentFrameName, language);
        layout->addWidget(sent_[g]);
    }
    layout->addWidget(returnedCaption_);
    for (int g = 0; g < kGroups; ++g) {
        returned_[g] = frameLabel(arrayName(names.returnedLabels, g), texts::window::kReturnedFrameName, language);
        layout->addWidget(returned_[g]);
    }
    for (int g = 1; g < kGroups; ++g) {
        sent_[g]->hide();
        returned_[g]->hide();
    }
    followTabs(tabs_, this, [this](int g) { selectGroup(g); });
}

void FrameTextPane::selectGroup(int g)
{
    if (g < 0 || g >= kGroups)
        return;
    showTab(tabs_, g);
    sentCaption_->setText(QString::fromUtf8(texts::window::kGroupSentCaptions[g]));
    returnedCaption_->setText(QString::fromUtf8(texts::window::kGroupReturnedCaptions[g]));
    for (int i = 0; i < kGroups; ++i) {
        sent_[i]->setVisible(i == g);
        returned_[i]->setVisible(i == g);
    }
}

int FrameTextPane::shownGroup() const { return tabs_->currentIndex(); }

void FrameTextPane::showSent(int g, QByteArrayView frame) { sent_.at(g)->setText(frameToText(frame)); }

void FrameTextPane::showReturned(int g, QByteArrayView frame) { returned_.at(g)->setText(frameToText(frame)); }

}  // namespace velmor
