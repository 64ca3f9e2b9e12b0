#pragma once

#include "base/deadline.h"

namespace launcher {

// To stop a service means to print, to allocate, to call the dynamic loader and to run the module's own code. A signal
// handler may do none of it: the code that it interrupted may hold the lock of standard output, the allocator's, the
// loader's or one of the module's, and cannot give it back before the handler returns (signal-safety(7)). So the
// handler only hands the stop over, and a thread of our own answers it, which interrupts nobody. It promises:
//
// - Every stop handed over is answered once, in the order of the signals, up to DropStops.
// - The interrupted thread waits in its handler for the answer, so that the code which it returns to sees what
//   `StopService` did. It may hold a lock that the answer needs, which nobody can know. So it goes on after a second,
//   and after a twentieth of one while no `StopService` runs: the launcher itself takes locks for microseconds only.
//   When its stop has been answered, it is interrupted once more (resumed_threads.h).
// - However many signals come, the interrupted thread has time of its own, if the kernel leaves it any. One that went
//   on does not wait again before its stop has been answered. Nor does it within the next second, as one for which more
//   has come while it waited. What comes to a thread that went on counts as the stop that it has handed over, as long
//   as that one is still to begin: the kernel's own pending signals are merged in the same way.
// - No signal is blocked on any other thread, and none but SIGPIPE is lost on this one: the launcher's lines into a
//   closed pipe do not end a service that is yet to be stopped.

/// Creates the thread, which from then on calls AnswerSignal for each stop handed over. `handler` is the signal handler
/// that calls LeaveToStopThread. Once each process, on the main thread, before the first LeaveToStopThread. If the
/// thread cannot be created, the signal handler answers: better than no service.
void CreateStopThread(void (*handler)(int)) noexcept;

/// Whether the stop thread is in this process: it could be created, and this is no forked child. Any thread, also in a
/// signal handler.
[[nodiscard]] bool HasStopThread() noexcept;

/// Leaves the SIGTERM whose handler calls this to the stop thread: hands the stop over, unless the signal was no stop
/// but that thread's own interruption. False: there is no stop thread in this process, and the caller has to answer
/// itself. Makes no call that is unsafe in a signal handler, and may change `errno`.
[[nodiscard]] bool LeaveToStopThread() noexcept;

/// Waits until the stops that have been handed over by now are answered, or until `deadline` has passed. Those that
/// come meanwhile may have no end. Returns at once where nobody else would answer: on the stop thread, or without one.
void AwaitStopsSoFar(Deadline deadline = Deadline::max()) noexcept;

/// From now on, a stop that is still to begin counts as answered: no `StopService` is called for it.
void DropStops() noexcept;

}  // namespace launcher
