// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

enum class GradientShape : std::uint8_t { Linear, Radial, Conical, Diamond, Reflected };

// Ordered: an 8 x 8 Bayer threshold; random: a threshold hashed from the pixel
// position and a seed. Either keeps each value within one unit of the exact
// blend and hides the bands a long, shallow gradient shows.
enum class GradientDither : std::uint8_t { None, Ordered, Random };

struct GradientSpec {
    // Pixel (x0, y0) takes `from` and pixel (x1, y1) `to`.
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    GradientShape shape = GradientShape::Linear;
    std::uint8_t from[3] = {0, 0, 0};
    std::uint8_t to[3] = {255, 255, 255};
    GradientDither dither = GradientDither::None;
    std::uint32_t seed = 0;
};

// Where pixel (x, y) lies between the two ends, 0 .. 1 (0 at the start): linear
// and reflected along the line through both ends (reflected mirrored about the
// start), radial by distance from the start, conical by the angle around the
// start from the line's direction, diamond by |along| + |across|. A gradient
// whose two ends coincide is at its end everywhere.
double GradientPosition(const GradientSpec& spec, double x, double y);

// Renders the gradient into three planes of `width` x `height`, `stride` bytes a
// row, blending the stored 8-bit values linearly.
void RenderGradient(const GradientSpec& spec, std::uint8_t* r, std::uint8_t* g, std::uint8_t* b,
                    std::size_t stride, int width, int height);

}  // namespace wib
