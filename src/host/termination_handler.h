#pragma once

/// The process's handler of SIGTERM, which ProcFileManager::InstallSignalHandler installs. May run on any thread of the
/// process, at any point of it, and leaves `errno` alone.
extern "C" void handle_linux_signal(int signalNumber);

namespace launcher {

/// Everything that a signal sets off: says that it came and, for SIGTERM, calls the module's `StopService` and says so
/// when that fails. Uses stdio, the allocator and the loader, so it is for the stop thread; a signal handler calls it
/// only where there is no such thread.
void AnswerSignal(int signalNumber);

}  // namespace launcher
