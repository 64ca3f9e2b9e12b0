#include "host/resumed_threads.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace launcher {
namespace {

// Aligned for atomic access, which Clang would otherwise leave to a library.
struct alignas(8) Resumed {
  pid_t thread;  // its kernel id; 0: nobody; negative: the interruption has been sent
  std::uint32_t ticket;
};
using Place = std::atomic<Resumed>;
static_assert(Place::is_always_lock_free, "signal handlers use it");

constinit std::array<Place, 64> g_places{};
constinit Place g_nowhere{};  // always free
// Whose place it is cannot be told by a thread's id, which a later thread may get again.
constinit thread_local Place* t_place = &g_nowhere;

bool Replace(Place& place, Resumed from, Resumed to) noexcept { return place.compare_exchange_strong(from, to); }

bool IsActionOfTermination(void (*handler)(int)) noexcept {
  struct sigaction current {};
  return ::sigaction(SIGTERM, nullptr, &current) == 0 && current.sa_handler == handler;
}

// Returns false if a stop has taken the mark, but the interruption, which was to become that stop, could not be sent.
// Signal 0 only tells whether the thread is still there (kill(2)).
bool Send(int signalNumber, Place& place, Resumed resumed) noexcept {
  const Resumed sent{-std::abs(resumed.thread), resumed.ticket};
  if (!Replace(place, resumed, sent) || ::tgkill(::getpid(), -sent.thread, signalNumber) == 0) return true;
  return Replace(place, sent, errno == ESRCH ? Resumed{} : resumed) || signalNumber == 0;
}

}  // namespace

LastRun TakeLastRun() noexcept {
  const Resumed last = std::exchange(t_place, &g_nowhere)->exchange({});
  return {last.thread != 0, last.thread < 0, last.ticket};
}

void RememberResumed(std::uint32_t ticket) noexcept {
  const Resumed resumed{::gettid(), ticket};
  for (Place& place : g_places) {
    if (!Replace(place, {}, resumed)) continue;
    t_place = &place;
    return;
  }
}

void ForgetResumed() noexcept {
  const Resumed resumed = *t_place;
  if (resumed.thread > 0 && Replace(*t_place, resumed, {})) t_place = &g_nowhere;
}

void InterruptResumed(std::uint32_t answered, Word& requested, void (*handler)(int)) noexcept {
  if (!IsActionOfTermination(handler)) return;
  for (Place& place : g_places) {
    const Resumed resumed = place;
    if (resumed.thread == 0 || !IsAnswered(resumed.ticket, answered)) continue;
    if (!Send(resumed.thread > 0 ? SIGTERM : 0, place, resumed)) Increment(requested);
  }
}

}  // namespace launcher
