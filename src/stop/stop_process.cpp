#include "stop/stop_process.h"

#include <signal.h>

#include <cstdio>
#include <list>
#include <string>

#include "base/signals.h"
#include "registry/proc_file_manager.h"
#include "stop/process_verification.h"

namespace launcher {
namespace {

void GetStopProcessList(const std::string& procName, int procHandle, std::list<LaunchContext>& stopList) {
  stopList.clear();
  if (procName.empty()) {
    std::puts("please config stop -procName=youProcName [-procHandle=yourProcHandle]");
    return;
  }
  LaunchContext target;
  if (ProcFileManager::GetInstance()->ReadProcFile(procName, procHandle, target.pid) != 0) {
    std::printf("Error: read %s %d failed!\n", procName.c_str(), procHandle);
    return;
  }
  if (VerifyProcNameByProcessID(procName, target.pid) != 0) {
    std::printf("Error: verify %s %d failed!\n", procName.c_str(), procHandle);
    return;
  }
  target.procName = procName;
  target.procHandle = procHandle;
  stopList.push_back(target);
}

int KillProcess(int pid) noexcept { return ::kill(pid, SIGTERM); }

void Stop(const LaunchContext& target) {
  const char* const name = target.procName.c_str();
  std::printf("stop process pid:%d:(procName:%s, procHandle:%d) ...\n", target.pid, name, target.procHandle);
  const int result = KillProcess(target.pid);
  if (result == 0) ProcFileManager::GetInstance()->DeleteProcFile(target.procName, target.procHandle);
  std::printf("stop process %d result %d\n", target.pid, result);
}

// Answers a SIGTERM that has arrived since we blocked it, unless the caller had blocked it already. There is no stop
// thread in stop mode, so the handler answers it itself: here, where this thread holds no lock that the answer needs.
// What comes later is too late: the stop goes on.
void LetTerminationIn(const sigset_t& inherited) {
  if (sigismember(&inherited, SIGTERM) == 1) return;
  const sigset_t termination = SignalSet({SIGTERM});
  ::pthread_sigmask(SIG_UNBLOCK, &termination, nullptr);
  ::pthread_sigmask(SIG_BLOCK, &termination, nullptr);
}

}  // namespace

int StopProcess(int /*argc*/, char** /*argv*/, const LaunchContext& context) {
  // SIGPIPE, from a reader that has closed the pipe, must not end us between reading the record and sending the signal.
  // SIGTERM must not interrupt us while we hold a lock that its handler needs, such as that of standard output.
  const sigset_t heldBack = SignalSet({SIGPIPE, SIGTERM});
  sigset_t inherited;
  ::pthread_sigmask(SIG_BLOCK, &heldBack, &inherited);

  std::printf("starting to stop procName %s, procHandle %d\n", context.procName.c_str(), context.procHandle);
  std::list<LaunchContext> stopList;
  GetStopProcessList(context.procName, context.procHandle, stopList);
  LetTerminationIn(inherited);
  std::printf("%d process need to stop ...\n", static_cast<int>(stopList.size()));
  for (const LaunchContext& target : stopList) Stop(target);
  return 0;
}

}  // namespace launcher
