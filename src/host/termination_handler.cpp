#include "host/termination_handler.h"

#include <pthread.h>

#include <cerrno>
#include <csignal>

#include "host/signal_answer.h"
#include "host/stop_thread.h"
#include "registry/proc_file_manager.h"

void handle_linux_signal(int signalNumber) {
  const int interruptedErrno = errno;
  // pthread_cancel(3) must not end the thread while this waits, as it would where the thread may be cancelled at any
  // instruction: before glibc 2.41, in every call such as pause(2).
  int interruptedType = PTHREAD_CANCEL_DEFERRED;
  ::pthread_setcanceltype(PTHREAD_CANCEL_DEFERRED, &interruptedType);
  // Other signals come here only where a module has seen to it.
  const bool left = signalNumber == SIGTERM && launcher::LeaveToStopThread();
  if (!left) launcher::AnswerSignal(signalNumber);
  ::pthread_setcanceltype(interruptedType, nullptr);
  errno = interruptedErrno;
}

void launcher::ProcFileManager::InstallSignalHandler() {
  // Fails only for numbers that are no signal (signal(2)). The previous disposition is of no use to anybody.
  static_cast<void>(std::signal(SIGTERM, handle_linux_signal));
}
