#include "host/resumed_threads.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>

#include "base/futex.h"
#include "host/termination_handler.h"
#include "host/thread_status.h"

namespace launcher {
namespace {

using namespace std::chrono_literals;

// Aligned for atomic access, which Clang would otherwise leave to a library.
struct alignas(8) Resumed {
  std::uint32_t thread;  // its kernel id; 0: nobody
  std::uint32_t due;
};
using Place = std::atomic<Resumed>;
static_assert(Place::is_always_lock_free);

constinit std::array<Place, 64> g_resumed{};
constinit Word g_interrupted{};  // the thread that an interruption is on its way to; 0: none

bool Replace(Place& place, Resumed from, Resumed to) noexcept { return place.compare_exchange_strong(from, to); }

std::uint32_t ThisThread() noexcept { return static_cast<std::uint32_t>(::gettid()); }

bool IsDue(Resumed resumed, std::uint32_t progress) noexcept {
  return static_cast<std::int32_t>(progress - resumed.due) >= 0;
}

bool HandlerIsInPlace() noexcept {
  struct sigaction current {};
  return ::sigaction(SIGTERM, nullptr, &current) == 0 && current.sa_handler == handle_linux_signal;
}

void Interrupt(std::uint32_t thread) noexcept {
  if (!HandlerIsInPlace()) return;
  g_interrupted = thread;
  const bool sent = ::tgkill(::getpid(), static_cast<pid_t>(thread), SIGTERM) == 0;
  if (sent) AwaitChange(g_interrupted, thread, std::chrono::steady_clock::now() + 1s);
  g_interrupted = 0;
}

}  // namespace

void RememberResumed(std::uint32_t due) noexcept {
  const Resumed resumed{ThisThread(), due};
  for (Place& place : g_resumed) {
    if (Replace(place, {}, resumed)) return;
  }
}

void ForgetResumed(std::uint32_t progress) noexcept {
  const std::uint32_t thread = ThisThread();
  for (Place& place : g_resumed) {
    const Resumed resumed = place;
    if (resumed.thread == thread && IsDue(resumed, progress)) Replace(place, resumed, {});
  }
}

bool TakeInterruption() noexcept {
  std::uint32_t thread = ThisThread();
  if (!g_interrupted.compare_exchange_strong(thread, 0)) return false;
  WakeAll(g_interrupted);
  return true;
}

bool InterruptResumed(std::uint32_t progress) noexcept {
  bool left = false;
  for (Place& place : g_resumed) {
    const Resumed resumed = place;
    if (resumed.thread == 0 || !IsDue(resumed, progress)) continue;
    if (!IsOpenToTermination(static_cast<pid_t>(resumed.thread))) {
      left = true;
    } else if (Replace(place, resumed, {})) {
      Interrupt(resumed.thread);
    }
  }
  return left;
}

}  // namespace launcher
