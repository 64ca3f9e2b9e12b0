#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// Runs each test in an empty directory of its own.
class Scratch : public testing::Test {
 protected:
  Scratch() { std::filesystem::current_path(mkdtemp(dir_.data())); }
  ~Scratch() override {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(dir_);
  }

 private:
  std::string dir_ = testing::TempDir() + "launcher-XXXXXX";
};
