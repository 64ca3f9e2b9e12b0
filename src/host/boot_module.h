#pragma once

#include <string>

#include "launcher/launch_context.h"

namespace launcher {

/// The file name of the module to host, "lib" + name + ".so", for dlopen(3) to find. The name is the first value of
/// "boot"; if that is missing or empty, the default module's name, reported on standard output.
[[nodiscard]] std::string GetBootModulePath(const LaunchContext& context);

}  // namespace launcher
