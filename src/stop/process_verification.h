#pragma once

#include <string>

namespace launcher {

/// Checks whether the command line of process `pid` contains `procName`: 0 if it does; otherwise prints a line and
/// returns -1. A name that contains a line end is never found. The result may be out of date a moment later.
[[nodiscard]] int VerifyProcNameByProcessID(const std::string& procName, int pid) noexcept;

}  // namespace launcher
