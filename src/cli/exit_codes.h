#pragma once

namespace velmor::cli {

enum ExitCode : int {
    kExitDone = 0,
    kExitExchangeFailed = 1,  // no reply, or a reply that was refused
    kExitUsage = 2,           // bad arguments, or a refusal
    kExitPortFailed = 3,      // the port would not open
    kExitFileFailed = 4,      // a file (configuration, frame log) could not be read or written
};

}  // namespace velmor::cli
