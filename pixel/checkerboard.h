// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "pixel/layer_blend.h"

namespace wib {

// The checkerboard shown where the picture is transparent: squares of
// kCheckerSize pixels, light where (x / size + y / size) is even and dark
// where it is odd, counted in image coordinates so that the squares stay
// with the picture while it scrolls.
inline constexpr int kCheckerSize = 8;
inline constexpr std::uint8_t kCheckerLight = 255;
inline constexpr std::uint8_t kCheckerDark = 204;

// Lays `count` pixels of a composite row (straight colour and coverage), whose
// first pixel is image pixel (x, y), over the checkerboard and writes them as
// opaque 0xAARRGGBB words (B, G, R, A bytes in memory on this machine). Each
// channel is round((a c + (255 - a) k) / 255), k the square's grey.
void CheckerboardRow(LayerRow composite, int x, int y, int count, std::uint32_t* out);

}  // namespace wib
