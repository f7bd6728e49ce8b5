// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib::bench {

// The obvious way to composite a plain dab: pixel by pixel, as the rules read.
// Built at -O2 as the reference for the row kernels.
void PlainDabPixelLoop(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b, const std::uint8_t* alpha,
                       int stride, const std::uint8_t* mask, int size, int opacity,
                       const std::uint8_t colour[3]);

}  // namespace wib::bench
