#pragma once

#include "launcher/launch_context.h"

namespace launcher {

/// Stop mode: sends SIGTERM to the process that is registered under the context's identity, if its command line still
/// contains that name. Returns 0 always, which is the exit status: the lines on standard output tell what was done.
/// Takes main's own arguments and does not use them. Main thread, once per process.
[[nodiscard]] int StopProcess(int argc, char** argv, const LaunchContext& context);

}  // namespace launcher
