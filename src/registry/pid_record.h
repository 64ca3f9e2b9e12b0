#pragma once

#include <string>

namespace launcher {

// A pid record is a file that holds one process id as decimal digits and nothing else. These are its reads and writes
// without their messages. No file system failure is reported: a record that cannot be written is not there or empty,
// one that cannot be read holds 0. Neither waits: a FIFO or a device in a record's place is opened without blocking.

/// `pidDir` (empty, or ending in "/") + `procName` + "_" + `procHandle` in decimal + ".pid".
[[nodiscard]] std::string PidRecordPath(const std::string& pidDir, const std::string& procName, int procHandle);

/// Creates the file with mode 0666 less the umask, or empties the one that is there, and writes `pid` into it: all of
/// it or nothing.
void WritePidRecord(const std::string& path, int pid);

/// The NearestInt of what one read(2) gives, which is all of a file up to 64 KiB; 0 while the record is being
/// rewritten.
[[nodiscard]] int ReadPidRecord(const std::string& path);

}  // namespace launcher
