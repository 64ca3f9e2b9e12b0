#include "host/start_process.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/boot_module.h"
#include "host/hosted_module.h"
#include "host/stop_thread.h"
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

// A Bootstrap that has left its work to other threads may end by pthread_exit(3); the process then ends with the last
// of them, as it would in a program of its own. The main thread stays until then: the stop thread would not let the
// process end by itself, and of one without a main thread proc(5) shows no command line, by which stop mode knows it.
int Run(decltype(&Bootstrap) bootstrap, int argc, char** argv) {
  struct Frame {
    bool left = false;
    ~Frame() {  // An exception that nobody catches does not unwind the stack; pthread_exit(3) does.
      if (left) return;
      AwaitEndOfOtherThreads();
      std::exit(0);
    }
  } frame;
  const int result = bootstrap(argc, argv);
  frame.left = true;
  return result;
}

}  // namespace

int StartProcess(int argc, char** argv, const LaunchContext& context) {
  const std::string path = GetBootModulePath(context);
  // Before the registry, which installs the handler: the first SIGTERM that is handled finds the thread running.
  CreateStopThread();
  ProcFileManager::GetInstance()->SetModulePath(path);
  Register(context);

  // Exit handlers run in the reverse order of their registration, and the destructors of static objects with them: one
  // waits behind those of the module, one in front. Where there is no memory to register them, exit(3) does not wait.
  static_cast<void>(std::atexit(AwaitAcceptedStops));
  const auto bootstrap = FindBootstrap(path);
  static_cast<void>(std::atexit(AwaitAcceptedStops));
  AwaitAcceptedStops();
  const int result = Run(bootstrap, argc, argv);
  // Not only in exit(3), so that a StopService which calls that itself is the first to do so.
  AwaitAcceptedStops();
  return result;
}

}  // namespace launcher
