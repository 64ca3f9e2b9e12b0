#pragma once

#include <string>
#include <string_view>

namespace launcher {

// Both read the signed decimal number at the start of a text: white space, an optional sign, digits. They ignore what
// follows. They use no locale, so a module that changes the global one does not change pid records.

/// 0 if there is no number or it does not fit into 32 bits.
[[nodiscard]] int StringToInt(std::string_view text) noexcept;

/// The nearest 32-bit number if it does not fit; 0 if there is no number.
[[nodiscard]] int NearestInt(std::string_view text) noexcept;

/// Decimal digits of `value`, after a "-" if it is negative: no padding, no grouping, whatever the locale.
[[nodiscard]] std::string IntToString(int value);

}  // namespace launcher
