#include "launcher/params.h"

#include <algorithm>
#include <cstdio>

namespace launcher {
namespace {

// The element without its leading dashes.
std::string Undashed(const std::string& element) {
  return element.substr(std::min(element.find_first_not_of('-'), element.size()));
}

}  // namespace

void ParseParams(const std::vector<std::string>& arguments, ParamMap& params) {
  ParamValues* open = nullptr;  // A map's nodes stay where they are while others are inserted.
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string& element = arguments[i];
    if (!element.starts_with('-')) {
      if (open != nullptr) {
        open->push_back(element);
      } else {
        std::printf("ignore param %s!", element.c_str());
      }
      continue;
    }
    const std::string remainder = Undashed(element);
    if (const auto equals = remainder.find('='); equals != std::string::npos) {
      params[remainder.substr(0, equals)].push_back(remainder.substr(equals + 1));
    } else if (remainder.empty()) {
      std::printf("param %s invalid!", remainder.c_str());
    } else {
      open = &params[remainder];
    }
  }
}

std::string GetFirstValue(const ParamValues& values) { return values.empty() ? std::string() : values.front(); }

}  // namespace launcher
