// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "pixel/affine.h"
#include "pixel/lay_over.h"

namespace wib {
namespace {

// A block of three colour planes and its coverage, laid out with a spare
// column as the program's planes are.
struct Block {
    int width;
    int height;
    std::array<std::vector<std::uint8_t>, 3> colour;
    std::vector<std::uint8_t> coverage;

    Block(int w, int h) : width(w), height(h) {
        for (auto& plane : colour) {
            plane.assign(stride() * static_cast<std::size_t>(h), 0);
        }
        coverage.assign(stride() * static_cast<std::size_t>(h), 0);
    }
    std::size_t stride() const { return static_cast<std::size_t>(width) + 1; }
    std::uint8_t& at(int c, int x, int y) {
        auto& plane = c < 3 ? colour[c] : coverage;
        return plane[static_cast<std::size_t>(y) * stride() + x];
    }
    AffineSource source(bool opaque = true) const {
        return {{colour[0].data(), colour[1].data(), colour[2].data()},
                opaque ? nullptr : coverage.data(),
                stride(),
                width,
                height};
    }
    AffineTarget target() {
        return {{colour[0].data(), colour[1].data(), colour[2].data()},
                coverage.data(),
                stride(),
                width};
    }
};

Block RandomBlock(int w, int h, unsigned seed) {
    Block block(w, h);
    std::mt19937 random(seed);
    for (int c = 0; c < 4; ++c) {
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                block.at(c, x, y) = static_cast<std::uint8_t>(random() & 255);
            }
        }
    }
    return block;
}

void Resample(const Block& from, Block& to, const AffineMatrix& m, Sampling sampling,
              bool opaque = true) {
    AffineResample(from.source(opaque), to.target(), m, sampling, 0, to.height);
}

TEST(Affine, IdentityAndQuarterTurnsAreExactCopies) {
    const Block source = RandomBlock(7, 5, 1);
    Block same(7, 5);
    Resample(source, same, AffineMatrix{}, Sampling::Bilinear);
    Block turned(5, 7);
    // Clockwise: target (x, y) shows source (y, height - 1 - x).
    const AffineMatrix clockwise{0, 1, 0, -1, 0, 4};
    EXPECT_TRUE(IsExactCopy(clockwise));
    Resample(source, turned, clockwise, Sampling::Bicubic);
    Block copy = source;
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            for (int c = 0; c < 3; ++c) {
                EXPECT_EQ(same.at(c, x, y), copy.at(c, x, y));
                EXPECT_EQ(turned.at(c, 4 - y, x), copy.at(c, x, y)) << x << "," << y;
            }
            EXPECT_EQ(same.at(3, x, y), 255);
            EXPECT_EQ(turned.at(3, 4 - y, x), 255);
        }
    }
    EXPECT_FALSE(IsExactCopy({0.5, 0, 0, 0, 1, 0}));
    EXPECT_FALSE(IsExactCopy({1, 0, 0.5, 0, 1, 0}));
}

TEST(Affine, BilinearScaleMatchesAnIndependentComputationWithinOne) {
    Block source = RandomBlock(9, 6, 2);
    Block scaled(27, 18);
    // Three times larger, pixel centres kept: source = (target + 0.5) / 3 - 0.5.
    const AffineMatrix m{1 / 3.0, 0, 0.5 / 3 - 0.5, 0, 1 / 3.0, 0.5 / 3 - 0.5};
    Resample(source, scaled, m, Sampling::Bilinear);
    int compared = 0;
    for (int y = 0; y < scaled.height; ++y) {
        for (int x = 0; x < scaled.width; ++x) {
            const double sx = (x + 0.5) / 3 - 0.5;
            const double sy = (y + 0.5) / 3 - 0.5;
            if (sx < 0 || sy < 0 || sx > 8 || sy > 5) {
                continue;
            }
            const int x0 = std::min(static_cast<int>(sx), 7);
            const int y0 = std::min(static_cast<int>(sy), 4);
            const double fx = sx - x0;
            const double fy = sy - y0;
            for (int c = 0; c < 3; ++c) {
                const double top = source.at(c, x0, y0) * (1 - fx) + source.at(c, x0 + 1, y0) * fx;
                const double bottom =
                    source.at(c, x0, y0 + 1) * (1 - fx) + source.at(c, x0 + 1, y0 + 1) * fx;
                const double expected = top * (1 - fy) + bottom * fy;
                EXPECT_NEAR(scaled.at(c, x, y), expected, 1.0) << x << "," << y << " c" << c;
            }
            EXPECT_EQ(scaled.at(3, x, y), 255);
            ++compared;
        }
    }
    EXPECT_EQ(compared, 25 * 16) << "every sample point inside the block was checked";
}

