#include "registry/pid_record.h"

#include <fcntl.h>

#include <array>
#include <string_view>

#include "registry/decimal.h"
#include "registry/unique_fd.h"

namespace launcher {
namespace {

// O_NONBLOCK: open(2) of a FIFO would wait for its other end, that of a leased file for the lease's owner.
// O_NOCTTY: a terminal in a record's place must not become ours.
constexpr int kOpenFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr mode_t kReadWriteForAll = 0666;

bool FeedAll(DecimalReader& reader, std::string_view bytes) {
  for (const char byte : bytes) {
    if (!reader.Feed(byte)) return false;
  }
  return true;
}

}  // namespace

std::string PidRecordPath(const std::string& pidDir, const std::string& procName, int procHandle) {
  return pidDir + procName + "_" + IntToString(procHandle) + ".pid";
}

void WritePidRecord(const std::string& path, int pid) {
  const UniqueFd file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | kOpenFlags, kReadWriteForAll));
  const std::string digits = IntToString(pid);
  // Ten bytes go in whole or not at all, and a record that could not be written is no error.
  [[maybe_unused]] const auto written = ::write(file.Get(), digits.data(), digits.size());
}

int ReadPidRecord(const std::string& path) {
  const UniqueFd file(::open(path.c_str(), O_RDONLY | kOpenFlags));
  DecimalReader reader;
  std::array<char, 4096> chunk;
  ssize_t size = 0;
  do {
    size = ::read(file.Get(), chunk.data(), chunk.size());
  } while (size > 0 && FeedAll(reader, {chunk.data(), static_cast<std::size_t>(size)}));
  return reader.Value();
}

}  // namespace launcher
