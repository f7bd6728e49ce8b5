// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>

namespace wib {

// Rounds to the nearest whole number, halves to the even neighbour (2.5 gives
// 2, 3.5 gives 4), as the program's formulas require. Relies on the default
// floating-point rounding mode, which the program never changes.
inline double RoundHalfEvenValue(double value) {
    return std::nearbyint(value);
}

// The same, for values known to fit an int.
inline int RoundHalfEven(double value) {
    return static_cast<int>(RoundHalfEvenValue(value));
}

}  // namespace wib
