#include "launcher/exe_path.h"

#include <cstdio>
#include <string_view>

#include "base/separators.h"

namespace launcher {

void SplitExePath(const std::string& path, std::string& strStdDir, std::string& strStdExeName) {
  constexpr std::string_view kSuffix = ".exe";
  const std::string rest = NormalizeSeparators(path);
  const auto slash = rest.rfind('/');
  strStdDir = slash == std::string::npos ? std::string() : rest.substr(0, slash);
  strStdExeName = slash == std::string::npos ? rest : rest.substr(slash + 1);
  if (strStdExeName.ends_with(kSuffix)) strStdExeName.resize(strStdExeName.size() - kSuffix.size());
  std::printf("strStdDir %s, strStdExeName %s\n", strStdDir.c_str(), strStdExeName.c_str());
}

}  // namespace launcher
