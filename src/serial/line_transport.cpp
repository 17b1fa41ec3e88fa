#include "line_transport.h"

namespace velmor {

LineTransport::~LineTransport() = default;

}  // namespace velmor
