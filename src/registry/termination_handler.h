#pragma once

/// The process's handler of SIGTERM. Declared down here because the registry installs it and the host, which is built
/// on the registry, defines it (host/termination_handler.cpp).
/// May run on any thread of the process, at any point of it, and leaves `errno` alone.
extern "C" void handle_linux_signal(int signalNumber);
