#pragma once

namespace launcher {

/// Opens /dev/null, or the root directory if that is missing, on each of the descriptors 0, 1 and 2 that is closed.
/// Otherwise a module's first file would get such a number, and the launcher's lines would go into that file. Call it
/// before anything else opens a file.
void OpenStandardDescriptors() noexcept;

}  // namespace launcher
