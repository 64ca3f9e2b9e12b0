#pragma once

#include <cstdint>

namespace launcher {

// The threads that SIGTERM interrupted and that went on before their stop was answered. They are interrupted once more
// when it is, so that a loop around pause(2) looks at its condition again: a SIGTERM that is no stop.
//
// Whether a SIGTERM is such an interruption its handler cannot see from the signal itself. So there is one on its way
// at a time, only to a thread that is open to it at that moment, and what has not been taken within a second is given
// up: at worst an interruption passes for a stop, and never a stop for an interruption.

/// In the handler, on the interrupted thread: it goes on, though stop number `ticket` is not answered yet. Beyond 64
/// such threads at a time, it is not interrupted again.
void RememberResumed(std::uint32_t ticket) noexcept;

/// In the handler, on the interrupted thread: takes that back, where the stop has been answered in this moment.
void ForgetResumed(std::uint32_t ticket) noexcept;

/// In the handler: whether the signal is the calling thread's interruption and no stop. Says so once.
[[nodiscard]] bool TakeInterruption() noexcept;

/// On the stop thread: interrupts those whose stop is among the first `answered`. It leaves out those that are gone,
/// and all while SIGTERM has another action than our handler, which it would set off. Returns whether there are threads
/// left that are not open to SIGTERM now and have to be looked at again.
[[nodiscard]] bool InterruptResumed(std::uint32_t answered) noexcept;

}  // namespace launcher
