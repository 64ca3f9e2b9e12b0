#include "launcher/exe_path.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace launcher {

void SplitExePath(const std::string& path, std::string& strStdDir, std::string& strStdExeName) {
  constexpr std::string_view kSuffix = ".exe";
  std::string rest = path;
  std::replace(rest.begin(), rest.end(), '\\', '/');
  rest.erase(rest.find_last_not_of('/') + 1);

  const auto slash = rest.rfind('/');
  strStdDir = slash == std::string::npos ? std::string() : rest.substr(0, slash);
  strStdExeName = slash == std::string::npos ? rest : rest.substr(slash + 1);
  if (strStdExeName.ends_with(kSuffix)) strStdExeName.resize(strStdExeName.size() - kSuffix.size());
  std::printf("strStdDir %s, strStdExeName %s\n", strStdDir.c_str(), strStdExeName.c_str());
}

}  // namespace launcher
