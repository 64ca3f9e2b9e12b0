#pragma once

#include <string>

namespace launcher {

/// The directory that holds the pid records, from the environment: `NORV_ROOT` + "/var/oss_tmp/", or else
/// `_APP_SHARE_DIR` + "/". A variable that is set but empty counts as set. Backslashes become slashes and those at the
/// end of the variable's value are dropped. The result ends in "/" and is not checked to exist; with neither variable
/// set it is empty, which makes records relative to the working directory.
/// Prints the directory, or the error line when neither is set. Main thread only: getenv(3) races with setenv(3).
[[nodiscard]] std::string GetPidDir();

}  // namespace launcher
