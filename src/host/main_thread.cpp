#include "host/main_thread.h"

#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#include "base/signals.h"
#include "host/stop_thread.h"

namespace launcher {
namespace {

// 0 where the system does not tell.
std::uint64_t CountThreads() noexcept {
  struct stat tasks {};
  // A link for each, and a directory's own two.
  return ::stat("/proc/self/task", &tasks) == 0 ? tasks.st_nlink - 2 : 0;
}

// SIGTERM interrupts the other threads meanwhile, as if this one were gone. A SIGTERM that they all block is let in
// here.
void EndWithOthers(void* /*unused*/) {
  const sigset_t termination = SignalSet({SIGTERM});
  sigset_t ownMask;
  ::pthread_sigmask(SIG_BLOCK, &termination, &ownMask);
  while (CountThreads() != (HasStopThread() ? 2 : 1)) {
    ::usleep(100'000);
    if (!IsPending(SIGTERM)) continue;
    ::pthread_sigmask(SIG_SETMASK, &ownMask, nullptr);
    ::pthread_sigmask(SIG_BLOCK, &termination, nullptr);
  }
  ::pthread_sigmask(SIG_SETMASK, &ownMask, nullptr);
  AwaitStopsSoFar();
  std::exit(0);
}

}  // namespace

// The stop thread would not let the process end by itself, and of a process without a main thread proc(5) shows no
// command line, by which stop mode knows it. A key's destructor runs at pthread_exit(3) even where the stack cannot be
// unwound. glibc keeps the values of the first 32 keys without allocating.
void KeepMainThreadUntilOthersEnd() noexcept {
  pthread_key_t key{};
  if (::pthread_key_create(&key, EndWithOthers) == 0) ::pthread_setspecific(key, "not null");
}

}  // namespace launcher
