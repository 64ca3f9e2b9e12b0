#include "host/hosted_module.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "host/stop_thread.h"
#include "registry/proc_file_manager.h"

namespace launcher {

namespace {

// Runs the initialisers of a module that is not loaded yet.
void* Load(const std::string& path) {
  const ModuleMask mask;
  return ::dlopen(path.c_str(), RTLD_LAZY | RTLD_GLOBAL);
}

// Exit handlers are the module's code too.
[[noreturn]] void Fail() {
  static_cast<void>(std::fflush(stdout));  // What exit(3) does, but before SIGPIPE may end the process.
  const ModuleMask mask;
  std::exit(-1);
}

}  // namespace

void* OpenServiceModule(const std::string& path) {
  // What the module's initialisers write by other ways comes behind. The C library drops what cannot be written.
  static_cast<void>(std::fflush(stdout));
  void* const module = Load(path);
  if (module == nullptr) {
    std::printf("open %s failed:%s\n", path.c_str(), ::dlerror());
    Fail();
  }
  return module;
}

decltype(&Bootstrap) FindBootstrap(const std::string& path) {
  const auto bootstrap = reinterpret_cast<decltype(&Bootstrap)>(::dlsym(OpenServiceModule(path), "Bootstrap"));
  if (bootstrap == nullptr) {
    std::printf("Error: find BOOT_STRAP symbol from %s failed!\n", path.c_str());
    Fail();
  }
  return bootstrap;
}

int CallStopService() {
  const std::string path = ProcFileManager::GetInstance()->GetModulePath();
  void* const module = OpenServiceModule(path);
  std::puts("received quit symbol");
  const auto stopService = reinterpret_cast<decltype(&StopService)>(::dlsym(module, "StopService"));
  if (stopService == nullptr) {
    std::printf("Error: find StopService symbol from %s failed!\n", path.c_str());
    Fail();
  }
  std::puts("stop the service ...");
  static_cast<void>(std::fflush(stdout));
  return RunStopService(stopService);
}

}  // namespace launcher
