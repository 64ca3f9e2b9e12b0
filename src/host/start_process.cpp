#include "host/start_process.h"

#include <signal.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/deadline.h"
#include "base/signals.h"
#include "host/boot_module.h"
#include "host/hosted_module.h"
#include "host/main_thread.h"
#include "host/stop_thread.h"
#include "host/termination_handler.h"
#include "registry/proc_file_manager.h"

namespace launcher {
namespace {

void Register(const LaunchContext& context) {
  const char* const name = context.procName.c_str();
  std::printf("startParam: %s %d : %d\n", name, context.procHandle, context.pid);
  if (ProcFileManager::GetInstance()->WriteProcFile(context.procName, context.procHandle, context.pid) != 0) {
    std::printf("Error: write %s %d : %d failed!\n", name, context.procHandle, context.pid);
    std::exit(-1);
  }
  std::puts("WriteProcFile finish");
}

// For all exit handlers together ten seconds, since nobody can know whether StopService will ever return: the caller of
// exit(3) may hold a lock that it needs, or be the watchdog that ends a hanging stop.
void AwaitStopsAtExit() {
  static const Deadline end = DeadlineIn(std::chrono::seconds(10));
  AwaitStopsSoFar(end);
}

// exit(3) goes on to write what is in buffers, without a lock. A stop that prints at that moment would double lines.
void AwaitLastStopsAtExit() {
  AwaitStopsAtExit();
  DropStops();
  AwaitStopsAtExit();
}

}  // namespace

int StartProcess(int argc, char** argv, const LaunchContext& context) {
  const std::string path = GetBootModulePath(context);
  // Exit handlers run in the reverse order of their registration, and the destructors of static objects with them: this
  // one behind those of the module, whoever loads it, and the next in front. Without memory for them, nothing waits.
  static_cast<void>(std::atexit(AwaitLastStopsAtExit));
  // Before the registry, which installs the handler: the first SIGTERM that is handled finds the thread running.
  CreateStopThread(handle_linux_signal);
  ProcFileManager::GetInstance()->SetModulePath(path);
  // The caller may have left SIGTERM blocked. Not before the handler and the path are there: a stop may be pending.
  const sigset_t termination = SignalSet({SIGTERM});
  ::pthread_sigmask(SIG_UNBLOCK, &termination, nullptr);
  Register(context);
  const auto bootstrap = FindBootstrap(OpenServiceModule(path), path);
  static_cast<void>(std::atexit(AwaitStopsAtExit));
  KeepMainThreadUntilOthersEnd();
  AwaitStopsSoFar();
  const int result = bootstrap(argc, argv);
  // Before exit(3), which does not wait as long, and so that a StopService which calls it is the first to do so.
  AwaitStopsSoFar();
  return result;
}

}  // namespace launcher
