#pragma once

#include <QString>

namespace velmor {

// Message boxes and questions go through this, so that the window shows them
// as modal boxes, the command line prints them, and tests answer them.
class OperatorDialogs {
public:
    virtual ~OperatorDialogs() = default;
    // An OK-only box without an icon.
    virtual void showMessage(const QString& title, const QString& text) = 0;
    // OK and Cancel; true for OK.
    virtual bool confirm(const QString& title, const QString& text) = 0;
    // A prompt with a text box; the answer, or an empty text for Cancel. A
    // front end that cannot ask answers as Cancel does, which changes nothing.
    virtual QString askText(const QString& title, const QString& prompt)
    {
        Q_UNUSED(title);
        Q_UNUSED(prompt);
        return QString();
    }
};

}  // namespace velmor