// Wide enough for runs of eight pixels well inside the block and runs that
// cross its edge, turned so that every run steps both ways.
TEST(Affine, ATurnedBlockMatchesAnIndependentBilinearEverywhereInside) {
    const Block source = RandomBlock(70, 50, 4);
    Block turned(70, 50);
    const double radians = 17 * 3.14159265358979 / 180;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    const AffineMatrix m{c, s, 35 - 35 * c - 25 * s, -s, c, 25 + 35 * s - 25 * c};
    Resample(source, turned, m, Sampling::Bilinear);
    Block copy = source;
    int inside = 0;
    int outside = 0;
    for (int y = 0; y < turned.height; ++y) {
        for (int x = 0; x < turned.width; ++x) {
            const double sx = m.xx * x + m.xy * y + m.x0;
            const double sy = m.yx * x + m.yy * y + m.y0;
            if (sx < -1.01 || sy < -1.01 || sx > 70.01 || sy > 50.01) {
                EXPECT_EQ(turned.at(3, x, y), 0) << "nothing lands at " << x << "," << y;
                ++outside;
                continue;
            }
            // Keep clear of the edges, where coverage fades and the fixed-point
            // position may fall either side.
            if (sx < 0.01 || sy < 0.01 || sx > 68.99 || sy > 48.99) {
                continue;
            }
            const int x0 = static_cast<int>(sx);
            const int y0 = static_cast<int>(sy);
            const double fx = sx - x0;
            const double fy = sy - y0;
            for (int k = 0; k < 3; ++k) {
                const double top = copy.at(k, x0, y0) * (1 - fx) + copy.at(k, x0 + 1, y0) * fx;
                const double bottom =
                    copy.at(k, x0, y0 + 1) * (1 - fx) + copy.at(k, x0 + 1, y0 + 1) * fx;
                // Positions are kept to 1/256 pixel: up to half a level a
                // step on each axis, and half a level of rounding.
                EXPECT_NEAR(turned.at(k, x, y), top * (1 - fy) + bottom * fy, 1.5)
                    << x << "," << y << " c" << k;
            }
            EXPECT_EQ(turned.at(3, x, y), 255);
            ++inside;
        }
    }
    EXPECT_GT(inside, 2500);
    EXPECT_GT(outside, 50);
}

TEST(Affine, EdgesFadeInCoverageWithoutDarkening) {
    Block source(4, 4);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            source.at(0, x, y) = 200;
            source.at(1, x, y) = 100;
            source.at(2, x, y) = 50;
        }
    }
    Block out(6, 1);
    // Target x samples source x - 1.5 on row 1: half a pixel beyond the
    // left edge at x = 1, far outside at x = 0.
    Resample(source, out, {1, 0, -1.5, 0, 0, 1}, Sampling::Bilinear);
    EXPECT_EQ(out.at(3, 0, 0), 0);
    EXPECT_NEAR(out.at(3, 1, 0), 128, 1);
    EXPECT_EQ(out.at(0, 1, 0), 200) << "colour of the edge, not mixed with black";
    EXPECT_EQ(out.at(2, 1, 0), 50);
    EXPECT_EQ(out.at(3, 3, 0), 255);
    EXPECT_EQ(out.at(0, 3, 0), 200);
}

TEST(Affine, UncoveredSourcePixelsLendNoColour) {
    Block source(2, 1);
    source.at(0, 0, 0) = 255;  // red, covered
    source.at(3, 0, 0) = 255;
    source.at(1, 1, 0) = 255;  // green, not covered at all
    source.at(3, 1, 0) = 0;
    Block out(1, 1);
    Resample(source, out, {1, 0, 0.5, 0, 1, 0}, Sampling::Bilinear, false);
    EXPECT_EQ(out.at(0, 0, 0), 255);
    EXPECT_EQ(out.at(1, 0, 0), 0);
    EXPECT_NEAR(out.at(3, 0, 0), 128, 1);
}

TEST(Affine, BicubicReproducesARampBetweenItsSamples) {
    Block source(16, 4);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 16; ++x) {
            for (int c = 0; c < 3; ++c) {
                source.at(c, x, y) = static_cast<std::uint8_t>(10 * x + c);
            }
        }
    }
    Block out(10, 1);
    // A quarter pixel to the right, on a row well inside the block.
    Resample(source, out, {1, 0, 2.25, 0, 0, 1}, Sampling::Bicubic);
    for (int x = 0; x < 10; ++x) {
        for (int c = 0; c < 3; ++c) {
            EXPECT_NEAR(out.at(c, x, 0), 10 * (x + 2.25) + c, 0.5) << x;
        }
        EXPECT_EQ(out.at(3, x, 0), 255);
    }
}

TEST(LayOver, MixesOnOpaqueRowsAndComposesOverCoveredOnes) {
    std::uint8_t r[3] = {100, 100, 100}, g[3] = {0, 0, 0}, b[3] = {0, 0, 0};
    const std::uint8_t sr[3] = {200, 200, 200}, sg[3] = {0, 0, 0}, sb[3] = {0, 0, 0};
    const std::uint8_t sa[3] = {0, 255, 51};
    LayOverRow(r, g, b, nullptr, sr, sg, sb, sa, 3);
    EXPECT_EQ(r[0], 100);
    EXPECT_EQ(r[1], 200);
    EXPECT_EQ(r[2], 120);  // 200 * 0.2 + 100 * 0.8

    std::uint8_t cr[3] = {100, 100, 100}, cg[3] = {0, 0, 0}, cb[3] = {0, 0, 0};
    std::uint8_t ca[3] = {0, 255, 255};
    const std::uint8_t half[3] = {128, 128, 0};
    LayOverRow(cr, cg, cb, ca, sr, sg, sb, half, 3);
    EXPECT_EQ(cr[0], 200) << "over nothing, the colour is the source's own";
    EXPECT_EQ(ca[0], 128);
    EXPECT_EQ(cr[1], 150);
    EXPECT_EQ(ca[1], 255);
    EXPECT_EQ(cr[2], 100);
    EXPECT_EQ(ca[2], 255);
}

}  // namespace
}  // namespace wib
