#include "base/futex.h"

#include <linux/futex.h>
#include <linux/time_types.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

namespace launcher {
namespace {

static_assert(sizeof(FutexWord) == 4 && FutexWord::is_always_lock_free, "a futex is four bytes (futex(2))");

// Of the kernel and not of the C library, whose time_t may be longer than what SYS_futex takes.
using Time = __kernel_old_timespec;

Time ToTime(Deadline deadline) noexcept {
  const auto sinceBoot = deadline.time_since_epoch();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(sinceBoot);
  const std::chrono::nanoseconds rest = sinceBoot - seconds;
  return {static_cast<decltype(Time::tv_sec)>(seconds.count()), static_cast<decltype(Time::tv_nsec)>(rest.count())};
}

}  // namespace

bool AwaitChange(FutexWord& word, std::uint32_t seen, Deadline deadline) noexcept {
  const Time time = ToTime(deadline);
  const Time* const limit = deadline == Deadline::max() ? nullptr : &time;
  while (word == seen) {
    // Returns early when a handler has run or the word has just changed, and at times for no reason.
    const long result =
        ::syscall(SYS_futex, &word, FUTEX_WAIT_BITSET_PRIVATE, seen, limit, nullptr, FUTEX_BITSET_MATCH_ANY);
    if (result != 0 && errno != EINTR && errno != EAGAIN) return word != seen;
  }
  return true;
}

std::uint32_t IncrementAndWake(FutexWord& word) noexcept {
  const std::uint32_t value = word.fetch_add(1) + 1;
  ::syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, INT_MAX);
  return value;
}

}  // namespace launcher
