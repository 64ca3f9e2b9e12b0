#pragma once

#include <cstdint>

namespace launcher {

/// A number of this process, never 0, that no process which it is forked off or forks off has. (But for a child by
/// clone(2) itself that is process 1 of another pid namespace, as this one is.) Any thread, also in a signal handler.
[[nodiscard]] std::uint64_t ThisProcess() noexcept;

}  // namespace launcher
