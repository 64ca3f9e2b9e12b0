#pragma once

#include <map>
#include <string>
#include <vector>

namespace launcher {

/// The values given for one key, in command-line order.
using ParamValues = std::vector<std::string>;

/// The parameters of a command line by key. Keys are bytes, compared exactly; the empty key is one like any other.
using ParamMap = std::map<std::string, ParamValues>;

/// Adds the parameters in `arguments` to `params`. Ignores the first element, the program path.
///
/// "-key=value" adds one value. "-key" opens the key's list, to which every plain word after it is added until another
/// "-key" opens another. The number of leading dashes does not matter. What fits neither form is reported on standard
/// output, without a line end, and skipped.
void ParseParams(const std::vector<std::string>& arguments, ParamMap& params);

/// The first of `values`, or the empty text when there is none.
[[nodiscard]] std::string GetFirstValue(const ParamValues& values);

}  // namespace launcher
