#pragma once

#include <string>

namespace launcher {

/// The directory of the pid records, from the environment: `NORV_ROOT` + "/var/oss_tmp/", or else `_APP_SHARE_DIR` +
/// "/". A variable that is set but empty counts as set. In its value, backslashes become slashes, and trailing ones are
/// dropped. The result ends in "/"; the directory may not exist. If neither variable is set, the result is empty, and
/// records are in the working directory.
/// Prints the directory, or an error line if neither is set. Main thread only: getenv(3) races with setenv(3).
[[nodiscard]] std::string GetPidDir();

}  // namespace launcher
