#include "base/futex.h"

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <ctime>

namespace launcher {
namespace {

static_assert(sizeof(Word) == 4 && Word::is_always_lock_free, "a futex is four bytes (futex(2))");
static_assert(sizeof(time_t) == sizeof(long), "SYS_futex takes the kernel's own timespec");

timespec ToTimespec(Deadline deadline) noexcept {
  const auto sinceEpoch = deadline.time_since_epoch();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch);
  return {seconds.count(), std::chrono::nanoseconds(sinceEpoch - seconds).count()};
}

}  // namespace

bool AwaitChange(Word& word, std::uint32_t seen, Deadline deadline) noexcept {
  const timespec time = ToTimespec(deadline);
  const timespec* const limit = deadline == Deadline::max() ? nullptr : &time;
  while (word == seen) {
    // Returns early when a handler has run, and at times for no reason.
    const long result =
        ::syscall(SYS_futex, &word, FUTEX_WAIT_BITSET_PRIVATE, seen, limit, nullptr, FUTEX_BITSET_MATCH_ANY);
    if (result != 0 && errno == ETIMEDOUT) return word != seen;
  }
  return true;
}

void WakeAll(Word& word) noexcept { ::syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, INT_MAX); }

std::uint32_t Increment(Word& word) noexcept {
  const std::uint32_t value = word.fetch_add(1) + 1;
  WakeAll(word);
  return value;
}

}  // namespace launcher
