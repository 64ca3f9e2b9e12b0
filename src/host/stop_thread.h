#pragma once

#include <launcher/service_module.h>
#include <signal.h>

namespace launcher {

// Why there is a stop thread
//
// To stop a service means to print, to allocate, to call the dynamic loader and to run the module's own code. A signal
// handler may do none of it: the code that it interrupted may hold the lock of standard output, the allocator's, the
// loader's or one of the module's, and cannot give it back before the handler returns (signal-safety(7)). So the
// handler only hands the stop over, and a thread of our own answers it, which interrupts nobody.
//
// What it promises
//
// - Every stop handed over is answered once; answers follow one another in the order of the signals.
// - The interrupted thread stays in its handler until its stop has been answered, so that the code which it returns to
//   sees what `StopService` did. It stays for at most one second, and for a tenth of one while the stop thread gets
//   nowhere outside of `StopService`: then it holds a lock that the stop thread needs. A thread that goes on is
//   interrupted once more when its stop has been answered (resumed_threads.h).
// - No signal is blocked on any other thread, and none but SIGPIPE is lost on this one: the launcher's lines into a
//   closed pipe do not end a service that is yet to be stopped.
// - A forked process has no such thread, and HandOverStop says so there.

/// Creates the thread, which from then on calls AnswerSignal for each stop handed over. Once each process, on the main
/// thread, before the first HandOverStop. If it cannot be created, the signal handler answers: better than no service.
void CreateStopThread() noexcept;

/// For the signal handler, on whichever thread it runs; makes no call that is unsafe there, and may change `errno`.
/// True: the stop is the stop thread's, or the signal was that thread's own interruption; nothing is left to do. False:
/// there is no stop thread in this process, and the caller has to answer itself.
[[nodiscard]] bool HandOverStop() noexcept;

/// Within AnswerSignal: calls `stopService` under the mask that a ModuleMask sets, and returns its result. A process
/// that was forked off within the call and returns from it ends with that result, as by _exit(2): it has nothing else
/// to do. On other threads it is a plain call.
int RunStopService(decltype(&StopService) stopService);

/// For the module's other code within AnswerSignal: while one of these lives, the stop thread has the signal mask with
/// which the launcher was started, and SIGTERM, so that what the module starts inherits no other. Does nothing on other
/// threads.
class ModuleMask {
 public:
  ModuleMask() noexcept;
  ModuleMask(const ModuleMask&) = delete;
  ModuleMask& operator=(const ModuleMask&) = delete;
  ~ModuleMask();

 private:
  sigset_t ownMask_{};
};

/// Waits, without limit, until every stop handed over so far and meanwhile has been answered. Returns at once where
/// nobody else would answer: on the stop thread and in a process that has none. Returns early when the stop thread
/// waits for a lock that the caller holds.
void AwaitAcceptedStops() noexcept;

/// Waits, without limit, until no threads are left but the calling one and the stop thread. Where proc(5) is not
/// mounted nobody can see that, and it does not return.
void AwaitEndOfOtherThreads() noexcept;

}  // namespace launcher
