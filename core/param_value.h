// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <variant>
#include <vector>

namespace wib {

// A list of integers, such as a convolution kernel row by row.
using IntegerList = std::vector<long long>;

// A value a command's dialog asks for or a panel control holds: an integer
// (also colours packed as R + 256 G + 65536 B, check boxes as -1 / 0 and
// choices as their position), a number, text or a list of integers.
using ParamValue = std::variant<long long, double, std::string, IntegerList>;

}  // namespace wib
