#pragma once

#include "launcher/launch_context.h"

namespace launcher {

/// Start mode: registers the process, loads its service module and runs it. The result is that of the module's
/// `Bootstrap`, and the exit status. Ends the process with status -1 where the module cannot be hosted. Takes main's
/// own arguments. Main thread, once each process.
[[nodiscard]] int StartProcess(int argc, char** argv, const LaunchContext& context);

}  // namespace launcher
