/*
 * The two functions of a service module: a shared library lib<name>.so, which the launcher, called with -boot=<name>,
 * finds by dlopen(3), for example in LD_LIBRARY_PATH, and loads into its own process. Include this header where you
 * define them: it makes a wrong signature an error and gives both their plain names and their visibility. C11, C++11 or
 * later.
 *
 *  - Bootstrap runs the service. It is called once, on the main thread. Its return ends the process.
 *  - StopService asks the service to end: it sets a flag, wakes who waits for it, and returns. It is called once for
 *    each SIGTERM; several that come close together may count as one.
 *
 * The rules. service-modules.md, in the launcher's documentation, has the fine print and the reasons.
 *
 *  1. StopService may come before Bootstrap, after it, and again. So keep the wish to stop in something static that is
 *     never destroyed, such as an atomic or a pthread mutex. Let Bootstrap look at it first, and never reset it.
 *  2. StopService runs on a thread of the launcher's, so lock and allocate as you like. (A lock that the thread holds
 *     which SIGTERM interrupted costs a second.) But wait for nothing there, neither for Bootstrap nor for another
 *     thread: Bootstrap does the work of ending.
 *  3. Leave SIGTERM alone. Who handles, ignores or blocks it takes over the stopping, or prevents it.
 *  4. Join your threads before Bootstrap returns: the module is never unloaded, but its static objects are destroyed.
 *  5. Let no exception out of either function, and do not call pthread_exit(3) in StopService.
 *  6. Another run of the launcher, with -s=stop, finds the service by its process id and by a name in its command line:
 *     do not write over argv, and do not end the process in favour of a child.
 *  7. The parameters boot, p, s, agentlable and Dprocname are the launcher's: give yours other names, and the form
 *     -key=value.
 */

#ifndef LAUNCHER_SERVICE_MODULE_H
#define LAUNCHER_SERVICE_MODULE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Takes the launcher's own arguments, complete and unchanged. Returns the exit status of the process; use 0 to 127. */
__attribute__((visibility("default"))) int Bootstrap(int argc, char** argv);

/* Returns 0, or any other value for a failure, of which the launcher prints a line. Neither ends the process. */
__attribute__((visibility("default"))) int StopService(void);

#ifdef __cplusplus
}
#endif

#endif
