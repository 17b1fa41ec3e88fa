#include "frame_text.h"

#include "frame.h"

namespace velmor {

QString frameToText(QByteArrayView frame)
{
    static const char digits[] = "0123456789ABCDEF";
    QString text;
    text.reserve(frame.size() * 4 + 8);
    const bool longFrame = frame.size() == kFullFrameLength;
    for (qsizetype i = 0; i < frame.size(); ++i) {
        const auto b = static_cast<quint8>(frame[i]);
        text += QLatin1Char(digits[b >> 4]);
        text += QLatin1Char(digits[b & 15]);
        text += QLatin1String("  ");
        if (longFrame && i % 16 == 15)
            text += QLatin1String("\r\n");
    }
    return text;
}

}  // namespace velmor
