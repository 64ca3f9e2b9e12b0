#pragma once

#include <sys/types.h>

#include <cstdint>

namespace launcher {

// What the process file system tells of the threads of this process (proc(5)). Where it is not mounted, or tells
// nothing of a thread, each answer is false or 0.

/// Whether a SIGTERM would not reach the thread's handler now: it blocks the signal, or takes it by sigtimedwait(2).
[[nodiscard]] bool IsClosedToTermination(pid_t thread) noexcept;

/// Whether the thread waits for a lock of the C library that the calling thread holds.
[[nodiscard]] bool IsBlockedByCaller(pid_t thread) noexcept;

/// How many threads this process has.
[[nodiscard]] std::uint64_t CountThreads() noexcept;

}  // namespace launcher
