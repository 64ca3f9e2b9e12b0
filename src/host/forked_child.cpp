#include "host/forked_child.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>

namespace launcher {
namespace {

constinit std::atomic<unsigned> g_forks{};
constinit ProcessSigns g_first{};

}  // namespace

ProcessSigns ThisProcess() noexcept { return {::getpid(), g_forks}; }

// Without memory for the handler, one sign is left.
void NoticeForks() noexcept {
  g_first = ThisProcess();
  ::pthread_atfork(nullptr, nullptr, [] { ++g_forks; });
}

bool IsForkedChild() noexcept { return ThisProcess() != g_first; }

}  // namespace launcher
