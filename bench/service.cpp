// The service of the measurements. The last word of the command line says what it does. What it measures goes to
// standard error; standard output takes the lines of whoever hosts it.

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::nanoseconds;

constexpr std::size_t kDeliveries = 250;
constexpr std::chrono::seconds kPatience{10};  // more than any answer that comes at all takes

std::atomic<std::size_t> stops = 0;
std::atomic<Clock::time_point> stopped;

void SetTerminationBlocked(int how) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGTERM);
  ::pthread_sigmask(how, &set, nullptr);
}

// The time from one SIGTERM to its StopService in nanoseconds. Ends the process with status 99 where none comes.
std::int64_t Deliver() {
  const std::size_t before = stops;
  const auto sent = Clock::now();
  ::kill(::getpid(), SIGTERM);
  while (stops == before) {
    if (Clock::now() - sent > kPatience) std::_Exit(99);
    ::usleep(20);
  }
  return nanoseconds(stopped.load() - sent).count();
}

// SIGTERM is blocked here, so it goes to the threads that were started before.
int DeliverAll() {
  SetTerminationBlocked(SIG_BLOCK);
  for (std::size_t i = 0; i < kDeliveries; ++i) {
    ::usleep(200);
    static_cast<void>(std::fprintf(stderr, "%lld\n", static_cast<long long>(Deliver())));
  }
  std::_Exit(stops == kDeliveries ? 0 : 98);
}

int Idle() {
  std::thread([] {
    for (;;) ::pause();
  }).detach();
  return DeliverAll();
}

int Busy() {
  using Work = void (*)();
  constexpr std::array<Work, 3> kWork = {[] { std::printf("%s\n", "line"); }, [] { std::free(std::malloc(70'000)); },
                                         [] { ::dlclose(::dlopen("libm.so.6", RTLD_LAZY)); }};
  for (const Work work : kWork) {
    std::thread([work] {
      for (;;) work();
    }).detach();
  }
  return DeliverAll();
}

// Says when it was called, and returns at once.
int Once() {
  static_cast<void>(
      std::fprintf(stderr, "%lld\n", static_cast<long long>(nanoseconds(Clock::now().time_since_epoch()).count())));
  return 0;
}

// Says that it is there, and returns when it has been stopped.
int Wait() {
  SetTerminationBlocked(SIG_BLOCK);
  static_cast<void>(std::fprintf(stderr, "ready\n"));
  sigset_t none;
  sigemptyset(&none);
  while (stops == 0) ::sigsuspend(&none);
  return 0;
}

}  // namespace

extern "C" [[gnu::visibility("default")]] int Bootstrap(int argc, char** argv) {
  const std::string_view work = argv[argc - 1];
  if (work == "idle") return Idle();
  if (work == "busy") return Busy();
  return work == "wait" ? Wait() : Once();
}

extern "C" [[gnu::visibility("default")]] int StopService() {
  stopped = Clock::now();
  ++stops;
  return 0;
}
