#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <regex>
#include <utility>
#include <vector>

#include "scratch.h"

namespace {

using Process = Scratch;

// A run of the launcher, with its standard output on a pipe to the test. `name` is argv[0]; `variables`
// and `arguments` are shell text. Modules end by themselves when the test does not see to it.
class Launch {
 public:
  Launch(const std::string& variables, const std::string& name, const std::string& arguments) {
    const std::string shell = "echo $$; export ASAN_OPTIONS=verify_asan_link_order=0 LD_LIBRARY_PATH=" FIXTURES " " +
                              variables + "; exec -a " + name + " " LAUNCHER " " + arguments;
    pipe_ = popen(("exec env -i bash -c '" + shell + "'").c_str(), "r");
    SeesOutput("\n");
    pid = std::stoi(std::exchange(output_, ""));
  }

  // Reads until the output ends with `text`; with an empty text, all of it.
  bool SeesOutput(const std::string& text) {
    for (int byte = 0; (text.empty() || !output_.ends_with(text)) && (byte = std::fgetc(pipe_)) != EOF;) {
      output_ += static_cast<char>(byte);
    }
    return output_.ends_with(text);
  }

  // All output, and the exit status or minus the number of the signal that ended the process.
  std::string Transcript() {
    SeesOutput("");
    const int status = pclose(std::exchange(pipe_, nullptr));
    const int end = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return std::regex_replace(output_, std::regex("\\b" + std::to_string(pid) + "\\b"), "PID") + std::to_string(end);
  }

  pid_t pid = 0;

 private:
  std::FILE* pipe_;
  std::string output_;
};

const std::string identity = "strProcFilePath:svc\nstrStdDir , strStdExeName svc\n";
const std::string dir = "pid dir ./var/oss_tmp/\n";
const std::string registered =
    "startParam: svc 0 : PID\nwrite ./var/oss_tmp/svc_0.pid : iOSProcessID:PID\nWriteProcFile finish\n";
const std::string started = identity + dir + registered;
const std::string answer = "received signal symbol 15\nreceived quit symbol\nstop the service ...\n";
const std::string noPath =
    "received signal symbol 15\nreceived quit symbol\nError: find StopService symbol from  failed!\n";
const std::string readFailed = "Error: read svc 0 failed!\n0 process need to stop ...\n";
const std::string stopping = identity + "starting to stop procName svc, procHandle 0\n";

std::string Repeated(const std::string& text, int times) { return times == 0 ? "" : text + Repeated(text, times - 1); }

}  // namespace

