#include "host/termination_handler.h"

#include <cerrno>
#include <csignal>
#include <cstdio>

#include "host/hosted_module.h"
#include "host/stop_thread.h"
#include "registry/proc_file_manager.h"

namespace launcher {

void AnswerSignal(int signalNumber) {
  std::printf("received signal symbol %d\n", signalNumber);
  if (signalNumber == SIGTERM && CallStopService() != 0) std::printf("handle_linux_signal failed.");
  static_cast<void>(std::fflush(stdout));
}

void ProcFileManager::InstallSignalHandler() {
  // Fails only for numbers that are no signal (signal(2)). The previous disposition is of no use to anybody.
  static_cast<void>(std::signal(SIGTERM, handle_linux_signal));
}

}  // namespace launcher

void handle_linux_signal(int signalNumber) {
  const int interruptedErrno = errno;
  // Other signals come here only where a module has seen to it.
  const bool handedOver = signalNumber == SIGTERM && launcher::HandOverStop();
  if (!handedOver) launcher::AnswerSignal(signalNumber);
  errno = interruptedErrno;
}
