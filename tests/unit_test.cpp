#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <fstream>
#include <tuple>

#include "base/decimal.h"
#include "launcher/launch_context.h"
#include "registry/pid_dir.h"
#include "registry/pid_record.h"
#include "registry/proc_file_manager.h"
#include "scratch.h"
#include "stop/process_verification.h"

using namespace launcher;
using Unit = Scratch;

// clang-format off
TEST_F(Unit, ParametersAreCollectedByKey) {
  const std::pair<std::vector<std::string>, ParamMap> rows[] = {
      {{}, {}},
      {{"-s=1", "-s", "-b=x", "-", "map", "x%n"}, {{"s", {"map", "x%n"}}, {"b", {"x"}}}},
      {{"svc", "", "-S=stop", "-=v", "-s="}, {{"S", {"stop"}}, {"", {"v"}}, {"s", {""}}}},
      {{"svc", "--p", "-5", "---p", "x", "-p=-5=%d"}, {{"p", {"x", "-5=%d"}}, {"5", {}}}},
  };
  for (const auto& [arguments, expected] : rows) {
    ParamMap params;
    ParseParams(arguments, params);
    EXPECT_EQ(params, expected);
  }
}

TEST_F(Unit, ProcessesAreKnownByPathAndParameters) {
  const std::tuple<std::vector<std::string>, std::string, std::string, int> rows[] = {
      // Command line, directory of the executable, process name and handle.
      {{"/bin/java.exe", "-p=3", "-Dprocname=12", "-Dprocname=13"}, "/bin", "12", 12},
      {{"java"}, "", "", 0},
      {{"/svc"}, "", "svc", 0},
      {{"C:\\apps\\svc.exe"}, "C:/apps", "svc", 0},
      {{"/a//b//"}, "/a/", "b", 0},
      {{"\\//"}, "", "", 0},
      {{"a.exe.exe"}, "", "a.exe", 0},
      {{"./.exe"}, ".", "", 0},
      {{"a.EXE"}, "", "a.EXE", 0},
      {{"svc", "-agentlable=8", "-p=3", "-agentlable=5"}, "", "svc", 5},
      {{"svc", "-agentlable", "1", "2", "5", "-p=-3"}, "", "svc", -3},
      {{"svc", "-agentlable=5", "-p", "-3"}, "", "svc", 0},
      {{"svc", "-p=3", "-p=4"}, "", "svc", 0},
      {{"svc", "-Dprocname=other", "-p=1x"}, "", "svc", 1},
  };
  LaunchContext context;
  for (const auto& [arguments, dir, name, handle] : rows) {
    const bool java = arguments.front().find("java") != std::string::npos;
    context.Clear();
    context.SetProcFilePath(arguments.front());
    ParseParams(arguments, context.params);
    context.ResolveProcIdentity();
    context.SetOwnPid();
    EXPECT_EQ(std::tie(context.exeDir, context.procName, context.procHandle), std::tie(dir, name, handle));
    EXPECT_EQ(context.javaFlag, java);
    EXPECT_GE(context.params.contains("Dprocname"), java);
    EXPECT_EQ(context.pid, getpid());
  }
}

TEST_F(Unit, RecordsAreWhereTheEnvironmentSays) {
  const std::tuple<const char*, const char*, std::string> rows[] = {
      {"/opt//app", "/other", "/opt//app/var/oss_tmp/"},
      {"", "/other", "/var/oss_tmp/"},
      {"C:\\app/\\/", nullptr, "C:/app/var/oss_tmp/"},
      {nullptr, "/data/share\\", "/data/share/"},
      {nullptr, "", "/"},
  };
  const auto set = [](auto* name, auto* value) { return value != nullptr ? setenv(name, value, 1) : unsetenv(name); };
  for (const auto& [root, share, dir] : rows) {
    EXPECT_EQ(set("NORV_ROOT", root) + set("_APP_SHARE_DIR", share), 0);
    EXPECT_EQ(GetPidDir(), dir);
  }
}

TEST_F(Unit, NumbersAndRecordsAreRead) {
  const std::string zeros(10'000, '0');
  const std::tuple<std::string, int, int> rows[] = {
      // Text, its number, and what a record of that text holds.
      {" \t\n\v\f\r812\n", 812, 812},
      {"1-2", 1, 1},
      {"7", 7, 7},
      {"+7", 7, 7},
      {"0x1F", 0, 0},
      {"", 0, 0},
      {"+-5", 0, 0},
      {"- 5", 0, 0},
      {"2147483647", INT_MAX, INT_MAX},
      {"2147483648", 0, INT_MAX},
      {"-2147483648", INT_MIN, INT_MIN},
      {"-2147483649", 0, INT_MIN},
      {zeros + "2147483648", 0, INT_MAX},
      {std::string(65534, '0') + "5", 5, 5},
      {std::string(65534, '0') + "56", 56, 0},
  };
  for (const auto& [text, number, recorded] : rows) {
    std::ofstream("record") << text;
    EXPECT_EQ(std::pair(StringToInt(text), ReadPidRecord("record")), std::pair(number, recorded)) << text.substr(0, 40);
  }
  EXPECT_EQ(PidRecordPath("/d/", "a/b", INT_MIN), "/d/a/b_-2147483648.pid");
}
// clang-format on

TEST_F(Unit, RecordsNeverWaitAndNeverFail) {
  ASSERT_EQ(mkfifo("fifo", 0600), 0);
  std::filesystem::create_directory("directory");
  std::filesystem::create_symlink("target", "link");
  std::ofstream("target") << "55555555";
  umask(026);
  using Row = std::tuple<const char*, int, int>;
  for (const auto& [path, before, after] :
       {Row{"fifo", 0, 0}, {"directory", 0, 0}, {"no/way", 0, 0}, {"new", 0, 1234567}, {"link", 55555555, 1234567}}) {
    EXPECT_EQ(ReadPidRecord(path), before) << path;
    WritePidRecord(path, 1234567);
    EXPECT_EQ(ReadPidRecord(path), after) << path;
  }
  struct stat status {};
  ASSERT_EQ(stat("new", &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
  EXPECT_EQ(status.st_size, 7);
  EXPECT_EQ(ProcFileManager::GetInstance()->DeleteProcFile("no such", 3), 0);
  EXPECT_EQ(open("fifo", O_WRONLY | O_NONBLOCK), -1) << "a record was left open";
}

TEST_F(Unit, RecordsAreWholeOrEmpty) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  for (const rlim_t size : {1U, 6U, 7U}) {
    const rlimit limit{size, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    WritePidRecord("record", 1234567);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(std::filesystem::file_size("record"), size == 7 ? 7U : 0U);
  }
}

TEST_F(Unit, ProcessesAreVerifiedByTheirCommandLine) {
  for (const auto& [name, result] : {std::pair{"unit_test", 0}, {"unit_test\n", -1}, {"no such name", -1}}) {
    EXPECT_EQ(VerifyProcNameByProcessID(name, getpid()), result) << name;
  }
  EXPECT_EQ(VerifyProcNameByProcessID("", INT_MAX), -1);
}
