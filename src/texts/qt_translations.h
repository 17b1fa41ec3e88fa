#pragma once

#include "language.h"

#include <QTranslator>

namespace velmor {

// Qt's own words (dialog buttons, the option parser's errors, the serial
// port's reasons) in the program's language: for Chinese, Qt's translations
// from the system's Qt installation are installed while this object lives.
class QtTranslations {
public:
    explicit QtTranslations(Language language);
    QtTranslations(const QtTranslations&) = delete;
    QtTranslations& operator=(const QtTranslations&) = delete;

private:
    QTranslator base_;
    QTranslator serial_;
};

}  // namespace velmor
