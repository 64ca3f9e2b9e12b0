#include "registry/decimal.h"

#include <algorithm>
#include <limits>

namespace launcher {
namespace {

constexpr std::int64_t kLowest = std::numeric_limits<int>::min();
constexpr std::int64_t kHighest = std::numeric_limits<int>::max();
constexpr std::int64_t kTooLarge = -kLowest + 1;  // fits with neither sign, and stays clear of overflow times ten

bool IsBlank(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }
bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

}  // namespace

bool DecimalReader::Feed(char byte) {
  if (!started_ && IsBlank(byte)) return true;
  if (!started_ && (byte == '+' || byte == '-')) {
    negative_ = byte == '-';
    started_ = true;
    return true;
  }
  if (!IsDigit(byte)) return false;
  started_ = true;
  magnitude_ = std::min(magnitude_ * 10 + (byte - '0'), kTooLarge);
  return true;
}

std::int64_t DecimalReader::Signed() const { return negative_ ? -magnitude_ : magnitude_; }
int DecimalReader::Value() const { return static_cast<int>(std::clamp(Signed(), kLowest, kHighest)); }
bool DecimalReader::Fits() const { return Signed() == Value(); }

int StringToInt(std::string_view text) {
  DecimalReader reader;
  for (const char byte : text) {
    if (!reader.Feed(byte)) break;
  }
  return reader.Fits() ? reader.Value() : 0;
}

std::string IntToString(int value) { return std::to_string(value); }

}  // namespace launcher
