#pragma once

#include "launcher/launch_context.h"

namespace launcher {

/// Start mode: registers the process, loads its service module and runs it. Returns the result of the module's
/// `Bootstrap`, which is the exit status. Ends the process with status -1 if the module cannot be hosted. Takes main's
/// own arguments. Main thread, once per process.
[[nodiscard]] int StartProcess(int argc, char** argv, const LaunchContext& context);

}  // namespace launcher
