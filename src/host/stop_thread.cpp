#include "host/stop_thread.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>

#include "base/futex.h"
#include "base/signals.h"
#include "host/resumed_threads.h"
#include "host/termination_handler.h"
#include "host/thread_status.h"

namespace launcher {
namespace {

using namespace std::chrono_literals;

// Of an answer. A power of two of them, so that the count may wrap.
enum Phase : std::uint32_t { kBefore, kInStopService, kAfter, kPhases = 4 };

constinit Word g_requested{};  // stops handed over; each has the number that it made of this, its ticket
constinit Word g_progress{};   // kPhases for each stop answered, and the Phase of the next
constinit std::atomic<pid_t> g_stopThread{};
constinit std::atomic<pid_t> g_process{};  // the process that has a stop thread; 0 in its children
sigset_t g_moduleMask{};
constinit thread_local bool t_isStopThread = false;

// A child may have its parent's id, in a pid namespace of its own; one that was not made by fork(3) runs no handlers of
// pthread_atfork(3). One of the two tells, but for a child that is both.
bool HasStopThread() noexcept { return g_process == ::getpid(); }

bool IsStopThread() noexcept { return t_isStopThread && HasStopThread(); }

Deadline In(std::chrono::milliseconds time) noexcept { return std::chrono::steady_clock::now() + time; }

bool IsAnswered(std::uint32_t ticket, std::uint32_t progress) noexcept {
  return static_cast<std::int32_t>(progress - kPhases * ticket) >= 0;
}

// On the interrupted thread, in its signal handler. False: it has to go on without.
bool AwaitAnswer(std::uint32_t ticket) noexcept {
  const Deadline end = In(1s);
  std::uint32_t progress = g_progress;
  while (!IsAnswered(ticket, progress)) {
    const bool inStopService = progress % kPhases == kInStopService;
    if (!AwaitChange(g_progress, progress, inStopService ? end : std::min(end, In(100ms)))) return false;
    progress = g_progress;
  }
  return true;
}

void AnswerNext(std::uint32_t ticket) noexcept {
  AnswerSignal(SIGTERM);
  if (!HasStopThread()) std::_Exit(0);  // A process that an initialiser forked off, and that returned from it.
  // A SIGTERM that StopService raised at its own thread would stay pending here for good. The process can take it.
  if (TakePending(SIGTERM)) ::kill(::getpid(), SIGTERM);
  g_progress = kPhases * ticket;
  WakeAll(g_progress);
}

void* RunStopThread(void* /*unused*/) noexcept {
  t_isStopThread = true;
  g_stopThread = ::gettid();
  for (std::uint32_t answered = 0;;) {
    if (g_requested != answered) AnswerNext(++answered);
    const bool lookAgain = InterruptResumed(g_progress);
    AwaitChange(g_requested, answered, lookAgain ? In(100ms) : Deadline::max());
  }
}

}  // namespace

void CreateStopThread() noexcept {
  ::pthread_sigmask(SIG_SETMASK, nullptr, &g_moduleMask);
  sigaddset(&g_moduleMask, SIGTERM);
  sigset_t everySignal;
  sigfillset(&everySignal);
  // None of these calls but the creation can fail with what they are given, except for want of memory.
  ::pthread_atfork(nullptr, nullptr, [] { g_process = 0; });
  pthread_attr_t attributes;
  ::pthread_attr_init(&attributes);
  ::pthread_attr_setsigmask_np(&attributes, &everySignal);
  pthread_t thread{};
  if (::pthread_create(&thread, &attributes, RunStopThread, nullptr) == 0) g_process = ::getpid();
  ::pthread_attr_destroy(&attributes);
}

bool HandOverStop() noexcept {
  if (!HasStopThread()) return false;
  if (TakeInterruption()) return true;
  const std::uint32_t ticket = Increment(g_requested);
  // A StopService that unblocked SIGTERM may find itself here, on the stop thread, which must not wait for itself.
  if (!IsStopThread() && !AwaitAnswer(ticket)) RememberResumed(kPhases * ticket);
  ForgetResumed(g_progress);  // After it was remembered: the stop may have been answered in between.
  return true;
}

int RunStopService(decltype(&StopService) stopService) {
  if (!IsStopThread()) return stopService();
  const ModuleMask mask;
  Increment(g_progress);
  const int result = stopService();
  if (!HasStopThread()) std::_Exit(result);
  Increment(g_progress);
  return result;
}

ModuleMask::ModuleMask() noexcept {
  if (!IsStopThread()) return;
  // A line of ours into a closed pipe leaves SIGPIPE pending here, which would end the process as soon as unblocked.
  while (TakePending(SIGPIPE)) continue;
  ::pthread_sigmask(SIG_SETMASK, &g_moduleMask, &ownMask_);
}

ModuleMask::~ModuleMask() {
  if (IsStopThread()) ::pthread_sigmask(SIG_SETMASK, &ownMask_, nullptr);
}

void AwaitAcceptedStops() noexcept {
  while (HasStopThread() && !t_isStopThread) {
    const std::uint32_t progress = g_progress;
    if (progress == kPhases * g_requested) return;
    AwaitChange(g_progress, progress, In(100ms));
    // Whoever calls exit(3) with a lock in its hands that the stop needs would wait for ever. Since glibc 2.41 exit(3)
    // has one itself, which StopService needs to call it too.
    if (IsBlockedByCaller(g_stopThread)) return;
  }
}

void AwaitEndOfOtherThreads() noexcept {
  while (CountThreads() != (HasStopThread() ? 2 : 1)) ::usleep(100'000);
}

}  // namespace launcher
