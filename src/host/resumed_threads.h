#pragma once

#include <cstdint>

namespace launcher {

// The threads that SIGTERM interrupted and that went on before their stop was answered. They are interrupted once more
// when it is, so that a loop around pause(2) looks at its condition again: a SIGTERM that is no stop.
//
// A handler cannot see from the signal whether it is an interruption or a stop. So only one interruption is on its way
// at a time, to a thread that is open to SIGTERM at that moment. After a second it counts as lost: at worst it is taken
// for a stop, which is better than a stop that is taken for it.

/// In the handler, on the interrupted thread: it goes on, though its stop is answered only when the count of progress
/// has come to `due`. Beyond 64 of these at a time, it is not interrupted again.
void RememberResumed(std::uint32_t due) noexcept;

/// In the handler, on the interrupted thread, at its end: takes back what is due at `progress`. The thread looks at its
/// condition anyway when it returns.
void ForgetResumed(std::uint32_t progress) noexcept;

/// In the handler: whether the signal is the calling thread's interruption and no stop. Says so once.
[[nodiscard]] bool TakeInterruption() noexcept;

/// On the stop thread: interrupts those that are due at `progress`. It leaves out those that are gone, and all while
/// SIGTERM has another action than our handler, which it would set off. Returns whether there are threads left that are
/// not open to SIGTERM now and have to be looked at again.
[[nodiscard]] bool InterruptResumed(std::uint32_t progress) noexcept;

}  // namespace launcher
