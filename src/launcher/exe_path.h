#pragma once

#include <string>

namespace launcher {

/// Splits an executable's path at its last separator into the directory and the name, and takes one final ".exe" off
/// the name. Backslashes separate like slashes; separators at the end of the path do not count. Prints both parts.
void SplitExePath(const std::string& path, std::string& strStdDir, std::string& strStdExeName);

}  // namespace launcher
