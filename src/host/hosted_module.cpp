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
  const InterruptedMask mask;
  return ::dlopen(path.c_str(), RTLD_LAZY | RTLD_GLOBAL);
}

}  // namespace

void* OpenServiceModule(const std::string& path) {
  static_cast<void>(std::fflush(stdout));  // What cannot be written now is tried again with the next line.
  void* const module = Load(path);
  if (module == nullptr) {
    std::printf("open %s failed:%s\n", path.c_str(), ::dlerror());
    std::exit(-1);
  }
  return module;
}

decltype(&Bootstrap) FindBootstrap(const std::string& path) {
  const auto bootstrap = reinterpret_cast<decltype(&Bootstrap)>(::dlsym(OpenServiceModule(path), "Bootstrap"));
  if (bootstrap == nullptr) {
    std::printf("Error: find BOOT_STRAP symbol from %s failed!\n", path.c_str());
    std::exit(-1);
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
    std::exit(-1);
  }
  std::puts("stop the service ...");
  static_cast<void>(std::fflush(stdout));
  const InterruptedMask mask;
  return stopService();
}

}  // namespace launcher
