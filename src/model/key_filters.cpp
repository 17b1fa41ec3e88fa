#include "key_filters.h"

namespace velmor {

namespace {

bool isDigitKey(char16_t key)
{
    return key >= u'0' && key <= u'9';
}

}  // namespace

char16_t FilterDigitKey(char16_t key)
{
    return isDigitKey(key) || key == kBackspaceKey ? key : char16_t{0};
}

char16_t FilterDecimalKey(char16_t key, QStringView text, int selStart, int selLength)
{
    if (isDigitKey(key)) {
        const bool caretBeforeMinus = text.startsWith(u'-') && selStart == 0 && selLength == 0;
        return caretBeforeMinus ? char16_t{0} : key;
    }
    if (key == u'.')
        return text.contains(u'.') ? char16_t{0} : key;
    return key == kBackspaceKey ? key : char16_t{0};
}

}  // namespace velmor
