#pragma once

#include <string>

#include "launcher/launch_context.h"

namespace launcher {

/// The file name of the module to host: "lib" + the first value of "boot" + ".so", as dlopen(3) will search it. With no
/// such value, or an empty one, that of the default module, which is said on standard output.
[[nodiscard]] std::string GetBootModulePath(const LaunchContext& context);

}  // namespace launcher
