#pragma once

#include "launcher/launch_context.h"

namespace launcher {

/// Stop mode: sends SIGTERM to the process that is registered under the context's identity, after a look at whether it
/// still is that process. The result is always 0, and the exit status: the lines on standard output tell how it went.
/// Takes main's own arguments, and uses none. Main thread, once each process.
[[nodiscard]] int StopProcess(int argc, char** argv, const LaunchContext& context);

}  // namespace launcher
