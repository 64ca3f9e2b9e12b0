#include "host/stop_thread.h"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>

#include "base/futex.h"
#include "base/signals.h"
#include "host/module_mask.h"
#include "host/resumed_threads.h"
#include "host/signal_answer.h"
#include "host/this_process.h"

namespace launcher {
namespace {

using namespace std::chrono_literals;

constinit FutexWord g_requested{};  // stops handed over; each has the number that it made of this, its ticket
constinit FutexWord g_answered{};   // the ticket of the latest stop that has been answered
constinit std::atomic<std::uint64_t> g_process{};  // the one whose stop thread could be created
constinit std::atomic<bool> g_dropsStops = false;
void (*g_handler)(int) = nullptr;
sigset_t g_startMask{};
constinit thread_local Deadline t_mayWaitFrom = Deadline::min();  // when the thread may wait in its handler again

// Returns whether the stop with `ticket` has been answered. Waits for that until `deadline`.
bool AwaitAnswer(std::uint32_t ticket, Deadline deadline) noexcept {
  for (std::uint32_t answered = g_answered; !IsAnswered(ticket, answered); answered = g_answered) {
    if (!AwaitChange(g_answered, answered, deadline)) return false;
  }
  return true;
}

// The same for an interrupted thread, which may hold what the answer needs, and may have waited just now.
bool AwaitAnswerBriefly(std::uint32_t ticket) noexcept {
  if (!HasPassed(t_mayWaitFrom)) return false;
  const Deadline end = DeadlineIn(1s);
  bool answered = false;
  do {
    answered = AwaitAnswer(ticket, std::min(end, DeadlineIn(50ms)));
  } while (!answered && IsStopServiceRunning() && !HasPassed(end));
  // What has come while the thread waited interrupts it again before it has executed anything of its own.
  if (!answered || IsPending(SIGTERM)) t_mayWaitFrom = DeadlineIn(1s);
  return answered;
}

void* RunStopThread(void* /*unused*/) noexcept {
  BecomeStopThread(g_startMask);
  for (;;) {
    if (!AwaitChange(g_requested, g_answered)) continue;
    if (!g_dropsStops) AnswerSignal(SIGTERM);
    // A SIGTERM that StopService raised at its own thread would stay pending here for good. The process can take it.
    if (TakePending(SIGTERM)) ::kill(::getpid(), SIGTERM);
    InterruptResumed(IncrementAndWake(g_answered), g_handler);
  }
}

}  // namespace

void CreateStopThread(void (*handler)(int)) noexcept {
  g_handler = handler;
  const sigset_t everySignal = EverySignal();
  ::pthread_sigmask(SIG_SETMASK, &everySignal, &g_startMask);  // The new thread begins with that.
  pthread_t thread{};
  if (::pthread_create(&thread, nullptr, RunStopThread, nullptr) == 0) g_process = ThisProcess();
  ::pthread_sigmask(SIG_SETMASK, &g_startMask, nullptr);
}

bool HasStopThread() noexcept { return g_process == ThisProcess(); }

bool LeaveToStopThread() noexcept {
  if (!HasStopThread()) return false;
  const LastRun last = TakeLastRun();
  if (last.wasInterrupted) return true;
  NoteInterruptedMask();
  const std::uint32_t answered = g_answered;
  const bool isUnanswered = last.wentOn && !IsAnswered(last.ticket, answered);
  // The stop behind the latest answer may have begun. Those after it have not.
  const bool isToBegin = isUnanswered && last.ticket != answered + 1;
  const std::uint32_t ticket = isToBegin ? last.ticket : IncrementAndWake(g_requested);
  // A StopService that unblocked SIGTERM must not wait for itself.
  if (!IsStopThread() && (isUnanswered || !AwaitAnswerBriefly(ticket))) RememberResumed(ticket);
  return true;
}

void AwaitStopsSoFar(Deadline deadline) noexcept {
  if (HasStopThread() && !IsStopThread()) AwaitAnswer(g_requested, deadline);
}

void DropStops() noexcept {
  if (HasStopThread()) g_dropsStops = true;
}

}  // namespace launcher
