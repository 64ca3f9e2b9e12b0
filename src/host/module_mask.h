#pragma once

#include <signal.h>

namespace launcher {

// On the stop thread, the module's code runs with the signal mask that it would have in the signal handler. What the
// module blocks on all of its threads, to take it by sigwait(3) or signalfd(2), would otherwise be delivered here.

/// In the handler, on the interrupted thread, before its stop is handed over: what is blocked here will be blocked for
/// the module's code. Of several such threads, any may be the one that counts.
void NoteInterruptedMask() noexcept;

/// Makes the calling thread, which has to block every signal, the stop thread of this process. What `startMask` blocks
/// is always blocked for the module's code; it has to live as long as the thread.
void BecomeStopThread(const sigset_t& startMask) noexcept;

/// Whether the calling thread is the stop thread of this process. Also in a signal handler.
[[nodiscard]] bool IsStopThread() noexcept;

// Around the module's code; both do nothing on other threads than the stop thread.

/// Sets the mask for the module's code. Drops the SIGPIPE that the launcher's own lines have left pending.
void SetModuleMask() noexcept;

/// Blocks every signal again.
void BlockEverySignal() noexcept;

}  // namespace launcher
