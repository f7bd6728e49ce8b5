#pragma once

#include <cmath>

namespace wib {

// Rounds to the nearest integer, halves to the even neighbour (2.5 gives 2,
// 3.5 gives 4), as the program's formulas require. Relies on the default
// floating-point rounding mode, which the program never changes.
inline int RoundHalfEven(double value) {
    return static_cast<int>(std::nearbyint(value));
}

}  // namespace wib
