// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "pixel/blend.h"

namespace wib {
namespace {

TEST(Blend, FormulasAtFixedPoints) {
    EXPECT_EQ(BlendAdd(20, 30), 50);
    EXPECT_EQ(BlendAdd(200, 100), 255);
    EXPECT_EQ(BlendScreen(128, 128), 192);  // 255 - 127 * 127 / 255
    EXPECT_EQ(BlendScreen(0, 77), 77);
    EXPECT_EQ(BlendLighten(3, 9), 9);
    EXPECT_EQ(BlendLighten(9, 3), 9);
    EXPECT_EQ(BlendSubtract(30, 100), 70) << "image minus paint";
    EXPECT_EQ(BlendSubtract(100, 30), 0);
    EXPECT_EQ(BlendDifference(30, 100), 70);
    EXPECT_EQ(BlendDifference(100, 30), 70);
    EXPECT_EQ(BlendMultiply(128, 200), 100);  // 25600 / 255 = 100.39
    EXPECT_EQ(BlendMultiply(255, 200), 200);
    EXPECT_EQ(MaskMix(200, 100, 0), 200);
    EXPECT_EQ(MaskMix(200, 100, 255), 100);
    EXPECT_EQ(MaskMix(200, 100, 51), 180);  // t = 0.2
}

TEST(Blend, TablesHoldEveryResult) {
    for (int p = 0; p < 256; ++p) {
        for (int d = 0; d < 256; ++d) {
            const auto sp = static_cast<std::size_t>(p);
            const auto sd = static_cast<std::size_t>(d);
            ASSERT_EQ(BlendLookup(BlendOp::Add)[sp][sd], p + d > 255 ? 255 : p + d);
            ASSERT_EQ(BlendLookup(BlendOp::Screen)[sp][sd], 255 - (255 - p) * (255 - d) / 255);
            ASSERT_EQ(BlendLookup(BlendOp::Lighten)[sp][sd], p > d ? p : d);
            ASSERT_EQ(BlendLookup(BlendOp::Subtract)[sp][sd], d > p ? d - p : 0);
            ASSERT_EQ(BlendLookup(BlendOp::Difference)[sp][sd], d > p ? d - p : p - d);
            ASSERT_EQ(BlendLookup(BlendOp::Multiply)[sp][sd], p * d / 255);
        }
    }
}

}  // namespace
}  // namespace wib
