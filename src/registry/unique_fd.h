#pragma once

#include <unistd.h>

namespace launcher {

/// Owns one file descriptor, or none (a negative number, as open(2) returns on failure).
class UniqueFd {
 public:
  explicit UniqueFd(int fd) noexcept : fd_(fd) {}
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  ~UniqueFd() {
    if (fd_ >= 0) ::close(fd_);  // A failed close has freed the descriptor all the same, and nobody acts on it.
  }

  [[nodiscard]] int Get() const noexcept { return fd_; }

 private:
  int fd_;
};

}  // namespace launcher
