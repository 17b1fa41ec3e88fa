#include "fixed_text.h"

namespace velmor {

FixedText fixedText(QStringView text)
{
    FixedText out;
    out.fill(u' ');
    for (qsizetype i = 0; i < text.size() && i < kTextChars; ++i)
        out[static_cast<size_t>(i)] = text[i].unicode();
    return out;
}

QString trimmedText(const FixedText& text)
{
    qsizetype end = kTextChars;
    while (end > 0 && (text[static_cast<size_t>(end - 1)] == u' ' || text[static_cast<size_t>(end - 1)] == 0))
        --end;
    return QString::fromUtf16(text.data(), end);
}

}  // namespace velmor
