#include "registry/pid_dir.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "base/separators.h"

namespace launcher {
namespace {

std::string PidDirUnder(const std::string& root, std::string_view suffix) {
  std::string dir = NormalizeSeparators(root);
  if (!suffix.empty()) dir.append("/").append(suffix);
  return dir + "/";
}

}  // namespace

std::string GetPidDir() {
  const char* suffix = "var/oss_tmp";
  const char* root = std::getenv("NORV_ROOT");
  if (root == nullptr) {
    suffix = "";
    root = std::getenv("_APP_SHARE_DIR");
  }
  if (root == nullptr) {
    std::puts("Error: NORV_ROOT/APP_ROOT env not found!");
    return {};
  }
  std::string dir = PidDirUnder(root, suffix);
  std::printf("pid dir %s\n", dir.c_str());
  return dir;
}

}  // namespace launcher
