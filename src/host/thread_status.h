#pragma once

#include <sys/types.h>

#include <cstdint>

namespace launcher {

// What the process file system tells of the threads of this process (proc(5)).

/// Whether a SIGTERM would now interrupt a system call of the thread and reach its handler: the thread sleeps in one,
/// neither blocks the signal nor has one pending, and does not wait for it in sigtimedwait(2). True where the system
/// does not tell.
[[nodiscard]] bool IsOpenToTermination(pid_t thread) noexcept;

/// Whether the thread waits for a lock that the calling thread holds: one of the C library, or a mutex. False where the
/// system does not tell.
[[nodiscard]] bool IsBlockedByCaller(pid_t thread) noexcept;

/// How many threads this process has. 0 where the system does not tell.
[[nodiscard]] std::uint64_t CountThreads() noexcept;

}  // namespace launcher
