// A service that prints a line a second until it is stopped.

#include <launcher/service_module.h>

#include <chrono>
#include <condition_variable>
#include <iostream>
#include <mutex>
#include <thread>
#include <utility>

namespace {

std::mutex mutex;
std::condition_variable stopRequested;
bool stopped = false;

void Tick() {
  std::unique_lock lock(mutex);
  for (int tick = 1; !stopped; ++tick) {
    std::cout << "tick " << tick << std::endl;
    stopRequested.wait_for(lock, std::chrono::seconds(1), [] { return stopped; });
  }
}

}  // namespace

int Bootstrap(int /*argc*/, char** /*argv*/) {
  std::thread worker(Tick);
  worker.join();
  std::cout << "ticker ends" << std::endl;
  return 0;
}

int StopService() {
  const std::lock_guard lock(mutex);
  // Nobody is to be woken a second time, when Bootstrap may have returned.
  if (!std::exchange(stopped, true)) stopRequested.notify_all();
  return 0;
}
