// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/sharpen.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace wib {

void UnsharpRow(const std::uint8_t* source, const std::uint8_t* blurred, int width, double amount,
                int threshold, std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        const int p = source[x];
        const int difference = p - blurred[x];
        const double sharpened = std::round(p + amount * difference);
        out[x] = std::abs(difference) >= threshold
                     ? static_cast<std::uint8_t>(std::clamp(sharpened, 0.0, 255.0))
                     : static_cast<std::uint8_t>(p);
    }
}

}  // namespace wib
