#include "host/signal_answer.h"

#include <signal.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/hosted_module.h"
#include "host/module_mask.h"
#include "host/this_process.h"
#include "registry/proc_file_manager.h"

namespace launcher {
namespace {

constinit std::atomic<bool> g_stopServiceRuns = false;

int CallStopService() {
  const std::uint64_t process = ThisProcess();
  const std::string path = ProcFileManager::GetInstance()->GetModulePath();
  void* const module = OpenServiceModule(path);
  std::puts("received quit symbol");
  const auto stopService = FindStopService(module, path);
  std::puts("stop the service ...");
  static_cast<void>(std::fflush(stdout));
  SetModuleMask();
  g_stopServiceRuns = true;
  const int result = stopService();
  g_stopServiceRuns = false;
  // The child's one thread has nothing to return to: the rest of the answer is its parent's.
  if (ThisProcess() != process) std::_Exit(result);
  BlockEverySignal();
  return result;
}

}  // namespace

void AnswerSignal(int signalNumber) {
  std::printf("received signal symbol %d\n", signalNumber);
  if (signalNumber == SIGTERM && CallStopService() != 0) std::printf("handle_linux_signal failed.");
  static_cast<void>(std::fflush(stdout));
}

bool IsStopServiceRunning() noexcept { return g_stopServiceRuns; }

}  // namespace launcher
