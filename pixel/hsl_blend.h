// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "pixel/layer_blend.h"

namespace wib {

// A straight colour, 0..255 a channel.
struct Rgb8 {
    std::uint8_t r, g, b;
};

// The blends that work on a whole colour rather than channel by channel (hue,
// saturation, color and luminosity, with luminosity 0.30 R + 0.59 G +
// 0.11 B): B(image, paint) of `count` pixels into the three rows of `out`,
// giving 0 where the paint's coverage is 0. They work in integers at a
// hundredth of a channel unit and round each channel to the nearest byte at
// the end.
void BlendWholeColourRow(BlendMode mode, LayerRow paint, CompositeRow image,
                         std::uint8_t* const out[3], int count);

}  // namespace wib
