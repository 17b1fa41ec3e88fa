#pragma once

#include <QStringView>

namespace velmor {

inline constexpr char16_t kBackspaceKey = 8;

// Returns the key when it may reach the box, 0 to swallow it.

// Digits and Backspace.
char16_t FilterDigitKey(char16_t key);

// Digits (none in front of a leading minus sign), one point, Backspace. A minus
// sign is never typed, only set by the program: deliberate. The box is seen
// only through its text, caret position and selection length.
char16_t FilterDecimalKey(char16_t key, QStringView text, int selStart, int selLength);

}  // namespace velmor
