#include "base/deadline.h"

#include <ctime>

namespace launcher {

Deadline DeadlineIn(std::chrono::milliseconds time) noexcept {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);  // Cannot fail with these.
  return Deadline(std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec) + time);
}

bool HasPassed(Deadline deadline) noexcept { return DeadlineIn(std::chrono::milliseconds(0)) >= deadline; }

}  // namespace launcher
