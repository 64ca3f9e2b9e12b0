/*
 * The two entry points of a service module: all that the launcher asks of one. These comments are the contract; its
 * reasons are in service-modules.md, in the launcher's documentation.
 *
 * A service module is a shared library lib<name>.so, which the launcher, called with -boot=<name>, loads into its own
 * process. Include this header where you define them: it makes a wrong signature an error and gives both functions
 * their plain names and their visibility, also in C++ and under -fvisibility=hidden. C11, C++11 or later.
 *
 *  1. The launcher has written its pid record and answers SIGTERM. It loads the module; initialisers run.
 *  2. It calls Bootstrap, on the main thread, once. The service runs for as long as this call lasts.
 *  3. Every SIGTERM makes it call StopService, which asks the service to end. It ends by returning from Bootstrap.
 *  4. The launcher lets stops that have come finish, and ends the process with exit(3).
 *
 * The module is never unloaded: destructors of its static objects and its exit handlers run in step 4, while threads
 * that are still alive run on. Join yours before Bootstrap returns. An exception must not leave either function, nor
 * pthread_exit(3) StopService: it ends the process by std::terminate, without exit handlers.
 */

#ifndef LAUNCHER_SERVICE_MODULE_H
#define LAUNCHER_SERVICE_MODULE_H

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Runs the service. Returns a result whose low 8 bits are the exit status of the process. By then there are
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
 *
 * The end: a return from Bootstrap waits for the stops that have come by then, however long they take. exit(3), on any
 * thread, also waits for those that come meanwhile, but for ten seconds in all: after the exit handlers that were
 * registered in Bootstrap or later, and again after the destructors of static objects. (In glibc 2.41, it then waits
 * without a bound for whoever holds the lock of a stdio stream.) StopService may call it too, and then nothing waits.
 * _exit(2), quick_exit(3) and the end by a signal wait for nothing. pthread_exit(3) leaves the service to its other
 * threads: when the last of them has ended, which takes a mounted proc(5) to see, the process ends as after a return of
 * 0. None of them may wait for the end of the main one, which stays.
 */
__attribute__((visibility("default"))) int Bootstrap(int argc, char** argv);

/*
 * Asks the service to end. Returns 0, or any other value for a failure, of which the launcher prints a line. Neither
 * ends the process: Bootstrap has to return.
 *
 * When: once for each SIGTERM that is delivered, one call after the other, so it must bear being called again. (Of
 * several that are pending at once, the kernel may deliver one. What comes to a thread that has handed over a stop and
 * gone on may count as the same, as long as that stop is still to begin.) The first may come before Bootstrap, even
 * before the module is loaded, and then initialisers run on the launcher's thread; Bootstrap is called when StopService
 * has returned. (One in the last instructions before the call counts as one in Bootstrap.) The last may come while the
 * process ends. So keep the wish to stop in something that is initialised statically and never destroyed, such as an
 * atomic or a mutex, and let Bootstrap look at it first. Do not wait here for the beginning of Bootstrap or for the end
 * of the process.
 *
 * Where: on a thread of the launcher, not in the signal handler. It may lock, allocate, print, throw and catch, load
 * libraries and start processes. It has the signal mask with which the launcher was started, with SIGTERM added, and so
 * have the programs that it starts: unblock SIGTERM in those that are to be stopped by it. Where the system had no
 * thread left for the launcher at its start, the call does come in the signal handler.
 *
 * That thread keeps the rights with which the process was started: capabilities, no_new_privs, seccomp(2) filters
 * without TSYNC and namespaces that Bootstrap sets for its own thread do not reach it. Drop rights before the start, as
 * the unit for systemd does, or for all threads. As in every process with two threads, unshare(CLONE_NEWUSER) fails,
 * and so does setns(2) to a user or mount namespace. The thread's stack has the system's default size, and destructors
 * of its thread_local objects do not run.
 *
 * The thread that SIGTERM interrupted waits in the signal handler for StopService: for a second at most, for a
 * twentieth of one while no StopService runs, and not each time while more SIGTERMs come. All others run on. If it goes
 * on earlier, it is sent one more SIGTERM when StopService has returned for the last stop that it has handed over by
 * then, unless SIGTERM has another action than the launcher's. (Of more than 64 such threads at a time, the others are
 * not.) That one calls nothing; like the first, it ends the system calls that signal(7) lists as failing with EINTR
 * always. A thread that takes it by sigtimedwait(2), or lets SIG_IGN discard it, loses the next stop that comes to this
 * thread; the kernel merges it with a SIGTERM that pthread_kill(3) sends there; a default action that is set at that
 * moment ends the process.
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
