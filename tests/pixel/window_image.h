// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "pixel/plane_band.h"

namespace wib::testing {

// A random plane of width x height with a spare column and row, a target of
// the same shape preset to a sentinel, and the plain reference reads.
struct WindowImage {
    static constexpr std::uint8_t kSentinel = 77;

    WindowImage(int w, int h, unsigned seed) : width(w), height(h), stride(w + 1) {
        std::mt19937 random(seed);
        std::uniform_int_distribution<int> value(0, 255);
        source.resize(static_cast<std::size_t>(stride) * (h + 1));
        for (auto& v : source) {
            v = static_cast<std::uint8_t>(value(random));
        }
        target.assign(source.size(), kSentinel);
    }

    // The source pixel at (x, y) with the border replicated.
    int at(int x, int y) const {
        x = std::clamp(x, 0, width - 1);
        y = std::clamp(y, 0, height - 1);
        return source[static_cast<std::size_t>(y * stride + x)];
    }
    int out(int x, int y) const { return target[static_cast<std::size_t>(y * stride + x)]; }

    // Runs `kernel` over the rows in two bands, as the filters split them.
    void run(const std::function<void(const PlaneBand&)>& kernel) {
        const int split = height / 2;
        for (const auto& [first, end] : {std::pair{0, split}, std::pair{split, height}}) {
            kernel(PlaneBand{source.data(), target.data(), static_cast<std::size_t>(stride), width,
                             height, first, end});
        }
    }

    // Every image pixel against `expected(x, y)` within `tolerance`, and the
    // spare column and row untouched.
    void expectEach(const std::function<double(int, int)>& expected, double tolerance = 0) const {
        for (int y = 0; y <= height; ++y) {
            for (int x = 0; x <= width; ++x) {
                if (x == width || y == height) {
                    ASSERT_EQ(out(x, y), kSentinel) << "spare at " << x << "," << y;
                } else {
                    ASSERT_NEAR(out(x, y), expected(x, y), tolerance)
                        << "at " << x << "," << y << " of " << width << "x" << height;
                }
            }
        }
    }

    int width;
    int height;
    int stride;
    std::vector<std::uint8_t> source;
    std::vector<std::uint8_t> target;
};

// The sizes every window kernel is tried on: single pixels, lines, odd shapes,
// rows longer than the chunks a kernel works in.
inline const std::vector<std::pair<int, int>> kWindowSizes = {{1, 1},   {1, 9},  {9, 1},  {7, 5},
                                                              {23, 17}, {64, 3}, {600, 4}};

}  // namespace wib::testing
