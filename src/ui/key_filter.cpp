#include "key_filter.h"

#include "model/key_filters.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace velmor {

KeyFilter::KeyFilter(QLineEdit* box, Rule rule) : QObject(box), box_(box), rule_(std::move(rule)) {}

void KeyFilter::install(QLineEdit* box, Rule rule)
{
    box->installEventFilter(new KeyFilter(box, std::move(rule)));
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != box_ || event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier | Qt::AltModifier))
        return false;
    // Backspace types character 8 as far as the filters are concerned.
    const QString typed = key->key() == Qt::Key_Backspace ? QString(QChar(kBackspaceKey)) : key->text();
    if (typed.size() != 1 || (typed[0].unicode() < 0x20 && typed[0].unicode() != kBackspaceKey))
        return false;
    return rule_(typed[0].unicode(), *box_) == 0;
}

void filterDigitKeys(QLineEdit* box)
{
    KeyFilter::install(box, [](char16_t key, const QLineEdit&) { return FilterDigitKey(key); });
}

char16_t decimalKeyFor(char16_t key, const QLineEdit& box)
{
    // The caret, or the start of the selection when there is one.
    const int start = box.hasSelectedText() ? box.selectionStart() : box.cursorPosition();
    return FilterDecimalKey(key, box.text(), start, static_cast<int>(box.selectedText().size()));
}


}  // namespace velmor
