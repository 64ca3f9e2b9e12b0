#pragma once

#include <signal.h>

#include <initializer_list>

namespace launcher {

/// The set of these signals.
[[nodiscard]] sigset_t SignalSet(std::initializer_list<int> signalNumbers) noexcept;

/// The set of all signals.
[[nodiscard]] sigset_t EverySignal() noexcept;

/// Whether the signal is pending on the calling thread or the process. Also for signal handlers.
[[nodiscard]] bool IsPending(int signalNumber) noexcept;

/// Removes the signal if it is pending on the calling thread or the process, and returns whether it was. The calling
/// thread must block it.
bool TakePending(int signalNumber) noexcept;

}  // namespace launcher
