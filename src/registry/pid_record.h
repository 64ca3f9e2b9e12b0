#pragma once

#include <string>

namespace launcher {

// A pid record is a file that holds one process id as decimal digits and nothing else. These functions read and write
// it and print nothing. They report no failure: a record that cannot be written is missing or empty, and one that
// cannot be read holds 0. They do not block on a FIFO or a device in a record's place.

/// `pidDir` (empty, or ending in "/") + `procName` + "_" + `procHandle` in decimal + ".pid".
[[nodiscard]] std::string PidRecordPath(const std::string& pidDir, const std::string& procName, int procHandle);

/// Creates the file with mode 0666 less the umask, or empties the existing one, and writes `pid` into it, completely or
/// not at all.
void WritePidRecord(const std::string& path, int pid);

/// The NearestInt of the file; 0 if it has 64 KiB or more, and while another process is rewriting it.
[[nodiscard]] int ReadPidRecord(const std::string& path);

}  // namespace launcher
