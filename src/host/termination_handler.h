#pragma once

/// The handler of SIGTERM, which ProcFileManager::InstallSignalHandler installs. It may run on any thread at any
/// moment, and preserves `errno`.
extern "C" void handle_linux_signal(int signalNumber);
