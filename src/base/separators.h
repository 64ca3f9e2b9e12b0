#pragma once

#include <string>

namespace launcher {

/// `path` with its backslashes turned into slashes, and without trailing ones.
[[nodiscard]] std::string NormalizeSeparators(std::string path);

}  // namespace launcher
