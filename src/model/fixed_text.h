#pragma once

#include <QString>
#include <QStringView>

#include <array>

namespace velmor {

// A record's text field: exactly 20 characters, padded with blanks.
inline constexpr int kTextChars = 20;
using FixedText = std::array<char16_t, kTextChars>;

// Pads with blanks or cuts to 20 characters.
FixedText fixedText(QStringView text);

// The text without its trailing blanks and NULs, as a reader wants it.
QString trimmedText(const FixedText& text);

}  // namespace velmor
