#include "host/module_mask.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstddef>

#include "base/signals.h"
#include "host/forked_child.h"

namespace launcher {
namespace {

using Words = std::array<unsigned long, sizeof(sigset_t) / sizeof(unsigned long)>;

constinit Words g_startMask{};
// By words, as handlers may write it on several threads at a time: a mixture of two masks is as good as either.
constinit std::array<std::atomic<unsigned long>, Words().size()> g_moduleMask{};
constinit thread_local bool t_isStopThread = false;

Words CurrentMask() noexcept {
  sigset_t mask = SignalSet({});
  ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
  return std::bit_cast<Words>(mask);
}

sigset_t ModuleMask() noexcept {
  Words words;
  std::copy(g_moduleMask.begin(), g_moduleMask.end(), words.begin());
  return std::bit_cast<sigset_t>(words);
}

bool IsInUse() noexcept { return t_isStopThread && !IsForkedChild(); }

}  // namespace

void KeepStartMask() noexcept { g_startMask = CurrentMask(); }

void AdoptMask() noexcept {
  const Words mask = CurrentMask();
  for (std::size_t i = 0; i < mask.size(); ++i) g_moduleMask[i] = mask[i] | g_startMask[i];
}

void BecomeStopThread() noexcept { t_isStopThread = true; }

bool IsStopThread() noexcept { return t_isStopThread; }

ModuleMaskOnStopThread::ModuleMaskOnStopThread() noexcept {
  if (!IsInUse()) return;
  // One may be pending on the thread and one on the process.
  while (TakePending(SIGPIPE)) continue;
  const sigset_t mask = ModuleMask();
  ::pthread_sigmask(SIG_SETMASK, &mask, &ownMask_);
}

ModuleMaskOnStopThread::~ModuleMaskOnStopThread() {
  if (IsInUse()) ::pthread_sigmask(SIG_SETMASK, &ownMask_, nullptr);
}

}  // namespace launcher
