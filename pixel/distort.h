// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "pixel/rounding.h"

namespace wib {

// Three planes of one shape: the image is width x height, rows `stride`
// bytes apart.
struct RgbPlanes {
    const std::uint8_t* planes[3];
    std::size_t stride;
    int width;
    int height;
};
struct RgbTarget {
    std::uint8_t* planes[3];
    std::size_t stride;
};

// The colour at (x, y) between pixel centres, each channel the bilinear mix
// of the four nearest pixels, unrounded; coordinates beyond the image clamp to
// its edge pixels.
inline void BilinearAt(const RgbPlanes& source, double x, double y, double out[3]) {
    x = std::fmin(std::fmax(x, 0.0), source.width - 1.0);
    y = std::fmin(std::fmax(y, 0.0), source.height - 1.0);
    const int x0 = static_cast<int>(x), y0 = static_cast<int>(y);
    const int x1 = x0 + 1 < source.width ? x0 + 1 : x0;
    const int y1 = y0 + 1 < source.height ? y0 + 1 : y0;
    const double fx = x - x0, fy = y - y0;
    const std::size_t top = static_cast<std::size_t>(y0) * source.stride;
    const std::size_t bottom = static_cast<std::size_t>(y1) * source.stride;
    for (int c = 0; c < 3; ++c) {
        const std::uint8_t* p = source.planes[c];
        const double upper = p[top + x0] + (p[top + x1] - p[top + x0]) * fx;
        const double lower = p[bottom + x0] + (p[bottom + x1] - p[bottom + x0]) * fx;
        out[c] = upper + (lower - upper) * fy;
    }
}

// The same, rounded half to even.
inline void SampleBilinear(const RgbPlanes& source, double x, double y, std::uint8_t out[3]) {
    double mix[3];
    BilinearAt(source, x, y, mix);
    for (int c = 0; c < 3; ++c) {
        out[c] = static_cast<std::uint8_t>(RoundHalfEven(mix[c]));
    }
}

// Fills rows first..end-1 of `target`: each pixel takes the source colour at
// the point `map(x, y, sx, sy)` names.
template <typename Map>
void MapRows(const RgbPlanes& source, const RgbTarget& target, int first, int end, Map map) {
    std::uint8_t colour[3];
    for (int y = first; y < end; ++y) {
        const std::size_t row = static_cast<std::size_t>(y) * target.stride;
        for (int x = 0; x < source.width; ++x) {
            double sx = x, sy = y;
            map(x, y, sx, sy);
            SampleBilinear(source, sx, sy, colour);
            for (int c = 0; c < 3; ++c) {
                target.planes[c][row + static_cast<std::size_t>(x)] = colour[c];
            }
        }
    }
}

// The maps below measure from the image centre ((width - 1) / 2,
// (height - 1) / 2); the round ones act within `radius`, half the smaller
// side, and leave the corners outside it as they are.
struct CentreFrame {
    double cx, cy, radius;
    explicit CentreFrame(const RgbPlanes& image)
        : cx((image.width - 1) / 2.0),
          cy((image.height - 1) / 2.0),
          radius(std::fmax(0.5, std::fmin(image.width, image.height) / 2.0)) {}
};

// Turns each point about the centre by `degrees` (1 - d / radius): most at
// the centre, none at the rim.
struct TwirlMap {
    CentreFrame frame;
    double radians;
    void operator()(int x, int y, double& sx, double& sy) const;
};

// Bulges the disc outward (amount > 0) or pinches it (amount < 0), -100..100:
// a point at fraction r of the radius takes the colour at fraction
// r^(2^(amount / 100)).
struct SpherizeMap {
    CentreFrame frame;
    double exponent;
    void operator()(int x, int y, double& sx, double& sy) const;
};

// Concentric rings: a point at distance d takes the colour at distance
// d + amplitude sin(2 pi d / wavelength) in the same direction.
struct RippleMap {
    CentreFrame frame;
    double amplitude, wavelength;
    void operator()(int x, int y, double& sx, double& sy) const;
};

// Waves along both axes: the source lies at (x + amplitude sin(2 pi y /
// wavelength), y + amplitude sin(2 pi x / wavelength)).
struct WaveMap {
    double amplitude, wavelength;
    void operator()(int x, int y, double& sx, double& sy) const;
};

// Rectangular to polar: the column becomes the angle (clockwise from the top)
// and the row the distance from the centre out to the radius; `inverse`
// undoes it.
struct PolarMap {
    CentreFrame frame;
    int width, height;
    bool inverse;
    void operator()(int x, int y, double& sx, double& sy) const;
};

// The source lies at (x + (R - 128) amount / 128, y + (G - 128) amount / 128),
// with R and G of the displacement image at (x, y).
struct DisplaceMap {
    const std::uint8_t* red;
    const std::uint8_t* green;
    std::size_t stride;
    double amount;
    void operator()(int x, int y, double& sx, double& sy) const;
};

// Each `size` x `size` block from (0, 0) becomes the rounded mean of its
// pixels; blocks at the right and bottom edges count only the pixels that
// lie in the image. Fills block rows firstBlock..endBlock-1.
void PixelateRows(const RgbPlanes& source, const RgbTarget& target, int size, int firstBlock,
                  int endBlock);

}  // namespace wib
