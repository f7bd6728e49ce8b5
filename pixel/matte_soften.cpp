// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_soften.h"

#include <algorithm>

namespace wib {

void SoftenMatteEdge(const MatteSource& source, const MatteView& target) {
    for (int y = 0; y < source.height; ++y) {
        const int top = std::max(y - 1, 0);
        const int bottom = std::min(y + 1, source.height - 1);
        std::uint8_t* out = target.row(y);
        for (int x = 0; x < source.width; ++x) {
            const int left = std::max(x - 1, 0);
            const int right = std::min(x + 1, source.width - 1);
            int sum = 0;
            for (int v = top; v <= bottom; ++v) {
                const std::uint8_t* in = source.row(v);
                for (int u = left; u <= right; ++u) {
                    sum += in[u];
                }
            }
            const int count = (bottom - top + 1) * (right - left + 1);
            out[x] = static_cast<std::uint8_t>((sum + count / 2) / count);
        }
    }
}

}  // namespace wib
