#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <regex>
#include <utility>
#include <vector>

#include "scratch.h"

namespace {

struct Process : Scratch {
  Process() { std::filesystem::create_directories("var/oss_tmp"); }
};

// A run of the launcher, with its standard output on a pipe to the test. `name` is argv[0]; `variables`
// and `arguments` are shell text. Modules end by themselves when the test does not see to it.
class Launch {
 public:
  Launch(const std::string& variables, const std::string& name, const std::string& arguments) {
    const std::string shell = "echo $$; FIXTURES=" FIXTURES
                              "; export ASAN_OPTIONS=verify_asan_link_order=0 TSAN_OPTIONS=atexit_sleep_ms=0 "
                              "_APP_SHARE_DIR=./var/oss_tmp LD_LIBRARY_PATH=$FIXTURES " +
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
    const std::regex own("( : |iOSProcessID:|osprocid )" + std::to_string(pid) + "\\b");
    return std::regex_replace(output_, own, "$1PID") + "[" + std::to_string(end) + "]\n";
  }

  pid_t pid = 0;

 private:
  std::FILE* pipe_;
  std::string output_;
};

const std::string started =
    "strProcFilePath:svc\nstrStdDir , strStdExeName svc\npid dir ./var/oss_tmp/\nstartParam: svc 0 : PID\n"
    "write ./var/oss_tmp/svc_0.pid : iOSProcessID:PID\nWriteProcFile finish\n";
const std::string answer = "received signal symbol 15\nreceived quit symbol\nstop the service ...\n";

std::string Repeated(const std::string& text, int times) { return times == 0 ? "" : text + Repeated(text, times - 1); }

}  // namespace

TEST_F(Process, RunsHaveTheirTranscripts) {
  WriteFile("var/oss_tmp/svc_9.pid", "1");
  const std::regex command("\\$ ((?:\\w+=\\S* )*)(\\S+)(.*)");
  std::ifstream file(TRANSCRIPTS);
  std::string line, expected, found;
  while (std::getline(file, line)) {
    if (line.empty() || line.starts_with('#')) continue;
    if (std::smatch parts; std::regex_match(line, parts, command)) {
      ASSERT_EQ(found, expected);
      found = line + "\n" + Launch(parts[1], parts[2], parts[3]).Transcript();
      expected.clear();
    }
    expected += line + "\n";
  }
  EXPECT_EQ(found, expected);
  EXPECT_NE(found, "") << "there are no transcripts";
  EXPECT_EQ(ReadFile("var/oss_tmp/svc_9.pid"), "1");
  EXPECT_EQ(Launch("; unset _APP_SHARE_DIR", "java", "-Dprocname=svc -boot=probe -do Arguments").Transcript(),
            "strProcFilePath:java\nstrStdDir , strStdExeName java\nError: NORV_ROOT/APP_ROOT env not found!\n"
            "startParam: svc 0 : PID\nwrite svc_0.pid : iOSProcessID:PID\nWriteProcFile finish\n"
            "-Dprocname=svc|-boot=probe|-do|Arguments|[5]\n");
  const std::string longMode(100'000, 'x');
  EXPECT_EQ(Launch("", "svc", "-s=" + longMode).Transcript(),
            "strProcFilePath:svc\nstrStdDir , strStdExeName svc\nError: s param " + longMode + " unknow![255]\n");
}

TEST_F(Process, StopsUnderFireAreAnsweredOnceEachInTurn) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer holds signals back, and merges what the kernel would deliver one by one";
#endif
  std::vector<std::unique_ptr<Launch>> services(8);
  for (auto& service : services) service = std::make_unique<Launch>("", "svc", "-boot=probe -do Fire");
  for (auto& service : services) EXPECT_EQ(service->Transcript(), started + Repeated(answer, 25) + "[0]\n");
  EXPECT_EQ(Launch("", "svc", "-boot=probe -do Crowd").Transcript(),
            started + Repeated(answer, 81) + "stops 81\n[0]\n");
  EXPECT_EQ(Launch("", "svc", "-boot=probe -do Queue").Transcript(),
            started + answer + "00\n" + answer + "10\n" + answer + "01\n[0]\n");
}

TEST_F(Process, AStartAndItsStop) {
  const std::string record = "var/oss_tmp/svc_3.pid", stop = "-s=stop -p=3";
  Launch service("", "./svc", "-p=3 -boot=probe -do Wait");
  ASSERT_TRUE(service.SeesOutput("ready\n"));
  const std::string pid = std::to_string(service.pid);
  EXPECT_EQ(ReadFile(record), pid);
  const std::string found =
      "strProcFilePath:./svc\nstrStdDir ., strStdExeName svc\n"
      "starting to stop procName svc, procHandle 3\npid dir ./var/oss_tmp/\n"
      "read ./" +
      record + " : iOSProcessID:" + pid +
      "\n1 process need to stop ...\n"
      "stop process pid:" +
      pid + ":(procName:svc, procHandle:3) ...\n";
  EXPECT_EQ(Launch("LD_PRELOAD=$FIXTURES/libfaults.so", "./svc", stop).Transcript(),
            found + "stop process " + pid + " result -1\n[0]\n");
  EXPECT_EQ(ReadFile(record), pid);
  EXPECT_EQ(Launch("", "./svc", stop).Transcript(),
            found + "delete ./" + record + "\nstop process " + pid + " result 0\n[0]\n");
  EXPECT_FALSE(std::filesystem::exists(record));
  EXPECT_EQ(service.Transcript(),
            "strProcFilePath:./svc\nstrStdDir ., strStdExeName svc\npid dir ./var/oss_tmp/\n"
            "startParam: svc 3 : PID\nwrite ./" +
                record + " : iOSProcessID:PID\nWriteProcFile finish\nready\n" + answer + "[0]\n");
  // Into a pipe that nobody reads.
  EXPECT_EQ(Launch("; mkfifo pipe; exec 3<>pipe 4>pipe 3<&-", "svc", stop + " >&4").Transcript(), "[0]\n");
}
