// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "pixel/blend.h"
#include "pixel/checkerboard.h"
#include "pixel/layer_composite.h"

namespace wib {
namespace {

// Four planes of `width` x `height`, rows `stride` bytes apart, each filled
// with one value.
struct Planes {
    int stride;
    std::vector<std::uint8_t> r, g, b, a;

    Planes(int width, int height, std::array<int, 4> fill)
        : stride(width + 3),
          r(Size(height), static_cast<std::uint8_t>(fill[0])),
          g(Size(height), static_cast<std::uint8_t>(fill[1])),
          b(Size(height), static_cast<std::uint8_t>(fill[2])),
          a(Size(height), static_cast<std::uint8_t>(fill[3])) {}
    std::size_t Size(int height) const { return static_cast<std::size_t>(stride * height); }
    LayerPlanes layer(BlendMode mode, int opacity) const {
        return {r.data(),
                g.data(),
                b.data(),
                a.data(),
                stride,
                mode,
                static_cast<std::uint8_t>(opacity)};
    }
    CompositePlanes target() { return {r.data(), g.data(), b.data(), a.data(), stride}; }
    std::array<int, 4> at(int x, int y) const {
        const auto i = static_cast<std::size_t>(y * stride + x);
        return {r[i], g[i], b[i], a[i]};
    }
};

using Pixel = std::array<int, 4>;

TEST(CompositeRect, LaysEveryLayerBottomFirstInsideTheRectOnly) {
    const int w = 40;
    const int h = 12;
    const Planes bottom(w, h, {200, 100, 50, 255});
    Planes top(w, h, {128, 255, 0, 255});
    top.a[static_cast<std::size_t>(5 * top.stride + 20)] = 0;  // a hole in the top layer
    const Planes hidden(w, h, {1, 2, 3, 255});
    const LayerPlanes layers[] = {bottom.layer(BlendMode::Normal, 255),
                                  top.layer(BlendMode::Multiply, 255),
                                  hidden.layer(BlendMode::Normal, 0)};
    Planes out(w, h, {9, 9, 9, 9});
    CompositeRect(layers, out.target(), {3, 2, 30, 7});
    // 200 * 128 / 255 = 100.4, 100 * 255 / 255, 50 * 0.
    EXPECT_EQ(out.at(3, 2), (Pixel{100, 100, 0, 255}));
    EXPECT_EQ(out.at(32, 8), (Pixel{100, 100, 0, 255}));
    EXPECT_EQ(out.at(20, 5), (Pixel{200, 100, 50, 255}));
    EXPECT_EQ(out.at(2, 2), (Pixel{9, 9, 9, 9}));
    EXPECT_EQ(out.at(33, 2), (Pixel{9, 9, 9, 9}));
    EXPECT_EQ(out.at(3, 1), (Pixel{9, 9, 9, 9}));
    EXPECT_EQ(out.at(3, 9), (Pixel{9, 9, 9, 9}));
}

TEST(CompositeRect, StartsFromTransparent) {
    Planes out(10, 4, {9, 9, 9, 9});
    CompositeRect({}, out.target(), {0, 0, 10, 4});
    EXPECT_EQ(out.at(0, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(out.at(9, 3), (Pixel{0, 0, 0, 0}));

    // A half-covered layer alone keeps its colour and its coverage.
    const Planes half(10, 4, {30, 60, 90, 255});
    const LayerPlanes layers[] = {half.layer(BlendMode::Screen, 128)};
    CompositeRect(layers, out.target(), {0, 0, 10, 4});
    EXPECT_EQ(out.at(4, 2), (Pixel{30, 60, 90, 128}));
}

std::uint32_t Word(int r, int g, int b) {
    return 0xFF000000u | static_cast<std::uint32_t>(r << 16 | g << 8 | b);
}

TEST(Checkerboard, SquaresOfEightInImageCoordinates) {
    const std::vector<std::uint8_t> zero(40, 0);
    const LayerRow clear{zero.data(), zero.data(), zero.data(), zero.data()};
    std::vector<std::uint32_t> out(40);
    const std::uint32_t light = Word(kCheckerLight, kCheckerLight, kCheckerLight);
    const std::uint32_t dark = Word(kCheckerDark, kCheckerDark, kCheckerDark);

    CheckerboardRow(clear, 0, 0, 20, out.data());
    EXPECT_EQ(out[0], light);
    EXPECT_EQ(out[7], light);
    EXPECT_EQ(out[8], dark);
    EXPECT_EQ(out[15], dark);
    EXPECT_EQ(out[16], light);

    // Row 8 starts dark; a row begun at x = 5 meets the edge at its fourth pixel.
    CheckerboardRow(clear, 0, 8, 1, out.data());
    EXPECT_EQ(out[0], dark);
    CheckerboardRow(clear, 5, 15, 4, out.data());
    EXPECT_EQ(out[2], dark);
    EXPECT_EQ(out[3], light);

    // Left of the origin the squares carry on evenly.
    CheckerboardRow(clear, -9, 0, 10, out.data());
    EXPECT_EQ(out[0], light);  // x = -9
    EXPECT_EQ(out[1], dark);   // x = -8
    EXPECT_EQ(out[8], dark);   // x = -1
    EXPECT_EQ(out[9], light);  // x = 0
}

TEST(Checkerboard, CoverageMixesTheColourWithTheSquare) {
    const std::vector<std::uint8_t> r = {10, 0, 0, 250};
    const std::vector<std::uint8_t> g = {20, 0, 0, 250};
    const std::vector<std::uint8_t> b = {30, 0, 0, 250};
    const std::vector<std::uint8_t> a = {255, 128, 128, 51};
    std::vector<std::uint32_t> out(4);
    // Pixels 0..3 at x = 6..9: light, light, dark, dark.
    CheckerboardRow({r.data(), g.data(), b.data(), a.data()}, 6, 0, 4, out.data());
    EXPECT_EQ(out[0], Word(10, 20, 30));
    // 127 / 255 of white is 127 exactly; of 204, 101.6.
    EXPECT_EQ(out[1], Word(127, 127, 127));
    EXPECT_EQ(out[2], Word(102, 102, 102));
    // 0.2 * 250 + 0.8 * 204 = 213.2.
    EXPECT_EQ(out[3], Word(213, 213, 213));
}

// The soft light curve against the curve's own definition in doubles.
TEST(Blend, SoftLightCurveIsRoundedWithinHalfAUnit) {
    for (int i = 0; i < 256; ++i) {
        const double x = i / 255.0;
        const double d = x <= 0.25 ? ((16 * x - 12) * x + 4) * x : std::sqrt(x);
        EXPECT_NEAR(kSoftLightCurve[static_cast<std::size_t>(i)], d * 255 * 256, 0.5001) << i;
    }
}

}  // namespace
}  // namespace wib
