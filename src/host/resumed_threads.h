#pragma once

#include <cstdint>

namespace launcher {

// The threads that SIGTERM interrupted and that went on before their stop was answered. When it is, they are
// interrupted once more, so that a loop around pause(2) looks at its condition again: by a SIGTERM that is no stop.
// Each of them has a place:
//   state of the place   event                                            next state
//   free                 the thread goes on                               waits for its answer
//   waits for its answer the thread's handler runs, for another stop      free
//   waits for its answer the answer has come                              marked; then the interruption is sent
//   marked               the thread's handler runs                        free
//   marked               a later answer finds that the thread has ended   free
//
// The run that takes a mark counts as the interruption. A handler installed by signal(3) cannot see whether it is: if a
// stop has come first, the interruption becomes the stop, and the count is right either way. An answer that comes just
// before the thread goes on misses it, and the next one interrupts it without need. If it has ended by then and another
// thread has its id, that one counts a stop too many: rare, and a module bears to be stopped again.

/// How the calling thread left its handler the last time.
struct LastRun {
  bool wentOn;           // before the stop with `ticket` was answered
  bool wasInterrupted;   // and the interruption is on its way or here
  std::uint32_t ticket;  // with `wentOn`
};

/// In the handler, on the interrupted thread, at its beginning: returns what the thread left behind, and forgets it.
[[nodiscard]] LastRun TakeLastRun() noexcept;

/// In the handler, on the interrupted thread, at its end: the thread goes on, though the stop with `ticket` has not
/// been answered. Beyond 64 such threads at a time, it is not interrupted again.
void RememberResumed(std::uint32_t ticket) noexcept;

/// On the stop thread: sends their interruptions to the threads whose stops have been answered, up to that with the
/// ticket `answered`, and does not wait for them. Sends none while SIGTERM has another action than `handler`, which it
/// would set off. Forgets threads that have ended.
void InterruptResumed(std::uint32_t answered, void (*handler)(int)) noexcept;

/// Whether the stop with `ticket` is among those answered up to `answered`. Both counts wrap.
[[nodiscard]] constexpr bool IsAnswered(std::uint32_t ticket, std::uint32_t answered) noexcept {
  return static_cast<std::int32_t>(answered - ticket) >= 0;
}

}  // namespace launcher
