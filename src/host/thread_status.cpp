#include "host/thread_status.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "base/unique_fd.h"

namespace launcher {
namespace {

// One of the files of a thread, up to what is looked for in it. Takes no lock, as whoever holds one may be waiting for
// us.
class ThreadFile {
 public:
  ThreadFile(pid_t thread, const char* name) noexcept {
    static_cast<void>(std::snprintf(text_.data(), text_.size(), "/proc/self/task/%d/%s", thread, name));
    const UniqueFd file(::open(text_.data(), O_RDONLY | O_CLOEXEC));
    size_ = ::read(file.Get(), text_.data(), text_.size());
  }

  [[nodiscard]] std::string_view Text() const noexcept {
    return {text_.data(), size_ > 0 ? static_cast<std::size_t>(size_) : 0};
  }

  // The number behind `label`, 0 where there is none.
  [[nodiscard]] std::uint64_t Number(std::string_view label, int base) const noexcept {
    std::uint64_t number = 0;
    const auto at = Text().find(label);
    if (at == std::string_view::npos) return 0;
    std::from_chars(Text().data() + at + label.size(), Text().data() + Text().size(), number, base);
    return number;
  }

 private:
  std::array<char, 65536> text_;  // in front of the signals stand the groups, of which there may be many
  ssize_t size_;
};

}  // namespace

bool IsOpenToTermination(pid_t thread) noexcept {
  constexpr std::uint64_t kTermination = std::uint64_t{1} << (SIGTERM - 1);
  const ThreadFile call(thread, "syscall");
  const ThreadFile status(thread, "status");
  const bool blocksOrHasPending =
      ((status.Number("\nSigBlk:\t", 16) | status.Number("\nSigPnd:\t", 16)) & kTermination) != 0;
  // A thread in sigtimedwait(2) is shown with the signal unblocked that it waits for. So both have to be of one sleep.
  return !blocksOrHasPending && !call.Text().starts_with("running") && call.Number("", 10) != SYS_rt_sigtimedwait &&
         call.Text() == ThreadFile(thread, "syscall").Text();
}

bool IsBlockedByCaller(pid_t thread) noexcept {
  // What glibc makes of a lock that knows its owner: those of exit(3) and stdio name the thread by its pthread_t, a
  // mutex, the loader's among them, by its kernel id.
  struct Lock {
    int futex;
    int count;
    union {
      pthread_t thread;
      pid_t id;
    } owner;
  } lock{};
  const ThreadFile call(thread, "syscall");
  if (call.Number("", 10) != SYS_futex) return false;
  const UniqueFd memory(::open("/proc/self/mem", O_RDONLY | O_CLOEXEC));
  const auto address = static_cast<off_t>(call.Number(" 0x", 16));
  if (::pread(memory.Get(), &lock, sizeof lock, address) != sizeof lock) return false;
  return lock.owner.thread == ::pthread_self() || lock.owner.id == ::gettid();
}

std::uint64_t CountThreads() noexcept {
  struct stat tasks {};
  // A link for each, and a directory's own two.
  return ::stat("/proc/self/task", &tasks) == 0 ? tasks.st_nlink - 2 : 0;
}

}  // namespace launcher
