#include "host/boot_module.h"

#include <cstdio>

namespace launcher {

std::string GetBootModulePath(const LaunchContext& context) {
  const auto boot = context.params.find("boot");
  std::string name = boot == context.params.end() ? std::string() : GetFirstValue(boot->second);
  if (name.empty()) {
    std::puts("process get --boot para failed!  try to use default module tresk.");
    name = "tresk";
  }
  return "lib" + name + ".so";
}

}  // namespace launcher
