#pragma once

#include "frame_row.h"
#include "operations.h"
#include "serial/port_list.h"

#include <QList>
#include <QObject>

#include <functional>

namespace velmor {

// A line worked on in a thread of its own: its port and its own copy of the
// module table, which the line's flows fill and read.
struct LineWork {
    PortEntry port;
    SetupState state;
};

// Runs `work` for every line at once, each in a thread of its own with an
// Operations of its own over the line's state and that port alone. A line
// says nothing itself: its flows keep their notices (Operations::keepNotices)
// for the front end to say once every line has ended. Returns when all have
// ended; the wait runs the event loop, so the window keeps painting. When
// `frontEnd` is abandoned (the window closing), every line ends after its
// exchange in flight. `setUp` runs in the line's thread before its work, to
// connect the line's objects to `context` (queued to its thread); the rows
// the lines log reach `frameLogged` the same way.
class LineThreads {
public:
    using Work = std::function<void(qsizetype line, Operations& operations)>;

    static void run(Operations& frontEnd, QList<LineWork>& lines, QObject* context,
                    const std::function<void(const FrameRow&)>& frameLogged, const Work& work);
};

}  // namespace velmor
