#pragma once

/// The handler of SIGTERM, which ProcFileManager::InstallSignalHandler installs. It may run on any thread at any
/// moment, and preserves `errno`.
extern "C" void handle_linux_signal(int signalNumber);

namespace launcher {

/// Prints that the signal has come. If it is SIGTERM, calls the module's `StopService`, and prints a line if that
/// fails. Uses stdio, the allocator and the loader, so it is for the stop thread; the signal handler calls it only if
/// there is no such thread.
void AnswerSignal(int signalNumber);

}  // namespace launcher
