#pragma once

#include <signal.h>

namespace launcher {

/// Makes `mask`, which has to live as long as the calling thread, what ModuleMaskOnStopThread sets there. For a thread
/// that blocks every signal.
void UseModuleMask(const sigset_t& mask) noexcept;

/// For the module's code: while one of these lives, its thread has the signal mask of UseModuleMask, so that what the
/// module starts inherits no other. Drops the SIGPIPE that the launcher's own lines have left pending. Does nothing on
/// other threads and in a forked child.
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
