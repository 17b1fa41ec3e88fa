#pragma once

#include <QObject>

#include <functional>

class QLineEdit;

namespace velmor {

// Decides per typed character whether it reaches a box, on the box's text,
// caret and selection as they stand before the key. Keys that type nothing
// (arrows, Delete) and shortcuts (Ctrl+V) are not typing and pass; pasted
// text is the box's change check's business.
class KeyFilter : public QObject {
public:
    // Returns the key to let it through, 0 to swallow it.
    using Rule = std::function<char16_t(char16_t key, const QLineEdit& box)>;

    static void install(QLineEdit* box, Rule rule);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    KeyFilter(QLineEdit* box, Rule rule);

    QLineEdit* box_;
    Rule rule_;
};

// Digits and Backspace only.
void filterDigitKeys(QLineEdit* box);
// The decimal rule for one key on the box as it stands.
char16_t decimalKeyFor(char16_t key, const QLineEdit& box);

}  // namespace velmor
