#include "host/module_mask.h"

#include "base/signals.h"
#include "host/forked_child.h"

namespace launcher {
namespace {

constinit thread_local const sigset_t* t_moduleMask = nullptr;

bool IsInUse() noexcept { return t_moduleMask != nullptr && !IsForkedChild(); }

}  // namespace

void UseModuleMask(const sigset_t& mask) noexcept { t_moduleMask = &mask; }

ModuleMaskOnStopThread::ModuleMaskOnStopThread() noexcept {
  if (!IsInUse()) return;
  // One may be pending on the thread and one on the process.
  while (TakePending(SIGPIPE)) continue;
  ::pthread_sigmask(SIG_SETMASK, t_moduleMask, &ownMask_);
}

ModuleMaskOnStopThread::~ModuleMaskOnStopThread() {
  if (IsInUse()) ::pthread_sigmask(SIG_SETMASK, &ownMask_, nullptr);
}

}  // namespace launcher
