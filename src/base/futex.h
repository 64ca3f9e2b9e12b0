#pragma once

#include <atomic>
#include <cstdint>

#include "base/deadline.h"

namespace launcher {

/// A word to wait at, which signal handlers may use too: all of this is system calls and lock-free operations, where
/// std::atomic has no timed wait and its untimed one makes no promise for handlers. May change `errno`.
using FutexWord = std::atomic<std::uint32_t>;

/// Waits until `word` differs from `seen` and returns true. Returns false when `deadline` has passed, or when the
/// kernel refuses to wait.
bool AwaitChange(FutexWord& word, std::uint32_t seen, Deadline deadline = Deadline::max()) noexcept;

/// Adds one to `word`, wakes all who wait for a change of it, and returns its new value.
std::uint32_t IncrementAndWake(FutexWord& word) noexcept;

}  // namespace launcher
