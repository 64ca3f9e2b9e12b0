#include "base/signals.h"

#include <ctime>

namespace launcher {

sigset_t SignalSet(std::initializer_list<int> signalNumbers) noexcept {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : signalNumbers) sigaddset(&set, number);
  return set;
}

sigset_t EverySignal() noexcept {
  sigset_t set;
  sigfillset(&set);
  return set;
}

bool IsPending(int signalNumber) noexcept {
  sigset_t pending;
  return ::sigpending(&pending) == 0 && sigismember(&pending, signalNumber) == 1;
}

bool TakePending(int signalNumber) noexcept {
  const sigset_t wanted = SignalSet({signalNumber});
  const timespec now{};
  return ::sigtimedwait(&wanted, nullptr, &now) == signalNumber;
}

}  // namespace launcher
