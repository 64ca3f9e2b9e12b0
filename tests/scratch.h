#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline std::string ReadFile(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}
inline void WriteFile(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

/// A fixture in an empty directory of its own, with a deadline for whatever it waits for.
class Scratch : public testing::Test {
 protected:
  Scratch() {
    alarm(100);
    std::string dir = testing::TempDir() + "launcher-XXXXXX";
    std::filesystem::current_path(dir_ = mkdtemp(dir.data()));
  }
  ~Scratch() override {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(dir_);
  }

 private:
  std::string dir_;
};
