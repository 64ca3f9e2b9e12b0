#include <sys/wait.h>

#include <cstdio>
#include <regex>

#include "scratch.h"

namespace {

struct Row {
  std::string name, variables, arguments, expected, program = "svc";  // `program` is argv[0]
  bool skipsWithTsan = false;  // it holds signals back, and has a thread and masks of its own
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.program << " " << row.arguments; }

struct Process : Scratch, testing::WithParamInterface<Row> {};

// All that the launcher prints, its own id as PID, and its exit status or minus the number of the signal that ended it.
// Variables and arguments are shell text; those for the module `probe` begin with -do=, and the handle is 3. All of it
// has 90 seconds.
std::string Transcript(const Row& row) {
  const std::string shell = "set -o pipefail; echo $$; mkdir -p var/oss_tmp; ln -sf " LAUNCHER
                            " svc; export _APP_SHARE_DIR=./var/oss_tmp LD_LIBRARY_PATH=" FIXTURES
                            " ASAN_OPTIONS=verify_asan_link_order=0 TSAN_OPTIONS=atexit_sleep_ms=0 " +
                            row.variables + "\nexec -a " + row.program + " " LAUNCHER " -p=3 " +
                            (row.arguments.starts_with("-do=") ? "-boot=probe " : "") + row.arguments;
  std::FILE* const process = popen(("exec env -i timeout -s KILL 90 bash -c '" + shell + "'").c_str(), "r");
  std::string output;
  for (int byte = 0; (byte = std::fgetc(process)) != EOF;) output += static_cast<char>(byte);
  const int status = pclose(process);
  const int end = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  const auto pidEnd = output.find('\n');
  const std::regex own("( : |iOSProcessID:|osprocid |process |pid:)" + output.substr(0, pidEnd) + "\\b");
  return std::regex_replace(output.substr(pidEnd + 1), own, "$1PID") + "[" + std::to_string(end) + "]";
}

// clang-format off
const std::string faults = "LD_PRELOAD=libfaults.so ";
const std::string named = "strProcFilePath:svc\nstrStdDir , strStdExeName svc\n";
const std::string pidDir = "pid dir ./var/oss_tmp/\n";
const std::string written = pidDir + "startParam: svc 3 : PID\nwrite ./var/oss_tmp/svc_3.pid : iOSProcessID:PID\n";
const std::string started = named + written + "WriteProcFile finish\n";
const std::string received = "received signal symbol 15\nreceived quit symbol\n";
const std::string noModule = "Error: find StopService symbol from  failed!\n[255]";
const std::string answer = received + "stop the service ...\n";
const std::string answered = started + answer;
const std::string five = answer + answer + answer + answer + answer;
const std::string twenty = five + five + five + five;
const std::string served = answer + "[0]";
const std::string stopping = "strProcFilePath:./svc\nstrStdDir ., strStdExeName svc\n"
                             "starting to stop procName svc, procHandle 3\n" + pidDir;
const std::string found = stopping + "read ./var/oss_tmp/svc_3.pid : iOSProcessID:PID\n1 process need to stop ...\n"
                          "stop process pid:PID:(procName:svc, procHandle:3) ...\n";
const std::string gone = stopping + "read ./var/oss_tmp/svc_3.pid : iOSProcessID:2147483647\n";
const std::string notVerified =
    gone + "[VerifyProcNameByProcessID]verify process svc 2147483647 failed!\nError: verify svc 3 failed!\n";
const std::string recorded = "; echo 2147483647 >var/oss_tmp/svc_3.pid";
const std::string nobody = "0 process need to stop ...\n[0]";

// The module does the words of -do, and at each stop those of ON_STOP.
const Row rows[] = {
    {"DumpMap", "", "-s=dumpMap -s=stop", named + "todo dumpMap...[0]"},
    {"DumpStack", "", "x - -s dumpStack", named + "ignore param x!param  invalid!todo dumpStack...[0]"},
    {"UnknownMode", "", "-s=%n", named + "Error: s param %n unknow![255]"},

    {"Arguments", "", "-Dprocname=12 -boot probe x", "strProcFilePath:java\nstrStdDir , strStdExeName java\n" + pidDir +
     "startParam: 12 12 : PID\nwrite ./var/oss_tmp/12_12.pid : iOSProcessID:PID\nWriteProcFile finish\n"
     "-p=3|-Dprocname=12|-boot|probe|x|[6]", "java"},
    {"DefaultModule", "", "-boot=", named + "process get --boot para failed!  try to use default module tresk.\n"
     + written + "WriteProcFile finish\nopen libtresk.so failed:libtresk.so: cannot open shared object file: "
     "No such file or directory\n[255]"},
    {"NoBootstrap", "", "-boot=faults", started + "Error: find BOOT_STRAP symbol from libfaults.so failed!\n[255]"},
    {"NoDirectory", "; unset _APP_SHARE_DIR", "-boot=no_such", named +
     "Error: NORV_ROOT/APP_ROOT env not found!\nstartParam: svc 3 : PID\nwrite svc_3.pid : iOSProcessID:PID\n"
     "WriteProcFile finish\nopen libno_such.so failed:libno_such.so: cannot open shared object file: "
     "No such file or directory\n[255]"},
    {"NoProcessId", faults + "NO_PID=1", "-boot=probe", named + pidDir + "startParam: svc 3 : 0\n"
     "Error: write proc name handle svc 3 but osprocid 0 invalid!\nError: write svc 3 : 0 failed!\n[255]"},
    {"NoMemoryToWrite", faults + "NO_MEMORY_FOR=.pid", "-boot=probe", named + written +
     "Error: write proc name handle svc 3 osprocid PID failed!\nError: write svc 3 : PID failed!\n[255]"},

    // Every SIGTERM is answered once, whatever the interrupted threads are at, and however many there are.
    {"TwoStops", "", "-do=raise,await,print,raise,await,print", answered + "stops 1\n" + answer + "stops 2\n[0]"},
    // All places for threads that are to be interrupted again are taken, and are free again for the main thread's.
    {"CrowdOfThreads", "ON_STOP=hold,await_sleep",
     "-do=raise_on_many_threads,raise_on_many_threads,hold_again,raise,release,sleep_open",
     started + twenty + twenty + twenty + twenty + twenty + twenty + twenty + twenty + served},
    {"LocksInUse", "GLIBC_TUNABLES=glibc.malloc.arena_max=1 ON_STOP=lock,unlock,allocate", "-do=raise_under_fire",
     started + twenty + "[0]", "svc", /*skipsWithTsan=*/true},
    {"RaisedByStop", "ON_STOP=raise_a_second_time", "-do=raise,await", answered + served},
    // The second and the third come while the first is being answered, to a thread that does not wait for it.
    {"PendingCountsOnce", "ON_STOP=hold", "-do=raise,raise,raise,release", answered + served},
    // The interruption that comes while the thread blocks SIGTERM wakes it from its next open sleep, and no other.
    {"OpenInOneCallOnly", "ON_STOP=hold", "-do=block,raise,sleep_open,release,await,sleep,sleep_open,print",
     answered + "stops 1\n[0]"},

    // The interrupted thread finds the stop done, if it can wait for it. If not, it is interrupted again.
    {"FoundDone", "ON_STOP=interrupt,sleep", "-do=raise_to_find_stop_done | grep ^found", "found done\n[0]"},
    {"LockHeld", "", "-do=raise,await,raise_with_lock_held | grep ^went", "went on\n[0]"},
    {"WokenWhenDone", "ON_STOP=hold,await_sleep", "-do=raise,release,sleep_open,print", answered + "stops 1\n[0]"},
    {"OwnHandlerIsNotSetOff", "ON_STOP=own_handler,hold", "-do=raise,release,await,sleep", started + served},

    // It has time of its own while signals come all the time, and the process ends.
    {"StreamOfStops", "ON_STOP=sleep", "-do=stream,await_ten,print | grep -c ^stops", "1\n[0]"},
    {"StreamFromLoading", "WHILE_LOADING=stream ON_STOP=sleep", "-do=expect_few_more | grep ^few", "few more\n[0]"},

    // A stop that has come is finished before Bootstrap begins and before the process ends.
    {"BeforeLoading", faults + "RAISE_BEFORE_LOADING=1 ON_STOP=sleep", "-do=print", answered + "stops 1\n[0]"},
    {"WhileLoading", "WHILE_LOADING=raise ON_STOP=sleep", "-do=print", answered + "stops 1\n[0]"},
    {"BootstrapReturns", "ON_STOP=hold,sleep,interrupt,sleep,print", "-do=see_exit,raise,release",
     answered + "stops 0\ndestroyed\n[0]"},
    {"BootstrapExits", "ON_STOP=await_exit,sleep,sleep,sleep,sleep,sleep,sleep,print",
     "-do=see_exit,raise_on_thread,await_begin,exit", answered + "stops 0, exiting\ndestroyed\n[3]"},
    {"AllHasEnded", faults + "RAISE_LAST=1", "-do=print", started + "stops 0\n[0]"},
    {"DestructorRuns", faults + "RAISE_BEFORE_LOADING=1 ON_STOP=sleep,print", "-do=raise_at_end",
     answered + "stops 0\n" + answer + "stops 1\n[0]"},
    // It leaves a stack that is not unwound; what that owns is no leak.
    {"MainThreadLeaves", "LSAN_OPTIONS=detect_leaks=0 ON_STOP=print", "-do=end_on_thread,leave",
     answered + "stops 0\n" + answer + "stops 1\nthread ends\n[0]", "svc", /*skipsWithTsan=*/true},
    {"NoThreadIsLeft", faults + "NO_THREADS=1 LSAN_OPTIONS=detect_leaks=0", "-do=leave", started + "[0]",
     "svc", /*skipsWithTsan=*/true},
    // But exit(3) waits for ten seconds only, and a StopService that calls it waits for nobody.
    {"StopWaitsForExit", "ON_STOP=join_exit", "-do=see_exit,raise,await", answered + "destroyed\n[3]"},
    {"StopExits", "ON_STOP=hold,sleep,exit", "-do=tell_if_late,see_exit,raise_on_thread,await_begin,release",
     answered + "destroyed\n[3]"},

    // What StopService runs under, and what it leaves behind.
    {"MaskOfInterruptedThread", faults + "BLOCKED=USR2 ON_STOP=print_mask", "-do=block_usr1,unblock_usr2,raise,await",
     answered + "USR1 1, USR2 1\n[0]", "svc", /*skipsWithTsan=*/true},
    {"OwnHandlerCallsLaunchers", "", "-do=call_handler", started + served},
    {"StartBlocked", faults + "BLOCKED=TERM RAISE_INSTALLED=1", "-do=raise,await | grep -c ^stop.the", "2\n[0]"},
    {"NoDescriptorIsLeft", "; exec 3>&-", "-do=print_descriptor", started + "descriptor 3\n[0]"},
    {"Cancelled", "ON_STOP=hold LSAN_OPTIONS=detect_leaks=0", "-do=cancel_interrupted", started + served},
    {"SmallStack", "ON_STOP=hold; ulimit -s 64", "-do=raise,release,await", started + served},
    {"StopFails", "ON_STOP=fail", "-do=lose_buffer,raise", answered + "handle_linux_signal failed.[1]"},
    {"ChildReturnsFromStop", "ON_STOP=fork,fail", "-do=raise,await", answered + "[1]"},
    {"GrandchildReturnsFromStop", "ON_STOP=fork,fail", "-do=fork,raise", answered + "[1]"},
    {"ForkedChildWithoutHandlers", "ON_STOP=exit_41", "-do=fork_without_handlers,raise", answered + "[41]"},
    {"ForkedChildDoesNotWait", "ON_STOP=hold", "-do=raise,await_begin,fork", answered + "[0]"},
    // In a pid namespace of its own it has the id of its parent, which is 1 there too.
    {"ForkedChildWithSameId", R"(ON_STOP=exit_41 COMMAND="unshare --map-root-user --pid --fork --kill-child \
                ./svc -boot=probe -do=enter_pid_namespace,fork,raise >/dev/null; echo \$?")",
     "-do=shell", started + "41\n[0]"},
    {"NobodyReads", "", "-do=close_output,raise,await,raise,await,exit_41", started + "[41]"},
    {"NobodyReadsFailure", "", "-boot=no_stop_service -do=close_output,raise,await", started + "[255]"},
    {"ClosedOutput", R"(COMMAND="./svc -boot=probe -do=open_file,open_file,raise,await <&- >&- 2>&-; cat file")",
     "-do=shell", started + "of the module\n[0]"},
    {"RaisedByStopForOwnHandler", "ON_STOP=own_handler,raise", "-do=raise,await", answered + "[42]"},

    // What is not there.
    {"NoThread", faults + "NO_THREADS=1", "-do=raise,print,raise,print",
     answered + "stops 1\n" + answer + "stops 2\n[0]"},
    {"NoStopService", "", "-boot=no_stop_service -do=raise,await",
     started + received + "Error: find StopService symbol from libno_stop_service.so failed!\n[255]"},
    {"NoModuleYet", faults + "RAISE_INSTALLED=1 STAY_THERE=1", "-do=await", named + pidDir + received + noModule},

    {"Stop", R"(COMMAND="LD_PRELOAD=libfaults.so RAISE_TOO_LATE=1 ./svc -p=3 -s=stop
                echo \$? process \$(cat var/oss_tmp/svc_3.pid)
                ./svc -p=3 -s=stop; echo \$? var/oss_tmp/*")", "-do=block,shell,unblock,await",
     started + found + "stop process PID result -1\n0 process PID\n" +
     found + "delete ./var/oss_tmp/svc_3.pid\nstop process PID result 0\n0 var/oss_tmp/*\n" + served},
    {"StopUnread", R"(COMMAND="mkfifo pipe; exec 3<>pipe 4>pipe 3<&-; ./svc -p=3 -s=stop >&4; echo \$?")",
     "-do=block,shell,unblock,await", started + "0\n" + served},
    {"StopIsStopped", faults + "TSAN_OPTIONS=report_signal_unsafe=0 RAISE_INSTALLED=1" + recorded, "-s=stop",
     notVerified + received + noModule, "./svc"},
    {"StopBlocked", faults + "BLOCKED=TERM RAISE_INSTALLED=1" + recorded, "-s=stop", notVerified + nobody, "./svc"},
    {"StopNobody", "", "-s=stop", stopping + "read ./var/oss_tmp/svc_3.pid : iOSProcessID:0\nError: read proc "
     "name handle svc 3 but osprocid 0 invalid!\nError: read svc 3 failed!\n" + nobody, "./svc"},
    {"StopWithoutName", "", "-s=stop",
     "strProcFilePath://\nstrStdDir , strStdExeName \nstarting to stop procName , procHandle 3\n"
     "please config stop -procName=youProcName [-procHandle=yourProcHandle]\n" + nobody, "//"},
    {"NoMemoryToRead", faults + "NO_MEMORY_FOR=.pid", "-s=stop",
     stopping + "Error: read proc name handle svc 3 osprocid 0 failed!\nError: read svc 3 failed!\n" + nobody, "./svc"},
    {"NoMemoryToVerify", faults + "NO_MEMORY_FOR=cmdline" + recorded, "-s=stop",
     gone + "verify process svc 2147483647 failed!\nError: verify svc 3 failed!\n" + nobody, "./svc"},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(, Process, testing::ValuesIn(rows), [](const auto& row) { return row.param.name; });

}  // namespace

TEST_P(Process, Prints) {
  if (GetParam().name == "ForkedChildWithSameId" && std::system("unshare --map-root-user --pid true") != 0) {
    GTEST_SKIP() << "namespaces are not permitted here";
  }
#ifdef __SANITIZE_THREAD__
  if (GetParam().skipsWithTsan) GTEST_SKIP();
#endif
  EXPECT_EQ(Transcript(GetParam()), GetParam().expected);
}