TEST_F(Process, RunsHaveTheirTranscripts) {
  std::filesystem::create_directories("var/oss_tmp");
  const std::string probe = "-boot=probe -do ", faults = "LD_PRELOAD=" FIXTURES "/libfaults.so ";
  const std::string twice = started + answer + "stops 1\n" + answer + "stops 2\n77";
  const std::string longName(100'000, 'x');
  const struct {
    std::string variables, arguments, transcript;
  } rows[] = {
      {"", "-s=dumpMap -s=stop", identity + "todo dumpMap...0"},
      {"", "x - -s dumpStack", identity + "ignore param x!param  invalid!todo dumpStack...0"},
      {"", "-s=%n" + longName, identity + "Error: s param %n" + longName + " unknow!255"},
      {"", "-s", identity + "Error: s param  unknow!255"},
      {"", "-boot probe x -do Arguments", started + "-boot|probe|x|-do|Arguments|6"},
      {"", probe + "Killed", started + "-9"},
      {"", "-boot=",
       identity + "process get --boot para failed!  try to use default module tresk.\n" + dir + registered +
           "open libtresk.so failed:libtresk.so: cannot open shared object file: No such file or directory\n255"},
      {"", "-boot=no_bootstrap", started + "Error: find BOOT_STRAP symbol from libno_bootstrap.so failed!\n255"},
      {"", "-boot=no_stop_service -do Twice",
       started + "received signal symbol 15\nreceived quit symbol\n" +
           "Error: find StopService symbol from libno_stop_service.so failed!\n255"},
      {"", probe + "Twice", twice},
      {faults + "NO_THREADS=1", probe + "Twice", twice},
      {"", probe + "Failing", started + answer + "handle_linux_signal failed.stops 1\n0"},
      {"", probe + "Locked", started + "went on with 0\n" + answer + "stops 1\n0"},
      {"", probe + "Slow", started + answer + answer + "stops 2\n" + answer + "stops 3\n0"},
      {"", probe + "Late", started + answer + "stops 0\n0"},
      {"", probe + "Masked", started + answer + "blocked 110\n0"},
      {"", probe + "Unread", started + "stops 1\n0"},
      {"", probe + "Forked", started + answer + "41"},
      {"", probe + "Default", started + answer + "-15"},
      {"", probe + "Crowd", started + Repeated(answer, 80) + "stops 80\n0"},
      {"RAISE_WHILE_LOADING=1", probe + "Stopped", started + answer + "stops 1\n0"},
      {"", probe + "Released", started + answer + "stops 1\n0"},
      {faults + "NO_MEMORY_FOR=.pid", "-boot=probe",
       started.substr(0, started.find("WriteProc")) +
           "Error: write proc name handle svc 0 osprocid PID failed!\nError: write svc 0 : PID failed!\n255"},
      {faults + "NO_MEMORY_FOR=.pid", "-s=stop",
       stopping + dir + "Error: read proc name handle svc 0 osprocid 0 failed!\n" + readFailed + "0"},
      {faults + "NO_MEMORY_FOR=cmdline; echo 1 >var/oss_tmp/svc_0.pid", "-s=stop",
       stopping + dir + "read ./var/oss_tmp/svc_0.pid : iOSProcessID:1\nverify process svc 1 failed!\n" +
           "Error: verify svc 0 failed!\n0 process need to stop ...\n0"},
      {faults + "RAISE_BEFORE_LOADING=1", probe + "Stopped", started + answer + "stops 1\n0"},
      {faults + "RAISE_AT_INSTALLATION=1", probe + "Twice", identity + dir + noPath + "255"},
      {faults + "RAISE_AT_INSTALLATION=1", "-s=stop", stopping + dir + noPath + "255"},
  };
  for (const auto& row : rows) {
    ASSERT_EQ(Launch("NORV_ROOT=. " + row.variables, "svc", row.arguments).Transcript(), row.transcript);
  }
}

TEST_F(Process, StopsUnderFireAreAnsweredOnceEach) {
  std::vector<std::unique_ptr<Launch>> services(8);
  for (auto& service : services) service = std::make_unique<Launch>("NORV_ROOT=.", "svc", "-boot=probe -do Fire");
  for (auto& service : services) EXPECT_EQ(service->Transcript(), started + Repeated(answer, 25) + "0");
}

TEST_F(Process, StopModeStopsWhomItsRecordNames) {
  std::filesystem::create_directories("var/oss_tmp");
  const std::string root = "NORV_ROOT=" + dir_, record = dir_ + "/var/oss_tmp/svc_3.pid";
  const std::string svc = dir_ + "/bin/svc", stop = "-s=stop -p=3", pidDir = "pid dir " + dir_ + "/var/oss_tmp/\n";
  const std::string head = "strProcFilePath:" + svc + "\nstrStdDir " + dir_ + "/bin, strStdExeName svc\n";
  Launch service(root, svc, "-p=3 -boot=probe -do Wait");
  ASSERT_TRUE(service.SeesOutput("ready\n"));
  const std::string pid = std::to_string(service.pid);
  EXPECT_EQ(ReadFile(record), pid);

  const auto read = [&](const std::string& number) {
    return head + "starting to stop procName svc, procHandle 3\n" + pidDir + "read " + record +
           " : iOSProcessID:" + number + "\n";
  };
  const std::string found =
      read(pid) + "1 process need to stop ...\nstop process pid:" + pid + ":(procName:svc, procHandle:3) ...\n";
  EXPECT_EQ(Launch(root + " LD_PRELOAD=" FIXTURES "/libfaults.so", svc, stop).Transcript(),
            found + "stop process " + pid + " result -1\n0");
  EXPECT_EQ(ReadFile(record), pid);
  EXPECT_EQ(Launch(root, svc, stop).Transcript(),
            found + "delete " + record + "\nstop process " + pid + " result 0\n0");
  EXPECT_FALSE(std::filesystem::exists(record));
  EXPECT_EQ(service.Transcript(), head + pidDir + "startParam: svc 3 : PID\nwrite " + record +
                                      " : iOSProcessID:PID\nWriteProcFile finish\nready\n" + answer + "0");

  const std::string own = std::to_string(getpid());
  WriteFile(record, own);  // of a process that has another name
  EXPECT_EQ(Launch(root, svc, stop).Transcript(),
            read(own) + "[VerifyProcNameByProcessID]verify process svc " + own +
                " failed!\nError: verify svc 3 failed!\n0 process need to stop ...\n0");
  EXPECT_EQ(ReadFile(record), own);
  std::filesystem::remove(record);
  EXPECT_EQ(Launch(root, svc, stop).Transcript(),
            read("0") + "Error: read proc name handle svc 3 but osprocid 0 invalid!\nError: read svc 3 failed!\n" +
                "0 process need to stop ...\n0");
  EXPECT_EQ(Launch(root, "/bin/java", "-s=stop").Transcript(),
            "strProcFilePath:/bin/java\nstrStdDir /bin, strStdExeName java\nstarting to stop procName , procHandle 0\n"
            "please config stop -procName=youProcName [-procHandle=yourProcHandle]\n0 process need to stop ...\n0");
  // Nobody reads the pipe.
  EXPECT_EQ(Launch(root + "; mkfifo pipe; exec 3<>pipe 4>pipe 3<&-", svc, stop + " >&4").Transcript(), "0");
}
