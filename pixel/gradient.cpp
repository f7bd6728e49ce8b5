// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/gradient.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace wib {

namespace {

// The 8 x 8 Bayer index of (x, y): the bits of x ^ y and y interleaved, most
// significant from the lowest bit, so neighbouring thresholds lie far apart.
int BayerIndex(int x, int y) {
    int index = 0;
    const int mixed = x ^ y;
    for (int bit = 0; bit < 3; ++bit) {
        index = (index << 2) | (((mixed >> bit) & 1) << 1) | ((y >> bit) & 1);
    }
    return index;
}

std::uint32_t HashPosition(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t h = x * 0x9E3779B1U ^ (y + 0x7F4A7C15U) * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    h ^= h >> 16;
    h *= 0x7FEB352DU;
    h ^= h >> 15;
    h *= 0x846CA68BU;
    h ^= h >> 16;
    return h;
}

// The threshold added before rounding down, in [0, 1); 0.5 without dither
// rounds to nearest.
double Threshold(GradientDither dither, int x, int y, std::uint32_t seed) {
    switch (dither) {
        case GradientDither::None:
            return 0.5;
        case GradientDither::Ordered:
            return (BayerIndex(x & 7, y & 7) + 0.5) / 64.0;
        case GradientDither::Random:
            return (HashPosition(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y),
                                 seed) >>
                    8) /
                   16777216.0;
    }
    return 0.5;
}

}  // namespace

double GradientPosition(const GradientSpec& spec, double x, double y) {
    const double dx = spec.x1 - spec.x0;
    const double dy = spec.y1 - spec.y0;
    const double length2 = dx * dx + dy * dy;
    if (length2 == 0) {
        return 1.0;
    }
    const double px = x - spec.x0;
    const double py = y - spec.y0;
    const double along = (px * dx + py * dy) / length2;
    const double across = (px * dy - py * dx) / length2;
    double t = 0;
    switch (spec.shape) {
        case GradientShape::Linear:
            t = along;
            break;
        case GradientShape::Reflected:
            t = std::abs(along);
            break;
        case GradientShape::Radial:
            t = std::sqrt((px * px + py * py) / length2);
            break;
        case GradientShape::Diamond:
            t = std::abs(along) + std::abs(across);
            break;
        case GradientShape::Conical: {
            const double angle = std::atan2(-across, along);
            t = angle < 0 ? angle / (2 * std::numbers::pi) + 1.0 : angle / (2 * std::numbers::pi);
            break;
        }
    }
    return std::clamp(t, 0.0, 1.0);
}

void RenderGradient(const GradientSpec& spec, std::uint8_t* r, std::uint8_t* g, std::uint8_t* b,
                    std::size_t stride, int width, int height) {
    std::uint8_t* planes[3] = {r, g, b};
    for (int y = 0; y < height; ++y) {
        const std::size_t offset = static_cast<std::size_t>(y) * stride;
        for (int x = 0; x < width; ++x) {
            const double t = GradientPosition(spec, x, y);
            const double threshold = Threshold(spec.dither, x, y, spec.seed);
            for (int c = 0; c < 3; ++c) {
                const double value = spec.from[c] + (spec.to[c] - spec.from[c]) * t;
                const double out = std::floor(value + threshold);
                planes[c][offset + x] = static_cast<std::uint8_t>(std::clamp(out, 0.0, 255.0));
            }
        }
    }
}

}  // namespace wib
