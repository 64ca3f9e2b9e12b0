#pragma once

#include <signal.h>

#include <initializer_list>

namespace launcher {

/// The set of these signals.
[[nodiscard]] sigset_t SignalSet(std::initializer_list<int> signalNumbers) noexcept;

/// Takes the signal off those that are pending on the calling thread or on the process, which have to be blocked.
/// Returns whether it was among them.
bool TakePending(int signalNumber) noexcept;

/// While one lives, the calling thread blocks the signal; what of it arrives meanwhile is dropped at the end.
class DroppedSignal {
 public:
  explicit DroppedSignal(int signalNumber) noexcept;
  DroppedSignal(const DroppedSignal&) = delete;
  DroppedSignal& operator=(const DroppedSignal&) = delete;
  ~DroppedSignal();

 private:
  int signalNumber_;
  sigset_t before_{};
};

}  // namespace launcher
