#pragma once

#include <string>

namespace launcher {

/// Splits an executable's path into its directory, without a "/" at the end, and its name, without one final ".exe".
/// Backslashes separate like slashes; separators at the end of the path do not count. Prints both parts.
void SplitExePath(const std::string& path, std::string& strStdDir, std::string& strStdExeName);

}  // namespace launcher
