#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace velmor {

// A picture format reduced to what the program uses: how many integer digits
// are always written (0 drops the zero in front of the point) and how many
// decimals at least and at most. No thousands separators, ever.
struct NumberPicture {
    int minIntegerDigits;
    int minDecimals;
    int maxDecimals;
};

inline constexpr NumberPicture kCutoffPicture{0, 5, 5};       // "#####.00000": 0.5 gives ".50000"
inline constexpr NumberPicture kCoefPicture{1, 2, 3};         // "#0.00#"
inline constexpr NumberPicture kWholePicture{1, 0, 0};        // "#0"
inline constexpr NumberPicture kThousandthsPicture{1, 3, 3};  // "#0.000"

QString formatNumber(double value, NumberPicture picture);

// The number at the start of a text: blanks, a sign, digits with at most one
// point, an exponent. "10.0V" gives 10, "4mA" 4, "断开" 0; a text without a
// leading number, or one too large for a double, gives 0.
double leadingNumber(QStringView text);

// A box's text read as a number and rounded to a whole one, halves to even;
// nothing when that falls outside 0..highest.
std::optional<int> wholeNumberWithin(QStringView text, int highest);

}  // namespace velmor
