#include "number_text.h"

#include <cmath>

namespace velmor {

namespace {

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

qsizetype skipDigits(QStringView text, qsizetype i)
{
    while (i < text.size() && isAsciiDigit(text[i]))
        ++i;
    return i;
}

}  // namespace

QString formatNumber(double value, NumberPicture picture)
{
    QString text = QString::number(value, 'f', picture.maxDecimals);
    const qsizetype point = text.indexOf(u'.');
    if (point < 0)
        return text;
    qsizetype decimals = text.size() - point - 1;
    while (decimals > picture.minDecimals && text.endsWith(u'0')) {
        text.chop(1);
        --decimals;
    }
    if (decimals == 0)
        text.chop(1);
    if (picture.minIntegerDigits == 0 && point > 0 && text[point - 1] == u'0'
        && (point == 1 || !isAsciiDigit(text[point - 2])))
        text.remove(point - 1, 1);
    return text;
}

double leadingNumber(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    const qsizetype intStart = i;
    i = skipDigits(text, i);
    qsizetype digits = i - intStart;
    if (i < text.size() && text[i] == u'.') {
        const qsizetype fracEnd = skipDigits(text, i + 1);
        digits += fracEnd - i - 1;
        i = fracEnd;
    }
    if (digits == 0)
        return 0.0;
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        qsizetype e = i + 1;
        if (e < text.size() && (text[e] == u'+' || text[e] == u'-'))
            ++e;
        const qsizetype expEnd = skipDigits(text, e);
        if (expEnd > e)
            i = expEnd;
    }
    bool ok = false;
    const double value = text.sliced(start, i - start).toDouble(&ok);
    return ok ? value : 0.0;
}

std::optional<int> wholeNumberWithin(QStringView text, int highest)
{
    // The default rounding mode rounds halves to even.
    const double rounded = std::nearbyint(leadingNumber(text));
    if (!(rounded >= 0 && rounded <= highest))
        return std::nullopt;
    return static_cast<int>(rounded);
}

}  // namespace velmor
