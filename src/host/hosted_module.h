#pragma once

#include <launcher/service_module.h>

#include <string>

namespace launcher {

/// Opens the service module at `path`, as dlopen(3) finds it, and leaves it open until the process ends. A module that
/// is open already is not loaded again. When it cannot be opened, prints the loader's reason and ends the process with
/// status -1. Any thread.
[[nodiscard]] void* OpenServiceModule(const std::string& path);

/// The `Bootstrap` of the module at `path`, which is opened for it. Ends the process with status -1 where that fails,
/// or where the module has no such function. Main thread.
[[nodiscard]] decltype(&Bootstrap) FindBootstrap(const std::string& path);

/// Finds the module's `StopService` anew, calls it and returns its result. Prints the steps, and ends the process with
/// status -1 where the module cannot be opened or has no `StopService`. Standard output is flushed before the call.
/// Runs on the stop thread, or in the signal handler where that thread is missing.
[[nodiscard]] int CallStopService();

}  // namespace launcher
