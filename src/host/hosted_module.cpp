#include "host/hosted_module.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "host/module_mask.h"

namespace launcher {
namespace {

// Exit handlers are the module's code too.
[[noreturn]] void Fail() {
  static_cast<void>(std::fflush(stdout));  // What exit(3) does, but before SIGPIPE may end the process.
  SetModuleMask();
  std::exit(-1);
}

}  // namespace

void* OpenServiceModule(const std::string& path) {
  // Initialisers may write by other ways than stdio, and their lines come after these. What cannot be written is lost.
  static_cast<void>(std::fflush(stdout));
  SetModuleMask();
  void* const module = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_GLOBAL);
  BlockEverySignal();
  if (module == nullptr) {
    std::printf("open %s failed:%s\n", path.c_str(), ::dlerror());
    Fail();
  }
  return module;
}

decltype(&Bootstrap) FindBootstrap(void* module, const std::string& path) {
  const auto bootstrap = reinterpret_cast<decltype(&Bootstrap)>(::dlsym(module, "Bootstrap"));
  if (bootstrap == nullptr) {
    std::printf("Error: find BOOT_STRAP symbol from %s failed!\n", path.c_str());
    Fail();
  }
  return bootstrap;
}

decltype(&StopService) FindStopService(void* module, const std::string& path) {
  const auto stopService = reinterpret_cast<decltype(&StopService)>(::dlsym(module, "StopService"));
  if (stopService == nullptr) {
    std::printf("Error: find StopService symbol from %s failed!\n", path.c_str());
    Fail();
  }
  return stopService;
}

}  // namespace launcher
