#include <fcntl.h>
#include <sys/stat.h>

#include <climits>
#include <csignal>
#include <locale>
#include <tuple>

#include "host/termination_handler.h"
#include "launcher/launch_context.h"
#include "registry/decimal.h"
#include "registry/pid_record.h"
#include "registry/proc_file_manager.h"
#include "scratch.h"

using namespace launcher;

namespace {

using Unit = Scratch;

struct Grouping : std::numpunct<char> {
  char do_thousands_sep() const override { return ','; }
  std::string do_grouping() const override { return "\1"; }
};

}  // namespace

TEST_F(Unit, NumbersAndRecordsIgnoreTheLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
  const std::string zeros(10'000, '0');
  const std::tuple<std::string, int, int> rows[] = {
      // Text, its number, and what a record of that text holds.
      // clang-format off
      {" \t\n\v\f\r812\n", 812, 812},  {"5 6", 5, 5},  {"1-2", 1, 1},  {"+7", 7, 7},  {"0x1F", 0, 0},  {"1,234", 1, 1},
      {"", 0, 0},  {"abc", 0, 0},  {"+-5", 0, 0},  {"- 5", 0, 0},  {zeros + "42", 42, 42},
      {"2147483647", INT_MAX, INT_MAX},  {"2147483648", 0, INT_MAX},  {zeros + std::string(10'000, '9'), 0, INT_MAX},
      {"-2147483648", INT_MIN, INT_MIN},  {"-2147483649", 0, INT_MIN},  {"5" + std::string(4095, ' ') + "6", 5, 5},
      // clang-format on
  };
  for (const auto& [text, number, recorded] : rows) {
    EXPECT_EQ(StringToInt(text), number) << text.substr(0, 40);
    WriteFile("record", text);
    EXPECT_EQ(ReadPidRecord("record"), recorded) << text.substr(0, 40);
  }
  EXPECT_EQ(PidRecordPath("/d/", "a/b", INT_MIN), "/d/a/b_-2147483648.pid");
  WritePidRecord("record", 1234567);
  EXPECT_EQ(ReadFile("record"), "1234567");
  std::locale::global(before);
}

TEST_F(Unit, RecordsNeverWaitAndNeverFail) {
  ASSERT_EQ(mkfifo("fifo", 0600), 0);
  std::filesystem::create_directory("directory");
  std::filesystem::create_symlink("target", "link");
  WriteFile("target", "55");
  umask(026);
  for (const auto& [path, pid] : {std::pair{"fifo", 0}, {"directory", 0}, {"new", 0}, {"link", 55}, {"no/way", 0}}) {
    EXPECT_EQ(ReadPidRecord(path), pid) << path;
    WritePidRecord(path, 7);
  }
  EXPECT_EQ(ReadFile("target"), "7");
  struct stat status {};
  ASSERT_EQ(stat("new", &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
  EXPECT_EQ(open("fifo", O_WRONLY | O_NONBLOCK), -1) << "a record was left open";
}

TEST_F(Unit, RegistryIsMadeOnce) {
  setenv("NORV_ROOT", "none", 1);
  testing::internal::CaptureStdout();
  ProcFileManager* const registry = ProcFileManager::GetInstance();
  EXPECT_EQ(registry, ProcFileManager::GetInstance());
  EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), handle_linux_signal);
  int pid = 1;
  EXPECT_EQ(registry->WriteProcFile("svc", 3, 0), -1);
  EXPECT_EQ(registry->ReadProcFile("svc", 3, pid), -1);
  EXPECT_EQ(pid, 0);
  EXPECT_EQ(registry->DeleteProcFile("svc", 3), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "pid dir none/var/oss_tmp/\nError: write proc name handle svc 3 but osprocid 0 invalid!\n"
            "read none/var/oss_tmp/svc_3.pid : iOSProcessID:0\n"
            "Error: read proc name handle svc 3 but osprocid 0 invalid!\ndelete none/var/oss_tmp/svc_3.pid\n");
}

TEST_F(Unit, ContextIsFilledAndCleared) {
  LaunchContext context;
  context.SetProcFilePath("/bin/java");
  context.ResolveProcIdentity();
  context.SetOwnPid();
  EXPECT_EQ(std::tie(context.exeDir, context.procName), std::tuple("/bin", ""));
  EXPECT_TRUE(context.javaFlag && context.params.contains("Dprocname") && context.pid == getpid());
  context.procName.push_back('x');
  context.procHandle = 3;
  context.Clear();
  EXPECT_EQ(std::tie(context.exeDir, context.procName, context.javaFlag, context.pid, context.procHandle),
            std::tuple("", "", false, 0, 0));
  EXPECT_TRUE(context.params.empty());
}
