// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <variant>

namespace wib {

// A value a command's dialog asks for or a panel control holds: an integer
// (also colours packed as R + 256 G + 65536 B, check boxes as -1 / 0 and
// choices as their position), a number or text.
using ParamValue = std::variant<long long, double, std::string>;

}  // namespace wib
