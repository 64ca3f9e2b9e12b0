#pragma once

namespace launcher {

/// Prints that the signal has come. If it is SIGTERM, calls the module's `StopService`, and prints a line if that
/// fails. Flushes standard output before the call and at the end. Ends the process with status -1 if the module cannot
/// be opened or has no `StopService`. A child that was forked off within `StopService` and returns from it ends there,
/// with its result as by _exit(2). For the stop thread; a signal handler calls it only where there is none.
void AnswerSignal(int signalNumber);

/// Whether `StopService` runs at this moment. Any thread, also in a signal handler.
[[nodiscard]] bool IsStopServiceRunning() noexcept;

}  // namespace launcher
