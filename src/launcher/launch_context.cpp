#include "launcher/launch_context.h"

#include <unistd.h>

#include <cstdio>

#include "base/decimal.h"
#include "launcher/exe_path.h"

namespace launcher {

void LaunchContext::Clear() { *this = LaunchContext(); }

void LaunchContext::SetProcFilePath(const std::string& strProcFilePath) {
  std::printf("strProcFilePath:%s\n", strProcFilePath.c_str());
  SplitExePath(strProcFilePath, exeDir, procName);
  if (procName == "java") javaFlag = true;
}

void LaunchContext::ResolveProcIdentity() {
  if (procName == "java") {
    procName = GetFirstValue(params["Dprocname"]);
    procHandle = StringToInt(procName);
    return;
  }
  if (const auto label = params.find("agentlable"); label != params.end() && label->second.size() == 2) {
    procHandle = StringToInt(label->second.back());
  } else if (const auto p = params.find("p"); p != params.end() && p->second.size() == 1) {
    procHandle = StringToInt(p->second.front());
  }
}

void LaunchContext::SetOwnPid() { pid = ::getpid(); }

}  // namespace launcher
