// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/plain_dab_loop.h"

namespace wib::bench {

void PlainDabPixelLoop(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b, const std::uint8_t* alpha,
                       int stride, const std::uint8_t* mask, int size, int opacity,
                       const std::uint8_t colour[3]) {
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const int m = mask[y * size + x];
            if (m >= 255) {
                continue;
            }
            const int at = y * stride + x;
            int s = (255 - m) * opacity / 255;
            s = alpha[at] * s / 255;
            r[at] = static_cast<std::uint8_t>((s * colour[0] + (255 - s) * r[at]) / 255);
            g[at] = static_cast<std::uint8_t>((s * colour[1] + (255 - s) * g[at]) / 255);
            b[at] = static_cast<std::uint8_t>((s * colour[2] + (255 - s) * b[at]) / 255);
        }
    }
}

}  // namespace wib::bench
