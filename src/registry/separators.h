#pragma once

#include <string>

namespace launcher {

/// `path` with slashes in place of its backslashes, and without those at its end.
[[nodiscard]] std::string NormalizeSeparators(std::string path);

}  // namespace launcher
