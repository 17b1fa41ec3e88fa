#pragma once

namespace velmor::testing {

// Delivers every event posted so far (queued signals, deferred deletes) and
// whatever the window system or a descriptor has ready now, without waiting
// for anything new; a signal already on its way has been heard afterwards.
void drainEvents();

}  // namespace velmor::testing
