#include <cstdio>
#include <string>
#include <vector>

#include "host/start_process.h"
#include "launcher/launch_context.h"
#include "launcher/params.h"
#include "launcher/standard_descriptors.h"
#include "stop/stop_process.h"

int main(int argc, char** argv) {
  using namespace launcher;

  OpenStandardDescriptors();
  const std::vector<std::string> arguments(argv, argv + argc);
  LaunchContext context;
  context.SetProcFilePath(GetFirstValue(arguments));
  ParseParams(arguments, context.params);
  context.ResolveProcIdentity();
  context.SetOwnPid();

  const auto s = context.params.find("s");
  if (s == context.params.end()) return StartProcess(argc, argv, context);

  const std::string mode = GetFirstValue(s->second);
  if (mode == "stop") return StopProcess(argc, argv, context);
  if (mode == "dumpMap") {
    std::printf("todo dumpMap...");
    return 0;
  }
  if (mode == "dumpStack") {
    std::printf("todo dumpStack...");
    return 0;
  }
  std::printf("Error: s param %s unknow!", mode.c_str());
  return -1;
}
