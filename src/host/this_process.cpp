#include "host/this_process.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>

namespace launcher {
namespace {

constinit std::atomic<std::uint32_t> g_forks{};
// Without memory for the handler, the process id alone tells.
[[maybe_unused]] const int g_counting = ::pthread_atfork(nullptr, nullptr, [] { ++g_forks; });

}  // namespace

// Two signs, as each misses a child: one in a pid namespace of its own may have its parent's id, and one that fork(3)
// has not made runs no handlers of pthread_atfork(3).
std::uint64_t ThisProcess() noexcept { return static_cast<std::uint64_t>(::getpid()) << 32 | g_forks; }

}  // namespace launcher
