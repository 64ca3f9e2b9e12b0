#include "base/separators.h"

#include <algorithm>

namespace launcher {

std::string NormalizeSeparators(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  path.erase(path.find_last_not_of('/') + 1);
  return path;
}

}  // namespace launcher
