#include "host/forked_child.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>

namespace launcher {
namespace {

constinit std::atomic<pid_t> g_process{};  // 0 before NoticeForks

}  // namespace

// Two signs, as each has a child that it misses: in a pid namespace of its own a child may have its parent's id, and
// one that fork(3) has not made runs no handlers of pthread_atfork(3). Without memory for those, one sign is left.
void NoticeForks() noexcept {
  g_process = ::getpid();
  ::pthread_atfork(nullptr, nullptr, [] { g_process = -1; });
}

bool IsForkedChild() noexcept {
  const pid_t process = g_process;
  return process != 0 && process != ::getpid();
}

}  // namespace launcher
