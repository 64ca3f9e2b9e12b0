#pragma once

#include <string>

namespace launcher {

/// Whether the process `pid` carries `procName` in its command line, anywhere in it: 0 if it does; otherwise prints a
/// line and returns -1. A name with a line end in it is never found. Says nothing about a moment later.
[[nodiscard]] int VerifyProcNameByProcessID(const std::string& procName, int pid) noexcept;

}  // namespace launcher
