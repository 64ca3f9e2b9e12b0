#pragma once

#include <cstdint>

namespace launcher {

/// A number of this process, never 0, that no process which it is forked off or forks off has. Any thread, also in a
/// signal handler.
[[nodiscard]] std::uint64_t ThisProcess() noexcept;

}  // namespace launcher
