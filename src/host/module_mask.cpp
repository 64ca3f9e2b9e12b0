#include "host/module_mask.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>

#include "base/signals.h"
#include "host/this_process.h"

namespace launcher {
namespace {

using Words = std::array<unsigned long, sizeof(sigset_t) / sizeof(unsigned long)>;

// By words, as handlers may write it on several threads at a time: a mixture of two masks is as good as either.
constinit std::array<std::atomic<unsigned long>, Words().size()> g_interrupted{};
constinit thread_local const sigset_t* t_startMask = nullptr;
constinit thread_local std::uint64_t t_stopThreadOf = 0;  // the process, on its stop thread

}  // namespace

void NoteInterruptedMask() noexcept {
  sigset_t mask = SignalSet({});
  ::pthread_sigmask(SIG_BLOCK, nullptr, &mask);
  sigaddset(&mask, SIGTERM);  // A handler of the module's own may have called this one.
  std::ranges::copy(std::bit_cast<Words>(mask), g_interrupted.begin());
}

void BecomeStopThread(const sigset_t& startMask) noexcept {
  t_startMask = &startMask;
  t_stopThreadOf = ThisProcess();
}

bool IsStopThread() noexcept { return t_stopThreadOf == ThisProcess(); }

void SetModuleMask() noexcept {
  if (!IsStopThread()) return;
  // One may be pending on the thread and one on the process.
  while (TakePending(SIGPIPE)) continue;
  Words words;
  std::copy(g_interrupted.begin(), g_interrupted.end(), words.begin());
  auto mask = std::bit_cast<sigset_t>(words);
  sigorset(&mask, &mask, t_startMask);
  ::pthread_sigmask(SIG_SETMASK, &mask, nullptr);
}

void BlockEverySignal() noexcept {
  const sigset_t everySignal = EverySignal();
  if (IsStopThread()) ::pthread_sigmask(SIG_SETMASK, &everySignal, nullptr);
}

}  // namespace launcher
