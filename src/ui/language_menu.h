#pragma once

#include "texts/language.h"

#include <QObject>

class QMenu;

namespace velmor {

// View > Language: follow the system, Chinese or English. The choice goes to
// the operator's settings at once and applies from the next start, which the
// menu says; --lang overrides it for one run.
class LanguageMenu : public QObject {
    Q_OBJECT
public:
    LanguageMenu(QMenu* view, Language language);

signals:
    // The choice is kept: what the status bar says of it.
    void chosen(const QString& notice);
};

}  // namespace velmor
