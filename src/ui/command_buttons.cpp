#include "command_buttons.h"

namespace velmor {

QPushButton* commandButton(const QString& name, const Text& caption, Language language)
{
    auto* button = new QPushButton(pick(caption, language));
    button->setObjectName(name);
    return button;
}

}  // namespace velmor
