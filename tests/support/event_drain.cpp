#include "event_drain.h"

#include <QCoreApplication>
#include <QEvent>

namespace velmor::testing {

void drainEvents()
{
    QCoreApplication::sendPostedEvents(nullptr, 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

}  // namespace velmor::testing
