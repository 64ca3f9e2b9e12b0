// One input, read in every way in which the launcher reads text that others wrote.

#include <sys/mman.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>

#include "launcher/exe_path.h"
#include "launcher/params.h"
#include "registry/decimal.h"
#include "registry/pid_record.h"

using namespace launcher;

#define CHECK(holds) ((holds) ? void() : (std::fprintf(stderr, "does not hold: %s\n", #holds), std::abort()))

template <typename Work>
static std::string OutputOf(Work work) {
  static char text[1 << 20];  // more than any input makes
  std::FILE* const before = std::exchange(stdout, fmemopen(text, sizeof text, "w+"));
  work();
  std::fclose(std::exchange(stdout, before));
  return text;
}

// strtol(3) reads the same form of number, up to a NUL or the end.
static void CheckNumbers(const std::string& text) {
  static const std::string path = "/proc/self/fd/" + std::to_string(memfd_create("record", 0));
  const long number = std::strtol(text.c_str(), nullptr, 10);
  const int nearest = static_cast<int>(std::clamp<long>(number, INT_MIN, INT_MAX));
  std::ofstream(path) << text;
  CHECK(StringToInt(text) == (number == nearest ? nearest : 0) && ReadPidRecord(path) == nearest);
  WritePidRecord(path, nearest);
  CHECK(ReadPidRecord(path) == nearest && StringToInt(IntToString(nearest)) == nearest);
}

// Put together again, the parts are the path less what was dropped.
static void CheckPaths(std::string path) {
  std::string dir, name;
  const std::string line = OutputOf([&] { SplitExePath(path, dir, name); });
  CHECK(line == "strStdDir " + dir + ", strStdExeName " + name + "\n");
  std::replace(path.begin(), path.end(), '\\', '/');
  path.erase(path.find_last_not_of('/') + 1);
  CHECK(name.find('/') == std::string::npos);
  CHECK((path.find('/') < path.size() ? dir + "/" : dir) + name + (path.ends_with(".exe") ? ".exe" : "") == path);
}

// Every element adds one value to one list, opens one or makes one message, and nothing else is in either.
static void CheckParams(const std::vector<std::string>& arguments) {
  ParamMap params, expected;
  std::string messages;
  ParamValues* open = nullptr;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& element = arguments[i];
    const std::string rest = element.substr(std::min(element.find_first_not_of('-'), element.size()));
    const std::size_t equals = rest.find('=');
    if (rest == element) {
      open != nullptr ? open->push_back(element) : void(messages += "ignore param " + element + "!");
    } else if (equals < rest.size()) {
      expected[rest.substr(0, equals)].push_back(rest.substr(equals + 1));
    } else {
      rest.empty() ? void(messages += "param  invalid!") : void(open = &expected[rest]);
    }
  }
  CHECK(OutputOf([&] { ParseParams(arguments, params); }) == messages && params == expected);
}

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  const std::string text(data, size);
  std::vector<std::string> arguments;
  for (std::size_t at = 0; at < size; at += arguments.back().size() + 1) arguments.emplace_back(&text[at]);
  CheckNumbers(text);
  CheckPaths(text.c_str());
  CheckParams(arguments);
  return 0;
}
