// The rival: a main() of the service's own, for the module that the first argument names. All threads block SIGTERM,
// one takes it by sigwait(3) and calls StopService. It prints nothing, as such a program has no lines to print.

#include <dlfcn.h>
#include <launcher/service_module.h>

#include <csignal>
#include <thread>

int main(int argc, char** argv) {
  sigset_t termination;
  sigemptyset(&termination);
  sigaddset(&termination, SIGTERM);
  ::pthread_sigmask(SIG_BLOCK, &termination, nullptr);  // Before there are threads: all inherit it.
  void* const module = argc > 1 ? ::dlopen(argv[1], RTLD_LAZY | RTLD_GLOBAL) : nullptr;
  if (module == nullptr) return 1;
  const auto bootstrap = reinterpret_cast<decltype(&Bootstrap)>(::dlsym(module, "Bootstrap"));
  const auto stopService = reinterpret_cast<decltype(&StopService)>(::dlsym(module, "StopService"));
  if (bootstrap == nullptr || stopService == nullptr) return 1;
  std::thread([termination, stopService] {
    for (int signalNumber = 0; ::sigwait(&termination, &signalNumber) == 0;) stopService();
  }).detach();
  return bootstrap(argc, argv);
}
