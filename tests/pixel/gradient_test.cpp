// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "pixel/gradient.h"

namespace wib {
namespace {

struct GradientImage {
    int width, height;
    std::size_t stride;
    std::vector<std::uint8_t> planes[3];

    GradientImage(const GradientSpec& spec, int w, int h)
        : width(w), height(h), stride(std::size_t(w) + 1) {
        for (auto& plane : planes) {
            plane.assign(stride * std::size_t(h), 0);
        }
        RenderGradient(spec, planes[0].data(), planes[1].data(), planes[2].data(), stride, w, h);
    }
    int at(int c, int x, int y) const { return planes[c][std::size_t(y) * stride + x]; }
};

GradientSpec Spec(GradientShape shape, double x0, double y0, double x1, double y1) {
    GradientSpec spec;
    spec.shape = shape;
    spec.x0 = x0;
    spec.y0 = y0;
    spec.x1 = x1;
    spec.y1 = y1;
    spec.from[0] = 0;
    spec.from[1] = 50;
    spec.from[2] = 200;
    spec.to[0] = 255;
    spec.to[1] = 100;
    spec.to[2] = 0;
    return spec;
}

TEST(Gradient, LinearHitsBothEndsAndIsMonotone) {
    const GradientImage image(Spec(GradientShape::Linear, 10, 20, 90, 20), 100, 30);
    for (int y : {0, 20, 29}) {
        EXPECT_EQ(image.at(0, 10, y), 0);
        EXPECT_EQ(image.at(1, 10, y), 50);
        EXPECT_EQ(image.at(2, 10, y), 200);
        EXPECT_EQ(image.at(0, 90, y), 255);
        EXPECT_EQ(image.at(2, 90, y), 0);
        EXPECT_EQ(image.at(0, 3, y), 0);
        EXPECT_EQ(image.at(0, 97, y), 255);
    }
    // Halfway: 127.5 rounds up, and the blue channel falls as red rises.
    EXPECT_EQ(image.at(0, 50, 4), 128);
    EXPECT_EQ(image.at(2, 50, 4), 100);
    for (int x = 1; x < 100; ++x) {
        EXPECT_GE(image.at(0, x, 7), image.at(0, x - 1, 7));
        EXPECT_LE(image.at(2, x, 7), image.at(2, x - 1, 7));
    }
}

TEST(Gradient, ShapesMeasureTheirOwnDistance) {
    // Start (40, 40), end (80, 40): length 40.
    const auto t = [](GradientShape shape, double x, double y) {
        return GradientPosition(Spec(shape, 40, 40, 80, 40), x, y);
    };
    EXPECT_DOUBLE_EQ(t(GradientShape::Radial, 40, 60), 0.5);
    EXPECT_DOUBLE_EQ(t(GradientShape::Radial, 64, 72), 1.0);
    EXPECT_DOUBLE_EQ(t(GradientShape::Reflected, 20, 3), 0.5);
    EXPECT_DOUBLE_EQ(t(GradientShape::Linear, 20, 3), 0.0);
    EXPECT_DOUBLE_EQ(t(GradientShape::Diamond, 50, 50), 0.5);
    EXPECT_DOUBLE_EQ(t(GradientShape::Diamond, 40, 30), 0.25);
    EXPECT_NEAR(t(GradientShape::Conical, 20, 40.0), 0.5, 1e-12);
    EXPECT_NEAR(t(GradientShape::Conical, 60, 40.0), 0.0, 1e-12);
    // A quarter turn either way from the line's direction.
    EXPECT_NEAR(t(GradientShape::Conical, 40, 60) + t(GradientShape::Conical, 40, 20), 1.0, 1e-12);
    EXPECT_NEAR(std::abs(t(GradientShape::Conical, 40, 60) - t(GradientShape::Conical, 40, 20)),
                0.5, 1e-12);
    // Coinciding ends: the end colour everywhere.
    EXPECT_EQ(GradientPosition(Spec(GradientShape::Linear, 5, 5, 5, 5), 0, 0), 1.0);
}

TEST(Gradient, DitherStaysWithinOneUnitAndRemovesBanding) {
    // Four levels over 1000 pixels: without dither, wide bands.
    GradientSpec spec = Spec(GradientShape::Linear, 0, 0, 999, 0);
    spec.from[0] = 100;
    spec.to[0] = 104;
    for (GradientDither dither : {GradientDither::Ordered, GradientDither::Random}) {
        spec.dither = dither;
        spec.seed = 11;
        const GradientImage image(spec, 1000, 64);
        for (int x = 0; x < 1000; x += 8) {
            const double exact = 100 + 4.0 * x / 999;
            double blockMean = 0;
            for (int y = 0; y < 64; ++y) {
                for (int dx = 0; dx < 8; ++dx) {
                    const double v = 100 + 4.0 * (x + dx) / 999;
                    ASSERT_LT(std::abs(image.at(0, x + dx, y) - v), 1.0);
                    blockMean += image.at(0, x + dx, y) - v;
                }
            }
            // The dithered block averages the exact values closely.
            EXPECT_LT(std::abs(blockMean / 512), dither == GradientDither::Ordered ? 0.03 : 0.1)
                << x << " " << exact;
        }
        EXPECT_EQ(image.at(0, 0, 5), 100);
        EXPECT_EQ(image.at(0, 999, 5), 104);
    }
}

TEST(Gradient, RandomDitherFollowsItsSeedAndBreaksBandsWithoutATile) {
    // One level over 512 columns: column 128 lies at exactly 100.25.
    GradientSpec spec = Spec(GradientShape::Linear, 0, 0, 512, 0);
    spec.from[0] = 100;
    spec.to[0] = 101;
    spec.dither = GradientDither::Random;
    spec.seed = 7;
    const GradientImage image(spec, 513, 512);
    int up = 0;
    for (int y = 0; y < 512; ++y) {
        up += image.at(0, 128, y) - 100;
    }
    // A quarter of 512 rows, well inside four standard deviations (about 10 each).
    EXPECT_GT(up, 128 - 40);
    EXPECT_LT(up, 128 + 40);
    // No 8, 16 or 64 pixel tile repeats down a column.
    for (int period : {8, 16, 64}) {
        int same = 0;
        for (int y = period; y < 512; ++y) {
            same += image.at(0, 128, y) == image.at(0, 128, y - period) ? 1 : 0;
        }
        EXPECT_LT(same, 512 - period) << period;
    }
    const GradientImage again(spec, 513, 512);
    EXPECT_EQ(again.planes[0], image.planes[0]) << "the seed fixes the pattern";
    spec.seed = 8;
    const GradientImage other(spec, 513, 512);
    EXPECT_NE(other.planes[0], image.planes[0]);
}

}  // namespace
}  // namespace wib
