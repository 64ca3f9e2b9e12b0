#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <regex>

#include "scratch.h"

namespace {

struct Process : Scratch {
  Process() {
    std::filesystem::create_directories("var/oss_tmp");
    std::filesystem::create_symlink(LAUNCHER, "svc");
  }
};

// Starts the launcher: a pipe with its process id in a line of its own, and then all that it prints. `name` is argv[0];
// `variables` and `arguments` are shell text. Modules end by themselves when the test does not see to it.
std::FILE* Start(const std::string& variables, const std::string& name, const std::string& arguments) {
  const std::string shell = "echo $$; FIXTURES=" FIXTURES
                            "; export ASAN_OPTIONS=verify_asan_link_order=0 TSAN_OPTIONS=atexit_sleep_ms=0 "
                            "_APP_SHARE_DIR=./var/oss_tmp LD_LIBRARY_PATH=$FIXTURES " +
                            variables + "; exec -a " + name + " " LAUNCHER " " + arguments;
  return popen(("exec env -i bash -c '" + shell + "'").c_str(), "r");
}

// All output, and the exit status or minus the number of the signal that ended the process.
std::string Transcript(std::FILE* process) {
  std::string pid, output;
  for (int byte = 0; (byte = std::fgetc(process)) != '\n' && byte != EOF;) pid += static_cast<char>(byte);
  for (int byte = 0; (byte = std::fgetc(process)) != EOF;) output += static_cast<char>(byte);
  const int status = pclose(process);
  const int end = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  const std::regex own("( : |iOSProcessID:|osprocid |process |pid:)" + pid + "\\b");
  return std::regex_replace(output, own, "$1PID") + "[" + std::to_string(end) + "]\n";
}

const std::string started =
    "strProcFilePath:svc\nstrStdDir , strStdExeName svc\npid dir ./var/oss_tmp/\nstartParam: svc 0 : PID\n"
    "write ./var/oss_tmp/svc_0.pid : iOSProcessID:PID\nWriteProcFile finish\n";
const std::string answer = "received signal symbol 15\nreceived quit symbol\nstop the service ...\n";

std::string Repeated(const std::string& text, int times) { return times == 0 ? "" : text + Repeated(text, times - 1); }

}  // namespace

TEST_F(Process, RunsHaveTheirTranscripts) {
  const std::regex command("\\$ ((?:\\w+=\\S* )*)(\\S+)(.*)");
  std::ifstream file(TRANSCRIPTS);
  std::string line, expected, found;
  while (std::getline(file, line)) {
    if (line.empty() || line.starts_with('#')) continue;
    if (std::smatch parts; std::regex_match(line, parts, command)) {
      ASSERT_EQ(found, expected);
      found = line + "\n" + Transcript(Start(parts[1], parts[2], parts[3]));
      expected.clear();
    }
    expected += line + "\n";
  }
  EXPECT_EQ(found, expected);
  EXPECT_NE(found, "") << "there are no transcripts";
}

TEST_F(Process, StopsUnderFireAreAnsweredOnceEachInTurn) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer holds signals back, and merges what the kernel would deliver one by one";
#endif
  std::FILE* services[8];
  for (std::FILE*& service : services) service = Start("", "svc", "-boot=probe -do Fire");
  for (std::FILE* service : services) EXPECT_EQ(Transcript(service), started + Repeated(answer, 25) + "[0]\n");
  EXPECT_EQ(Transcript(Start("", "svc", "-boot=probe -do Crowd")),
            started + Repeated(answer, 1160) + "stops 1160\n[0]\n");
  EXPECT_EQ(Transcript(Start("", "svc", "-boot=probe -do Queue")),
            started + answer + "00\n" + answer + "00\n" + answer + "00\n" + answer + "00\n[0]\n");
}
