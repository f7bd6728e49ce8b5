// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "pixel/colour.h"
#include "pixel/dab.h"

namespace wib {
namespace {

// The per-pixel rules, written out plainly as the reference.
void ReferenceRow(std::vector<std::uint8_t>* planes, std::vector<std::uint8_t>& alpha,
                  const std::vector<std::uint8_t>& mask, int opacity, const std::uint8_t colour[3],
                  bool ignoreAlpha, bool paintOnAlpha, const std::vector<std::uint8_t>* paper,
                  int paperColumn) {
    for (std::size_t i = 0; i < mask.size(); ++i) {
        const int m = mask[i];
        if (m >= 255) {
            continue;
        }
        const int w = 255 - m;
        int s = w * opacity / 255;
        if (!ignoreAlpha) {
            s = alpha[i] * s / 255;
        }
        for (int c = 0; c < 3; ++c) {
            int p = colour[c];
            if (paper != nullptr) {
                const int texture = (*paper)[(paperColumn + i) % paper->size()];
                p = std::clamp(p + texture - 128, 0, 255);
            }
            const int d = planes[c][i];
            planes[c][i] = static_cast<std::uint8_t>((s * p + (255 - s) * d) / 255);
        }
        if (paintOnAlpha) {
            alpha[i] = static_cast<std::uint8_t>(
                std::nearbyint(LinearInterpolate(alpha[i], 255.0, s / 255.0)));
        }
    }
}

TEST(DabRows, MatchThePerPixelRulesOverRandomInputs) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    auto bytes = [&](std::size_t n) {
        std::vector<std::uint8_t> v(n);
        for (auto& x : v) {
            // Weight the ends, where off-by-one errors live.
            const int pick = byte(random);
            x = static_cast<std::uint8_t>(pick < 20 ? 0 : pick > 235 ? 255 : byte(random));
        }
        return v;
    };
    for (int trial = 0; trial < 400; ++trial) {
        const std::size_t n = 1 + static_cast<std::size_t>(byte(random)) % 97;
        const bool ignoreAlpha = trial % 2 == 1;
        const bool paintOnAlpha = trial % 4 >= 2;
        const bool textured = trial % 8 >= 4;
        std::vector<std::uint8_t> planes[3] = {bytes(n), bytes(n), bytes(n)};
        std::vector<std::uint8_t> alpha = bytes(n);
        const std::vector<std::uint8_t> mask = bytes(n);
        const std::vector<std::uint8_t> paper =
            bytes(1 + static_cast<std::size_t>(byte(random)) % 40);
        const int paperColumn = byte(random);
        const int opacity = byte(random);
        const std::uint8_t colour[3] = {static_cast<std::uint8_t>(byte(random)),
                                        static_cast<std::uint8_t>(byte(random)),
                                        static_cast<std::uint8_t>(byte(random))};

        std::vector<std::uint8_t> expected[3] = {planes[0], planes[1], planes[2]};
        std::vector<std::uint8_t> expectedAlpha = alpha;
        ReferenceRow(expected, expectedAlpha, mask, opacity, colour, ignoreAlpha, paintOnAlpha,
                     textured ? &paper : nullptr, paperColumn);

        const DabBlock block{planes[0].data(),
                             planes[1].data(),
                             planes[2].data(),
                             alpha.data(),
                             n,
                             mask.data(),
                             n,
                             static_cast<int>(n),
                             1,
                             opacity,
                             0,
                             0,
                             0,
                             {colour[0], colour[1], colour[2]},
                             ignoreAlpha,
                             paintOnAlpha};
        if (textured) {
            const PaperBlock paperBlock{paper.data(), static_cast<int>(paper.size()), 1, 0,
                                        paperColumn};
            medium_model_helper(block, &paperBlock);
        } else {
            small_model_helper(block);
        }
        for (int c = 0; c < 3; ++c) {
            ASSERT_EQ(planes[c], expected[c]) << "trial " << trial << " channel " << c;
        }
        ASSERT_EQ(alpha, expectedAlpha) << "trial " << trial;
    }
}

TEST(DabRows, FullMaskAndZeroAlphaLeaveThePixel) {
    std::vector<std::uint8_t> r(8, 10), g(8, 20), b(8, 30), alpha(8, 0), mask(8, 0);
    mask[3] = 255;
    const DabBlock block{
        r.data(), g.data(), b.data(), alpha.data(),    8,     mask.data(), 8, 8, 1, 255,
        0,        0,        0,        {200, 200, 200}, false, false};
    small_model_helper(block);
    EXPECT_EQ(r, std::vector<std::uint8_t>(8, 10)) << "alpha 0 stops all paint";
    alpha.assign(8, 255);
    small_model_helper(block);
    EXPECT_EQ(r[3], 10) << "mask 255 is outside the brush";
    EXPECT_EQ(r[2], 200);
}

TEST(DabRows, BlocksStepByTheirStridesAndFadeTowardTheFoot) {
    // A 3 x 4 dab inside an image 6 wide, on a mask with rows of 5.
    std::vector<std::uint8_t> r(6 * 4, 0), g(6 * 4, 0), b(6 * 4, 0), alpha(6 * 4, 255);
    std::vector<std::uint8_t> mask(5 * 4, 0);
    const DabBlock block{r.data() + 1,
                         g.data() + 1,
                         b.data() + 1,
                         alpha.data() + 1,
                         6,
                         mask.data(),
                         5,
                         3,
                         4,
                         255,
                         90,
                         0,
                         3,
                         {255, 255, 255},
                         true,
                         false};
    small_model_helper(block);
    for (int y = 0; y < 4; ++y) {
        const int expected = 255 - 90 * y / 3;
        EXPECT_EQ(DabRowOpacity(block, y), expected);
        EXPECT_EQ(r[static_cast<std::size_t>(y * 6)], 0) << "left of the dab";
        EXPECT_EQ(r[static_cast<std::size_t>(y * 6 + 2)], expected);
        EXPECT_EQ(r[static_cast<std::size_t>(y * 6 + 4)], 0) << "right of the dab";
    }
}

TEST(Colour, HsvRoundTripsAndGreysHaveNoHue) {
    double h, s, v, r, g, b;
    RGB_To_HSV(0.5, 0.5, 0.5, h, s, v);
    EXPECT_EQ(h, -1.0);
    EXPECT_EQ(s, 0.0);
    RGB_To_HSV(1.0, 0.0, 0.0, h, s, v);
    EXPECT_DOUBLE_EQ(h, 0.0);
    RGB_To_HSV(0.0, 0.0, 1.0, h, s, v);
    EXPECT_DOUBLE_EQ(h, 240.0);
    for (int i = 0; i < 1000; ++i) {
        const double in[3] = {(i * 37 % 256) / 255.0, (i * 91 % 256) / 255.0,
                              (i * 13 % 256) / 255.0};
        RGB_To_HSV(in[0], in[1], in[2], h, s, v);
        HSV_To_RGB(h, s, v, r, g, b);
        EXPECT_NEAR(r, in[0], 1e-9);
        EXPECT_NEAR(g, in[1], 1e-9);
        EXPECT_NEAR(b, in[2], 1e-9);
    }
    HSV_To_RGB(480.0, 1.0, 1.0, r, g, b);  // 480 is 120: green
    EXPECT_NEAR(g, 1.0, 1e-12);
    EXPECT_NEAR(r, 0.0, 1e-12);
}

TEST(Colour, RotatePointTurnsAboutTheCentre) {
    double x = 60, y = 50;
    RotatePoint(x, y, 50, 50, 90);
    EXPECT_NEAR(x, 50, 1e-9);
    EXPECT_NEAR(y, 60, 1e-9);
    RotatePoint(x, y, 50, 50, 270);
    EXPECT_NEAR(x, 60, 1e-9);
    EXPECT_NEAR(y, 50, 1e-9);
}

}  // namespace
}  // namespace wib
