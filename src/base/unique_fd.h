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
    if (fd_ >= 0) ::close(fd_);  // A close that fails frees the descriptor all the same.
  }

  [[nodiscard]] int Get() const noexcept { return fd_; }

 private:
  int fd_;
};

}  // namespace launcher
