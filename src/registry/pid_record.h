#pragma once

#include <string>

namespace launcher {

/// A pid record is a file that holds one process id as decimal digits and nothing else. These are its reads and writes
/// without their messages. No file system failure is reported: a record that cannot be written is not there, one that
/// cannot be read holds 0. Neither waits: a FIFO or a device in a record's place is opened without blocking.

/// `pidDir` (empty, or ending in "/") + `procName` + "_" + `procHandle` in decimal + ".pid".
[[nodiscard]] std::string PidRecordPath(const std::string& pidDir, const std::string& procName, int procHandle);

/// Creates the file with mode 0666 less the umask, or empties the one that is there, and writes `pid` into it.
void WritePidRecord(const std::string& path, int pid);

/// The number at the start of the file, as DecimalReader reads it: white space before it and anything after it do not
/// matter, and one beyond 32 bits is read as the nearest.
[[nodiscard]] int ReadPidRecord(const std::string& path);

}  // namespace launcher
