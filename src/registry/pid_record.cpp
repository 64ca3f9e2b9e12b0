#include "registry/pid_record.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <memory>

#include "base/decimal.h"
#include "base/unique_fd.h"

namespace launcher {
namespace {

// O_NONBLOCK: open(2) of a FIFO would wait for its other end, that of a leased file for the lease's owner.
// O_NOCTTY: a terminal in a record's place must not become ours.
constexpr int kOpenFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr mode_t kReadWriteForAll = 0666;

// A record has ten digits at most; the rest is for blanks and zeros that somebody has put in front of them by hand. A
// number that is cut off would be that of another process.
constexpr ssize_t kTooLong = 65536;

}  // namespace

std::string PidRecordPath(const std::string& pidDir, const std::string& procName, int procHandle) {
  return pidDir + procName + "_" + IntToString(procHandle) + ".pid";
}

void WritePidRecord(const std::string& path, int pid) {
  const UniqueFd file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | kOpenFlags, kReadWriteForAll));
  const std::string digits = IntToString(pid);
  const ssize_t written = ::write(file.Get(), digits.data(), digits.size());
  // A full disk may leave part of the number, which is another process's id. An empty record names nobody.
  if (written == static_cast<ssize_t>(digits.size())) return;
  [[maybe_unused]] const int result = ::ftruncate(file.Get(), 0);
}

int ReadPidRecord(const std::string& path) {
  const UniqueFd file(::open(path.c_str(), O_RDONLY | kOpenFlags));
  const auto text = std::make_unique_for_overwrite<std::array<char, kTooLong>>();
  // Once only: a second read could go on in the number that another start has meanwhile written in its place.
  const ssize_t size = ::read(file.Get(), text->data(), text->size());
  return size > 0 && size < kTooLong ? NearestInt({text->data(), static_cast<std::size_t>(size)}) : 0;
}

}  // namespace launcher
