#pragma once

#include <QAccessible>
#include <QObject>
#include <QString>

namespace velmor::testing {

// What assistive technology reads of a control, through Qt's accessibility
// interface, as a screen reader over AT-SPI gets it.
inline QString accessibleText(QObject* control, QAccessible::Text text)
{
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
    return face ? face->text(text) : QString();
}

// The name of the control that labels this one (a label whose buddy it is),
// or empty.
inline QString accessibleLabel(QObject* control)
{
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
    if (!face)
        return QString();
    const auto labels = face->relations(QAccessible::Label);
    return labels.isEmpty() ? QString() : labels.first().first->text(QAccessible::Name);
}

}  // namespace velmor::testing
