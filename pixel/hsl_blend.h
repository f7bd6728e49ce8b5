// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// A straight colour, 0..255 a channel.
struct Rgb8 {
    std::uint8_t r, g, b;
};

// The four blends that work on a whole colour rather than channel by channel,
// with luminosity 0.30 R + 0.59 G + 0.11 B: `paint` is the colour laid on,
// `image` the colour beneath. They work in integers at a hundredth of a
// channel unit and round each channel to the nearest byte at the end.

// The paint's hue with the image's saturation and luminosity.
Rgb8 BlendHue(Rgb8 paint, Rgb8 image);
// The paint's saturation with the image's hue and luminosity.
Rgb8 BlendSaturation(Rgb8 paint, Rgb8 image);
// The paint's hue and saturation with the image's luminosity.
Rgb8 BlendColor(Rgb8 paint, Rgb8 image);
// The paint's luminosity with the image's hue and saturation.
Rgb8 BlendLuminosity(Rgb8 paint, Rgb8 image);

}  // namespace wib
