#include "stop/process_verification.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>

#include "base/decimal.h"
#include "base/unique_fd.h"

namespace launcher {
namespace {

// The arguments of the process, a NUL behind each; empty for one that is gone, a zombie or a kernel thread (proc(5)).
std::string ReadCommandLine(int pid) {
  const UniqueFd file(::open(("/proc/" + IntToString(pid) + "/cmdline").c_str(), O_RDONLY | O_CLOEXEC));
  std::string commandLine;
  std::array<char, 4096> chunk;
  for (;;) {
    const ssize_t size = ::read(file.Get(), chunk.data(), chunk.size());
    if (size <= 0) return commandLine;
    commandLine.append(chunk.data(), static_cast<std::size_t>(size));
  }
}

// Whether one line of the text contains the name. A name without a line end cannot be found across two of them.
bool HasLineWith(const std::string& text, const std::string& name) {
  return !text.empty() && name.find('\n') == std::string::npos && text.find(name) != std::string::npos;
}

}  // namespace

int VerifyProcNameByProcessID(const std::string& procName, int pid) noexcept {
  try {
    if (HasLineWith(ReadCommandLine(pid), procName)) return 0;
    std::printf("[VerifyProcNameByProcessID]verify process %s %d failed!\n", procName.c_str(), pid);
  } catch (...) {
    std::printf("verify process %s %d failed!\n", procName.c_str(), pid);
  }
  return -1;
}

}  // namespace launcher
