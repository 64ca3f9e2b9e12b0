#pragma once

namespace launcher {

/// Prints that the signal has come. If it is SIGTERM, calls the module's `StopService`, and prints a line if that
/// fails. Flushes standard output before the call and at the end. Ends the process with status -1 if the module cannot
/// be opened or has no `StopService`. A process that was forked off within the call and returns from `StopService` ends
/// there, with its result as by _exit(2). Uses stdio, the allocator and the loader, so it is for the stop thread; the
/// signal handler calls it only if there is no such thread.
void AnswerSignal(int signalNumber);

/// Whether `StopService` runs at this moment. Any thread, also in a signal handler.
[[nodiscard]] bool IsStopServiceRunning() noexcept;

}  // namespace launcher
