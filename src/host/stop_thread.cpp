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
#include "host/forked_child.h"
#include "host/module_mask.h"
#include "host/resumed_threads.h"
#include "host/signal_answer.h"

namespace launcher {
namespace {

using namespace std::chrono_literals;

constinit FutexWord g_requested{};  // stops handed over; each has the number that it made of this, its ticket
constinit FutexWord g_answered{};   // the ticket of the latest stop that has been answered
constinit std::atomic<bool> g_isCreated = false;
void (*g_handler)(int) = nullptr;
constinit thread_local Deadline t_mayWaitFrom = Deadline::min();  // the thread does not wait in its handler

// Returns whether the stop with `ticket` has been answered. Waits for that until `deadline`.
bool AwaitAnswer(std::uint32_t ticket, Deadline deadline) noexcept {
  std::uint32_t answered = g_answered;
  while (!IsAnswered(ticket, answered)) {
    if (!AwaitChange(g_answered, answered, deadline)) return false;
    answered = g_answered;
  }
  return true;
}

// The same for an interrupted thread, which may hold what the answer needs.
bool AwaitAnswerBriefly(std::uint32_t ticket) noexcept {
  const Deadline end = DeadlineIn(1s);
  do {
    if (AwaitAnswer(ticket, std::min(end, DeadlineIn(50ms)))) return true;
  } while (IsStopServiceRunning() && !HasPassed(end));
  return false;
}

void AwaitOrGoOn(std::uint32_t ticket) noexcept {
  if (!HasPassed(t_mayWaitFrom)) return RememberResumed(ticket);
  const bool answered = AwaitAnswerBriefly(ticket);
  // What has come while the thread waited interrupts it again before it has executed anything of its own.
  if (!answered || IsPending(SIGTERM)) t_mayWaitFrom = DeadlineIn(1s);
  if (!answered) RememberResumed(ticket);
}

void* RunStopThread(void* /*unused*/) noexcept {
  BecomeStopThread();
  for (;;) {
    if (!AwaitChange(g_requested, g_answered)) continue;
    AnswerSignal(SIGTERM);
    // A SIGTERM that StopService raised at its own thread would stay pending here for good. The process can take it.
    if (TakePending(SIGTERM)) ::kill(::getpid(), SIGTERM);
    InterruptResumed(IncrementAndWake(g_answered), g_handler);
  }
}

}  // namespace

void CreateStopThread(void (*handler)(int)) noexcept {
  NoticeForks();
  KeepStartMask();
  g_handler = handler;
  sigset_t everySignal;
  sigset_t inherited;
  sigfillset(&everySignal);
  ::pthread_sigmask(SIG_SETMASK, &everySignal, &inherited);  // The new thread inherits it.
  pthread_t thread{};
  g_isCreated = ::pthread_create(&thread, nullptr, RunStopThread, nullptr) == 0;
  ::pthread_sigmask(SIG_SETMASK, &inherited, nullptr);
}

bool HasStopThread() noexcept { return g_isCreated && !IsForkedChild(); }

bool LeaveToStopThread() noexcept {
  if (!HasStopThread()) return false;
  const LastRun last = TakeLastRun();
  if (last.wasInterrupted) return true;
  AdoptMask();
  const std::uint32_t answered = g_answered;
  const bool isUnanswered = last.wentOn && !IsAnswered(last.ticket, answered);
  // The stop behind the latest answer may have begun. Those after it have not.
  const bool isToBegin = isUnanswered && last.ticket != answered + 1;
  const std::uint32_t ticket = isToBegin ? last.ticket : IncrementAndWake(g_requested);
  if (isUnanswered) {
    RememberResumed(ticket);
  } else if (!IsStopThread()) {  // A StopService that unblocked SIGTERM must not wait for itself.
    AwaitOrGoOn(ticket);
  }
  return true;
}

void AwaitAcceptedStops(Deadline deadline) noexcept {
  if (HasStopThread() && !IsStopThread()) AwaitAnswer(g_requested, deadline);
}

}  // namespace launcher
