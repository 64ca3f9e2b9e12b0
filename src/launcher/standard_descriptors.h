#pragma once

namespace launcher {

/// Opens /dev/null on those of the descriptors 0, 1 and 2 that are closed, or the root directory where there is no
/// /dev/null. Otherwise the first file that a module opens would get such a number, and the launcher's lines with it.
/// Comes before anything else opens a file.
void OpenStandardDescriptors() noexcept;

}  // namespace launcher
