// The service of the measurements. The last word of the command line says what it does. What it measures goes to
// standard error; standard output takes the lines of whoever hosts it.

#include <dlfcn.h>
#include <launcher/service_module.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

namespace {

constexpr std::size_t kDeliveries = 250;
constexpr std::int64_t kPatience = 10'000'000'000;  // more than any answer that comes at all takes

std::atomic<std::size_t> stops = 0;
std::atomic<std::int64_t> stopTime = 0;  // Now() at the last StopService

// Nanoseconds on the clock of clock_gettime(CLOCK_MONOTONIC).
std::int64_t Now() { return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count(); }

void Report(std::int64_t nanoseconds) {
  static_cast<void>(std::fprintf(stderr, "%lld\n", static_cast<long long>(nanoseconds)));
}

void BlockTermination() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGTERM);
  ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

// The time from one SIGTERM to its StopService in nanoseconds. Ends the process with status 99 where none comes.
std::int64_t Deliver() {
  const std::size_t before = stops;
  const std::int64_t sent = Now();
  ::kill(::getpid(), SIGTERM);
  while (stops == before) {
    if (Now() - sent > kPatience) std::_Exit(99);
    ::usleep(20);
  }
  return stopTime - sent;
}

// SIGTERM is blocked here, so it goes to the threads that were started before.
int DeliverAll() {
  BlockTermination();
  for (std::size_t i = 0; i < kDeliveries; ++i) {
    ::usleep(200);
    Report(Deliver());
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

// Says that it is there, and returns when it has been stopped.
int Wait() {
  BlockTermination();
  static_cast<void>(std::fprintf(stderr, "ready\n"));
  sigset_t none;
  sigemptyset(&none);
  while (stops == 0) ::sigsuspend(&none);
  return 0;
}

}  // namespace

int Bootstrap(int argc, char** argv) {
  const std::string_view work = argv[argc - 1];
  if (work == "idle") return Idle();
  if (work == "busy") return Busy();
  return work == "wait" ? Wait() : 0;
}

int StopService() {
  stopTime = Now();
  ++stops;
  return 0;
}
