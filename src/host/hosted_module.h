#pragma once

#include <launcher/service_module.h>

#include <string>

namespace launcher {

// What these find stays open until the process ends. Whatever is missing ends the process with status -1, after a line
// that tells it. Any thread.

/// Opens the service module at `path`, as dlopen(3) finds it. One that is open already is not loaded again.
[[nodiscard]] void* OpenServiceModule(const std::string& path);

/// The `Bootstrap` of the module, which was opened at `path`.
[[nodiscard]] decltype(&Bootstrap) FindBootstrap(void* module, const std::string& path);

/// The `StopService` of the module, which was opened at `path`.
[[nodiscard]] decltype(&StopService) FindStopService(void* module, const std::string& path);

}  // namespace launcher
