// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <random>
#include <vector>

#include "pixel/flood_fill.h"

namespace wib {
namespace {

// An image of one colour with a spare column, and the mask the region goes to.
struct FillImage {
    int width, height;
    std::size_t stride;
    std::vector<std::uint8_t> planes[3];
    std::vector<std::uint8_t> mask;

    FillImage(int w, int h, std::uint8_t grey = 100)
        : width(w), height(h), stride(std::size_t(w) + 1), mask(stride * std::size_t(h), 9) {
        for (auto& plane : planes) {
            plane.assign(stride * std::size_t(h), grey);
        }
    }
    void set(int x, int y, int r, int g, int b) {
        const std::size_t at = std::size_t(y) * stride + x;
        planes[0][at] = std::uint8_t(r);
        planes[1][at] = std::uint8_t(g);
        planes[2][at] = std::uint8_t(b);
    }
    int colour(int c, int x, int y) const { return planes[c][std::size_t(y) * stride + x]; }
    std::size_t fill(int x, int y, RegionRule rule) {
        const RgbPlanes source{
            {planes[0].data(), planes[1].data(), planes[2].data()}, stride, width, height};
        return FindRegion(source, x, y, rule, mask.data(), stride);
    }
    int at(int x, int y) const { return mask[std::size_t(y) * stride + x]; }
};

// The plain breadth-first search the region must agree with.
std::vector<std::uint8_t> ReferenceRegion(const FillImage& image, int sx, int sy,
                                          const RegionRule& rule) {
    const auto matches = [&](int x, int y) {
        int worst = 0;
        for (int c = 0; c < 3; ++c) {
            worst = std::max(worst, std::abs(image.colour(c, x, y) - image.colour(c, sx, sy)));
        }
        return worst <= rule.tolerance;
    };
    std::vector<std::uint8_t> out(std::size_t(image.width * image.height), 0);
    std::deque<std::pair<int, int>> queue{{sx, sy}};
    out[std::size_t(sy * image.width + sx)] = 255;
    while (!queue.empty()) {
        const auto [x, y] = queue.front();
        queue.pop_front();
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                const bool side = (dx == 0) != (dy == 0);
                if (!side && !(rule.eightConnected && dx != 0 && dy != 0)) {
                    continue;
                }
                const int nx = x + dx, ny = y + dy;
                if (nx < 0 || ny < 0 || nx >= image.width || ny >= image.height) {
                    continue;
                }
                auto& cell = out[std::size_t(ny * image.width + nx)];
                if (cell == 0 && matches(nx, ny)) {
                    cell = 255;
                    queue.emplace_back(nx, ny);
                }
            }
        }
    }
    return out;
}

TEST(FloodFill, ToleranceCountsTheLargestChannelDifferenceInclusively) {
    FillImage image(4, 1);
    image.set(1, 0, 110, 100, 100);  // 10 away in red
    image.set(2, 0, 95, 105, 90);    // 10 away in blue, less in the others
    image.set(3, 0, 100, 89, 100);   // 11 away in green
    EXPECT_EQ(image.fill(0, 0, {.tolerance = 10, .contiguous = false}), 3u);
    EXPECT_EQ(image.at(1, 0), 255);
    EXPECT_EQ(image.at(2, 0), 255);
    EXPECT_EQ(image.at(3, 0), 0);
    EXPECT_EQ(image.fill(0, 0, {.tolerance = 9, .contiguous = false}), 1u);
    EXPECT_EQ(image.at(1, 0), 0);
    EXPECT_EQ(image.fill(0, 0, {.tolerance = 11, .contiguous = false}), 4u);
    EXPECT_EQ(image.at(3, 0), 255);
    // The spare column is never written.
    EXPECT_EQ(image.mask[4], 9);
}

TEST(FloodFill, DiagonalGapStopsFourButNotEightConnected) {
    // A one-pixel wall on the anti-diagonal x + y = 4 of an 8 x 8 image.
    FillImage image(8, 8);
    for (int x = 0; x <= 4; ++x) {
        image.set(x, 4 - x, 0, 0, 0);
    }
    // The ten pixels with x + y < 4 lie before the wall.
    EXPECT_EQ(image.fill(0, 0, {.tolerance = 0}), 10u);
    EXPECT_EQ(image.at(3, 0), 255);
    EXPECT_EQ(image.at(4, 1), 0);
    EXPECT_EQ(image.fill(0, 0, {.tolerance = 0, .eightConnected = true}), 64u - 5u);
    EXPECT_EQ(image.at(7, 7), 255);
    EXPECT_EQ(image.at(2, 2), 0);
}

TEST(FloodFill, ContiguousTakesOneBlobAndGlobalTakesEvery) {
    FillImage image(10, 3, 0);
    for (int x : {1, 2, 6, 7, 8}) {
        image.set(x, 1, 200, 200, 200);
    }
    EXPECT_EQ(image.fill(1, 1, {.tolerance = 0}), 2u);
    EXPECT_EQ(image.at(6, 1), 0);
    EXPECT_EQ(image.fill(1, 1, {.tolerance = 0, .contiguous = false}), 5u);
    EXPECT_EQ(image.at(6, 1), 255);
    EXPECT_EQ(image.at(5, 1), 0);
}

TEST(FloodFill, AgreesWithABreadthFirstSearchOnNoisyImages) {
    std::mt19937 random(7);
    for (int trial = 0; trial < 12; ++trial) {
        FillImage image(37, 23);
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const int v = int(random() % 3) * 40;
                image.set(x, y, v, v + int(random() % 5), v);
            }
        }
        const RegionRule rule{.tolerance = trial % 2 == 0 ? 4 : 40,
                              .eightConnected = trial % 3 == 0};
        const int sx = int(random() % 37), sy = int(random() % 23);
        const auto expected = ReferenceRegion(image, sx, sy, rule);
        std::size_t inside = 0;
        image.fill(sx, sy, rule);
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                ASSERT_EQ(image.at(x, y), expected[std::size_t(y * image.width + x)])
                    << "trial " << trial << " at " << x << "," << y;
                inside += expected[std::size_t(y * image.width + x)] ? 1 : 0;
            }
        }
        EXPECT_GT(inside, 0u);
    }
}

TEST(FloodFill, VeryWideAndVeryTallImagesFillWithoutRecursion) {
    FillImage wide(16384, 4);
    EXPECT_EQ(wide.fill(16383, 3, {}), 16384u * 4u);
    EXPECT_EQ(wide.at(0, 0), 255);

    // A serpentine of one-pixel walls with alternating gaps: the region is one
    // long path, the worst case for a recursive fill.
    FillImage tall(64, 16384);
    for (int y = 1; y < tall.height; y += 2) {
        for (int x = 0; x < tall.width; ++x) {
            tall.set(x, y, 0, 0, 0);
        }
        tall.set((y / 2) % 2 == 0 ? 63 : 0, y, 100, 100, 100);
    }
    EXPECT_EQ(tall.fill(0, 0, {}), 64u * 8192u + 8192u);
    EXPECT_EQ(tall.at(5, tall.height - 2), 255);
}

TEST(FloodFill, SeedOutsideTheImageGivesNothing) {
    FillImage image(5, 5);
    EXPECT_EQ(image.fill(5, 0, {}), 0u);
    EXPECT_EQ(image.fill(-1, 2, {}), 0u);
    EXPECT_EQ(image.at(2, 2), 0);
}

}  // namespace
}  // namespace wib
