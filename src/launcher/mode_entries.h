#pragma once

#include "launcher/launch_context.h"

namespace launcher {

/// What `main` calls for each mode, with its own arguments; the result is the exit status. Declared down here so that
/// this folder needs nothing of those that supply them. Main thread, once each process.

/// Registers the process, loads its service module and runs it: the result is that of the module's `Bootstrap`. Ends
/// the process with status -1 when the module cannot be hosted. Supplied by host/start_process.cpp.
[[nodiscard]] int StartProcess(int argc, char** argv, const LaunchContext& context);

/// Sends SIGTERM to the process registered under the context's identity, after a look at whether it still is that
/// process. Always 0: the lines on standard output tell how it went. Supplied by stop/stop_process.cpp.
[[nodiscard]] int StopProcess(int argc, char** argv, const LaunchContext& context);

}  // namespace launcher
