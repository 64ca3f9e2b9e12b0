#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace launcher {

/// Reads one signed decimal number byte by byte: white space, an optional sign, digits. No locale takes part, so a
/// module or library that changes the global one changes no pid record. Takes any amount of input in constant space.
class DecimalReader {
 public:
  /// Takes the next byte of the text. False: the byte cannot continue the number, which is then complete.
  [[nodiscard]] bool Feed(char byte);

  /// The number read so far, the nearest 32-bit number where it does not fit, 0 where no digit was read.
  [[nodiscard]] int Value() const;

  /// Whether Value() is the number itself and not merely the nearest.
  [[nodiscard]] bool Fits() const;

 private:
  [[nodiscard]] std::int64_t Signed() const;

  bool started_ = false;  // past the white space
  bool negative_ = false;
  std::int64_t magnitude_ = 0;
};

/// The number at the start of `text`, as DecimalReader reads it; what follows it is ignored. 0 when there is no number
/// or it does not fit into 32 bits.
[[nodiscard]] int StringToInt(std::string_view text);

/// Decimal digits of `value`, behind a "-" when it is negative: no padding, no grouping, whatever the locale.
[[nodiscard]] std::string IntToString(int value);

}  // namespace launcher
