// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/checkerboard.h"

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define WIB_CHECKER_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define WIB_CHECKER_KERNEL
#endif

namespace wib {

WIB_CHECKER_KERNEL void CheckerboardRow(LayerRow composite, int x, int y, int count,
                                        std::uint32_t* out) {
    // Arithmetic shifts floor, so squares continue evenly left of and above
    // the origin.
    const int rowParity = (y >> 3) & 1;
    static_assert(kCheckerSize == 8);
    for (int i = 0; i < count; ++i) {
        const unsigned grey = (((x + i) >> 3) & 1) == rowParity ? kCheckerLight : kCheckerDark;
        const unsigned a = composite.a[i];
        const unsigned behind = (255 - a) * grey + 127;
        const unsigned r = (a * composite.r[i] + behind) / 255;
        const unsigned g = (a * composite.g[i] + behind) / 255;
        const unsigned b = (a * composite.b[i] + behind) / 255;
        out[i] = 0xFF000000u | r << 16 | g << 8 | b;
    }
}

}  // namespace wib
