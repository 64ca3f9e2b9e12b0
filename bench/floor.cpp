// The least that hosting a module takes: writes one pid file, opens the module that the first argument names, and calls
// it.

#include <dlfcn.h>
#include <fcntl.h>
#include <launcher/service_module.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
  const int file = ::open("floor.pid", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0 || ::dprintf(file, "%d", ::getpid()) < 0 || ::close(file) != 0) return 1;
  void* const module = argc > 1 ? ::dlopen(argv[1], RTLD_LAZY | RTLD_GLOBAL) : nullptr;
  if (module == nullptr) return 1;
  const auto bootstrap = reinterpret_cast<decltype(&Bootstrap)>(::dlsym(module, "Bootstrap"));
  return bootstrap != nullptr ? bootstrap(argc, argv) : 1;
}
