#pragma once

#include <signal.h>

namespace launcher {

// On the stop thread, the module's code runs with the signal mask that it would have in the signal handler. What the
// module blocks on all of its threads, to take it by sigwait(3) or signalfd(2), would otherwise be delivered here.

/// Keeps the calling thread's mask as that of the start. Before the first AdoptMask.
void KeepStartMask() noexcept;

/// In the handler, on the interrupted thread, before its stop is handed over: what that thread blocks, and what the
/// mask of the start does, is from now on the mask of the module's code. Of several such threads, any may determine it.
void AdoptMask() noexcept;

/// Makes the calling thread, which has to block every signal, the stop thread.
void BecomeStopThread() noexcept;

/// Whether the calling thread is the stop thread, or its copy in a forked child. Also in a signal handler.
[[nodiscard]] bool IsStopThread() noexcept;

/// For the module's code: while one of these lives, the stop thread has the mask of the latest AdoptMask. Drops the
/// SIGPIPE that the launcher's own lines have left pending. Does nothing on other threads and in a forked child.
class ModuleMaskOnStopThread {
 public:
  ModuleMaskOnStopThread() noexcept;
  ModuleMaskOnStopThread(const ModuleMaskOnStopThread&) = delete;
  ModuleMaskOnStopThread& operator=(const ModuleMaskOnStopThread&) = delete;
  ~ModuleMaskOnStopThread();

 private:
  sigset_t ownMask_{};
};

}  // namespace launcher
