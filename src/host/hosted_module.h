#pragma once

#include <launcher/service_module.h>

#include <string>

namespace launcher {

/// Opens the service module at `path`, as dlopen(3) finds it, and leaves it open until the process ends. A module that
/// is open already is not loaded again. When it cannot be opened, prints the loader's reason and ends the process with
/// status -1. Any thread.
[[nodiscard]] void* OpenServiceModule(const std::string& path);

/// Opens the module at `path` and returns its `Bootstrap`. Ends the process with status -1 if the module cannot be
/// opened or has no such function. Main thread.
[[nodiscard]] decltype(&Bootstrap) FindBootstrap(const std::string& path);

/// Looks up the module's `StopService`, calls it and returns its result. Prints each step, and flushes standard output
/// before the call. Ends the process with status -1 if the module cannot be opened or has no `StopService`. For the
/// stop thread, or for the signal handler if there is no such thread.
[[nodiscard]] int CallStopService();

}  // namespace launcher
