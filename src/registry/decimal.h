#pragma once

#include <string>
#include <string_view>

namespace launcher {

// Both read the signed decimal number at the start of a text: white space, one sign if any, digits; what follows is
// ignored. No locale takes part, so a module or library that changes the global one changes no pid record.

/// 0 where there is no number or it does not fit into 32 bits.
[[nodiscard]] int StringToInt(std::string_view text) noexcept;

/// The nearest 32-bit number where it does not fit; 0 where there is no number.
[[nodiscard]] int NearestInt(std::string_view text) noexcept;

/// Decimal digits of `value`, behind a "-" when it is negative: no padding, no grouping, whatever the locale.
[[nodiscard]] std::string IntToString(int value);

}  // namespace launcher
