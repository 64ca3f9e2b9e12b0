#pragma once

#include <csignal>

namespace launcher {

/// Why there is a stop thread
///
/// To stop a service means to print, to allocate, to call the dynamic loader and to run the module's own code. A signal
/// handler may do none of it: the code that it interrupted may hold the lock of standard output, the allocator's, the
/// loader's or one of the module's, and cannot give it back before the handler returns (signal-safety(7)). So the
/// handler only hands the signal over, and a thread of our own answers it, which interrupts nobody.
///
/// What it promises
///
/// - Every signal handed over is answered once; answers follow one another in the order of the signals.
/// - The interrupted thread stays in its handler until its signal has been answered, so that the code which it returns
///   to sees what `StopService` did. It stays for at most one second, since it may hold a lock that the answer needs.
///   Then it goes on, and it is interrupted once more when the answer is complete, so that a loop around pause(2) looks
///   at its condition again. That interruption is no signal to answer, and is left out when the module has meanwhile
///   given SIGTERM another action, which it would set off.
/// - No signal is blocked on any other thread, and none but SIGPIPE is lost on this one: the launcher's lines into a
///   closed pipe do not end a service that is yet to be stopped.
/// - In a process that was forked off the hosting one the thread does not exist, and HandOverSignal says so.
///
/// Nothing here is for processes that host no module: without StartStopThread, HandOverSignal refuses every signal.

/// Starts the thread, which from then on calls `answer` with the number of each signal handed over. Once each process,
/// on the main thread, before the first HandOverSignal. Where no thread can be had, nothing happens: a service that has
/// to answer in its signal handler is better than none.
void StartStopThread(void (*answer)(int signalNumber));

/// For the signal handler, on whichever thread it runs; makes no call that is unsafe there, and may change `errno`.
/// True: the signal is the stop thread's, or was that thread's own interruption; nothing is left to do. False: there is
/// no stop thread in this process, and the caller has to answer itself.
[[nodiscard]] bool HandOverSignal(int signalNumber) noexcept;

/// For the module's own code within `answer`: while one of these lives, the stop thread has the signal mask of the
/// thread that it answers for, with SIGTERM added, so that the processes and threads which the module starts inherit no
/// other. Does nothing on other threads.
class InterruptedMask {
 public:
  InterruptedMask() noexcept;
  InterruptedMask(const InterruptedMask&) = delete;
  InterruptedMask& operator=(const InterruptedMask&) = delete;
  ~InterruptedMask();

 private:
  sigset_t ownMask_;
};

/// Waits, without limit, until every signal handed over so far and meanwhile has been answered. Main thread.
void WaitForAcceptedStops() noexcept;

}  // namespace launcher
