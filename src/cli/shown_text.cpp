#include "shown_text.h"

namespace velmor::cli {
namespace {

bool isControl(char16_t c) { return c < 0x20 || (c >= 0x7F && c <= 0x9F); }

}  // namespace

QString shownText(QStringView text)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        if (isControl(c.unicode()))
            out += QStringLiteral("\\x") + QString::number(c.unicode(), 16).toUpper().rightJustified(2, QLatin1Char('0'));
        else
            out += c;
    }
    return out;
}

}  // namespace velmor::cli
