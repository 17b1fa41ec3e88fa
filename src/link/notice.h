#pragma once

#include "exchange.h"
#include "operator_dialogs.h"
#include "serial/line_lock.h"
#include "texts/language.h"

#include <QString>

namespace velmor {

// Something a flow tells the operator, as a value: a request that failed, a
// port that would not open, a line that stayed busy, a full module table.
struct Notice {
    enum class Kind { RequestFailed, PortNotOpened, LineBusy, TableFull };
    Kind kind = Kind::RequestFailed;
    Request request;                             // RequestFailed
    Failure failure = Failure::None;             // RequestFailed
    PortEntry port;                              // PortNotOpened, LineBusy
    OpenFailure openFailure = OpenFailure::None; // PortNotOpened, and the system's words:
    QString reason;
    LineHolder holder;                           // LineBusy

    static Notice requestFailed(const Request& request, Failure failure);
    static Notice portNotOpened(const PortEntry& port, const ComPort& com);
    static Notice lineBusy(const PortEntry& port, const LineHolder& holder);
    static Notice tableFull();
};

// The operator's message of a notice, in one place: "Open COM n fail." for a
// port or a busy line of a search, "Open COM port fail." under the request's
// title, "No respond.", "Return data fail.", the full table.
void sayNotice(const Notice& notice, OperatorDialogs& dialogs, Language language);

}  // namespace velmor
