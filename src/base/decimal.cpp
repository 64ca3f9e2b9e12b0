#include "base/decimal.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace launcher {
namespace {

struct Number {
  int nearest;
  bool fits;
};

Number ReadNumber(std::string_view text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);  // from_chars knows the minus only.
  int value = 0;
  const auto error = std::from_chars(text.data(), text.data() + text.size(), value).ec;
  if (error != std::errc::result_out_of_range) return {value, true};
  return {text.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max(), false};
}

}  // namespace

int StringToInt(std::string_view text) noexcept {
  const Number number = ReadNumber(text);
  return number.fits ? number.nearest : 0;
}

int NearestInt(std::string_view text) noexcept { return ReadNumber(text).nearest; }

std::string IntToString(int value) { return std::to_string(value); }

}  // namespace launcher
