/*
 * The two entry points of a service module: all that the launcher asks of one.
 *
 * A service module is a shared library lib<name>.so, which the launcher, called with -boot=<name>, loads into its own
 * process. Include this header where you define them: it makes a wrong signature an error and gives both functions
 * their plain names and their visibility, also in C++ and under -fvisibility=hidden. C11, C++11 or later.
 *
 * From load to end
 *
 *  1. The launcher has written its pid record and answers SIGTERM. It loads the module; initialisers run.
 *  2. It calls Bootstrap, on the main thread, once. The service runs for as long as this call lasts.
 *  3. Every SIGTERM makes it call StopService, which asks the service to end. It ends by returning from Bootstrap.
 *  4. The launcher lets accepted stops finish, however long they take, and ends the process with exit(3).
 *
 * The module is never unloaded: destructors of its static objects and its exit handlers run in step 4, while threads
 * that are still alive run on. Join yours before Bootstrap returns.
 */

#ifndef LAUNCHER_SERVICE_MODULE_H
#define LAUNCHER_SERVICE_MODULE_H

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Runs the service. Called on the main thread. By then there are
 *
 *  - the pid record, if its directory can be written: a stop command already finds this process;
 *  - the launcher's SIGTERM handler. No other signal is touched. Whoever replaces it, or blocks SIGTERM on all threads,
 *    takes over the stopping, or prevents it;
 *  - the descriptors 0, 1 and 2: /dev/null in place of those that were closed;
 *  - libm, libpthread and libdl, besides the C library and the C++ runtime; and one thread, the launcher's.
 *
 * `argv` is the launcher's own, complete and unchanged: argv[0] is the name that it was called by, and its own
 * parameters (-boot, -p and so on) are among the rest. Skip what is not yours. The launcher ignores parameters that it
 * does not know, as long as they begin with a dash.
 * Rationale: a service may want to know its own name and handle, and needs no second way to be configured.
 *
 * Returns a result whose low 8 bits are the exit status of the process. The module may also call exit(3), on any
 * thread: accepted stops are finished first, unless the caller holds a lock that they need. _exit(2), quick_exit(3) and
 * the end by a signal wait for nothing. pthread_exit(3) leaves the service to its other threads: the process ends with
 * status 0 when the last of them has ended, which takes a mounted proc(5) to see. None of them may wait for the end of
 * the main one. An exception must not leave Bootstrap: it ends the process by std::terminate, without exit handlers.
 */
__attribute__((visibility("default"))) int Bootstrap(int argc, char** argv);

/*
 * Asks the service to end. Returns 0, or any other value for a failure, of which the launcher prints a line; it does
 * nothing else about it. Neither result ends the process: Bootstrap has to return. An exception must not leave it.
 * Rationale: only the service knows when its work is finished. It may even refuse.
 *
 * When: once for each SIGTERM that is delivered, one after the other, so it must bear being called again. (Of several
 * that are pending at once, the kernel may deliver one.) SIGTERM can arrive at any time:
 *
 *  - Before Bootstrap; a SIGTERM may even be what loads the module. Bootstrap is called when StopService has returned.
 *    (A SIGTERM in the last instructions before the call counts as one in Bootstrap.)
 *  - After Bootstrap, while the process ends. exit(3) waits for StopService twice: after the exit handlers that were
 *    registered in Bootstrap or later and before the destructors of static objects, and again after those. A SIGTERM
 *    that comes later still, as in a function with the attribute `destructor`, may be cut off.
 *
 * So keep the wish to stop in something that is initialised statically and never destroyed, such as an atomic or a
 * mutex, and let Bootstrap look at it first. Do not wait here for the beginning of Bootstrap or for the end of the
 * process, nor for a thread that calls exit(3). StopService may itself call exit(3), which then does not wait for it.
 * But while another thread is in exit(3), that one's status counts since glibc 2.41; and if the process has changed its
 * user or has no proc(5), the two then wait for each other.
 *
 * Where: on a thread of the launcher, not in the signal handler. It may lock, allocate, print, throw and catch, load
 * libraries and start processes. Thread-local variables are not those of the interrupted thread. Where the system had
 * no thread left for the launcher at its start, the call does come in the signal handler.
 *
 * What holds meanwhile: all other threads run on, the one in Bootstrap too, except the one that SIGTERM interrupted. It
 * waits in the signal handler for StopService, for at most one second, then goes on where it was. It goes on after a
 * tenth of a second if it holds a lock that the launcher needs before it can call StopService: of standard output, the
 * allocator or the loader. System calls are restarted after an interruption, except those which signal(7) lists as
 * failing with EINTR always; so a loop around pause(2) or poll(2) sees what StopService did.
 * Rationale: code that wakes up because of SIGTERM should find the stop done. But it may hold a lock that StopService
 * needs, so it cannot wait for ever. If StopService is to wait for other threads, that second is added: the kernel
 * prefers to interrupt the main thread. Better to ask here, and to wait in Bootstrap.
 *
 * A thread that went on is sent one more SIGTERM when StopService has returned, so that its loop looks again. That one
 * calls nothing. It comes when the thread sleeps in a system call and does not block SIGTERM, and not at all while
 * SIGTERM has another action than the launcher's. Three things cannot be helped: a sigtimedwait(2) that begins at that
 * moment may return it; a default action that is set at that moment ends the process; and the kernel merges it with a
 * SIGTERM that pthread_kill(3) has sent to the same thread, which is then not answered.
 *
 * Signal mask: the one with which the launcher was started, with SIGTERM added. Processes that StopService starts
 * inherit it; in those which are to be stopped by SIGTERM, unblock it.
 *
 * Fork: the launcher's thread is not in a process that the module has forked off. There, as long as it has executed no
 * other program, SIGTERM calls StopService inside the signal handler, which allows only what signal-safety(7) lists.
 * Give SIGTERM another action in the child, or execute a program at once. A child that was forked off in StopService
 * and returns from it ends there, as by _exit(2) with that result.
 */
__attribute__((visibility("default"))) int StopService(void);

#ifdef __cplusplus
}
#endif

#endif
