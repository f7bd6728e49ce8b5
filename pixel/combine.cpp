// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/combine.h"

#include "pixel/rounding.h"

namespace wib {

void BrighterThanSwapMaskRow(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b,
                             const std::uint8_t* sr, const std::uint8_t* sg, const std::uint8_t* sb,
                             int count) {
    for (int x = 0; x < count; ++x) {
        const int m = RoundHalfEven((r[x] + g[x] + b[x]) / 3.0);
        const int s = RoundHalfEven((sr[x] + sg[x] + sb[x]) / 3.0);
        const std::uint8_t v = s <= m ? 255 : 0;
        r[x] = g[x] = b[x] = v;
    }
}

void SwapBrightnessToAlphaRow(std::uint8_t* alpha, const std::uint8_t* sr, const std::uint8_t* sg,
                              const std::uint8_t* sb, int count) {
    for (int x = 0; x < count; ++x) {
        alpha[x] = static_cast<std::uint8_t>(RoundHalfEven((sr[x] + sg[x] + sb[x]) / 3.0));
    }
}

void MergeSwapThroughAlphaRow(std::uint8_t* main, const std::uint8_t* swap,
                              const std::uint8_t* alpha, int count) {
    for (int x = 0; x < count; ++x) {
        const int a = alpha[x];
        const int pale = 255 - (255 - swap[x]) * a / 255;
        main[x] = static_cast<std::uint8_t>((pale * a + main[x] * (255 - a)) / 255);
    }
}

}  // namespace wib
