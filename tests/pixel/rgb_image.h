// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "pixel/distort.h"

namespace wib::testing {

// A width x height image of random colours with a spare column and row that
// hold a marker value, and a target of the same shape.
struct RgbImage {
    int width, height;
    std::size_t stride;
    std::vector<std::uint8_t> planes[3];
    std::vector<std::uint8_t> out[3];

    RgbImage(int w, int h, unsigned seed) : width(w), height(h), stride(std::size_t(w) + 1) {
        std::mt19937 random(seed);
        for (int c = 0; c < 3; ++c) {
            planes[c].resize(stride * std::size_t(h + 1));
            for (auto& v : planes[c]) {
                v = static_cast<std::uint8_t>(random());
            }
            out[c].assign(planes[c].size(), 7);
        }
    }
    RgbPlanes source() const {
        return {{planes[0].data(), planes[1].data(), planes[2].data()}, stride, width, height};
    }
    RgbTarget target() { return {{out[0].data(), out[1].data(), out[2].data()}, stride}; }
    int in(int c, int x, int y) const { return planes[c][std::size_t(y) * stride + x]; }
    int result(int c, int x, int y) const { return out[c][std::size_t(y) * stride + x]; }

    // Plain bilinear reading: clamp, then weigh the four neighbours.
    double sample(int c, double x, double y) const {
        x = std::clamp(x, 0.0, width - 1.0);
        y = std::clamp(y, 0.0, height - 1.0);
        const int x0 = int(std::floor(x)), y0 = int(std::floor(y));
        const int x1 = std::min(x0 + 1, width - 1), y1 = std::min(y0 + 1, height - 1);
        const double fx = x - x0, fy = y - y0;
        return in(c, x0, y0) * (1 - fx) * (1 - fy) + in(c, x1, y0) * fx * (1 - fy) +
               in(c, x0, y1) * (1 - fx) * fy + in(c, x1, y1) * fx * fy;
    }
};

}  // namespace wib::testing
