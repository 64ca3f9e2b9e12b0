#pragma once

#include <chrono>

namespace launcher {

// For signal handlers too. They must not call std::chrono's now(): at its first call, the C++ library has the loader
// look clock_gettime(2) up. The loader's note that a thread is looking something up does not nest (glibc), so if the
// handler has interrupted such a look, another thread's dlopen(3) may miss that it has ended, and wait for ever.

/// A moment on CLOCK_MONOTONIC.
using Deadline = std::chrono::steady_clock::time_point;

/// The moment that is `time` from now.
[[nodiscard]] Deadline DeadlineIn(std::chrono::milliseconds time) noexcept;

/// Whether `deadline` has passed.
[[nodiscard]] bool HasPassed(Deadline deadline) noexcept;

}  // namespace launcher
