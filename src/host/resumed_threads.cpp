#include "host/resumed_threads.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "base/futex.h"

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
constinit Place g_nowhere{};       // always free
constinit FutexWord g_sendings{};  // odd from before a mark until its signal has been sent
// Whose place it is cannot be told by a thread's id, which a later thread may get again.
constinit thread_local Place* t_place = &g_nowhere;

bool Replace(Place& place, Resumed from, Resumed to) noexcept { return place.compare_exchange_strong(from, to); }

// Signal 0 only tells whether the thread is still there (kill(2)).
void Send(int signalNumber, Place& place, Resumed resumed) noexcept {
  const Resumed sent{-std::abs(resumed.thread), resumed.ticket};
  if (!Replace(place, resumed, sent)) return;
  if (::tgkill(::getpid(), -sent.thread, signalNumber) == 0) return;
  Replace(place, sent, errno == ESRCH ? Resumed{} : resumed);
}

}  // namespace

LastRun TakeLastRun() noexcept {
  const Resumed last = std::exchange(t_place, &g_nowhere)->exchange({});
  // A stop that takes the mark leaves its count to the interruption. That has to be there before this thread can end or
  // be sent another one, with which the kernel would merge it. The stop thread is one system call away from that.
  const std::uint32_t sendings = g_sendings;
  if (last.thread < 0 && sendings % 2 == 1) AwaitChange(g_sendings, sendings);
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

void InterruptResumed(std::uint32_t answered, void (*handler)(int)) noexcept {
  struct sigaction current {};
  if (::sigaction(SIGTERM, nullptr, &current) != 0 || current.sa_handler != handler) return;
  for (Place& place : g_places) {
    const Resumed resumed = place;
    if (resumed.thread == 0 || !IsAnswered(resumed.ticket, answered)) continue;
    IncrementAndWake(g_sendings);
    Send(resumed.thread > 0 ? SIGTERM : 0, place, resumed);
    IncrementAndWake(g_sendings);
  }
}

}  // namespace launcher
