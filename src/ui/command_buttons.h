#pragma once

#include "object_names.h"
#include "texts/language.h"

#include <QList>
#include <QPushButton>

namespace velmor {

// A command button with its object name and caption.
QPushButton* commandButton(const QString& name, const Text& caption, Language language);

// The buttons of one array, NAME[0] .. NAME[3], one per channel group; a click
// on element g calls clicked(g).
template <typename Clicked>
QList<QPushButton*> groupButtons(const char* name, const Text (&captions)[4], Language language, Clicked clicked)
{
    QList<QPushButton*> buttons;
    for (int g = 0; g < 4; ++g) {
        QPushButton* button = commandButton(arrayName(name, g), captions[g], language);
        QObject::connect(button, &QPushButton::clicked, button, [clicked, g] { clicked(g); });
        buttons.append(button);
    }
    return buttons;
}

}  // namespace velmor
