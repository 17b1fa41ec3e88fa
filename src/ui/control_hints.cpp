#include "control_hints.h"

#include "texts/hints.h"

#include <QAbstractButton>
#include <QComboBox>

namespace velmor {
namespace {

void giveHint(QWidget* control, Language language)
{
    // cmdReceive[2] takes the hint of cmdReceive.
    const QString name = control->objectName().section(QLatin1Char('['), 0, 0);
    for (const texts::hints::Hint& hint : texts::hints::kControls)
        if (name == QLatin1String(hint.name))
            control->setToolTip(pick(hint.text, language));
}

}  // namespace

void giveHints(QWidget& root, Language language)
{
    for (QAbstractButton* button : root.findChildren<QAbstractButton*>())
        giveHint(button, language);
    for (QComboBox* list : root.findChildren<QComboBox*>())
        giveHint(list, language);
}

}  // namespace velmor
