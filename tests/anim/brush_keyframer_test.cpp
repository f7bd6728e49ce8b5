// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/brush_keyframer.h"

#include <gtest/gtest.h>

namespace wib {
namespace {

float At(const BrushKeyframer& keys, BrushKey key, int frame, int channel = 0) {
    const auto values = keys.valuesAt(key, frame);
    return values ? (*values)[static_cast<std::size_t>(channel)] : -1.0f;
}

TEST(BrushKeyframer, LinearSizeBetweenKeysAndHeldOutside) {
    BrushKeyframer keys;
    EXPECT_FALSE(keys.valuesAt(BrushKey::Size, 3)) << "no keys: the panel's value stands";
    keys.addKey(BrushKey::Size, 4, {30});
    keys.addKey(BrushKey::Size, 0, {10});
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Size, 1), 15);
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Size, 2), 20);
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Size, 3), 25);
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Size, 9), 30) << "after the last key the curve holds";
    keys.addKey(BrushKey::Size, 4, {50});
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Size, 2), 30) << "a key replaces the one on its frame";
    keys.deleteKey(BrushKey::Size, 0);
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Size, 1), 50) << "before the first key it holds too";
    EXPECT_FALSE(keys.valuesAt(BrushKey::Opacity, 1)) << "each parameter has its own keys";
}

TEST(BrushKeyframer, CatmullRomPassesThroughTheKeysAndCurves) {
    BrushKeyframer keys;
    keys.addKey(BrushKey::Angle, 0, {0});
    keys.addKey(BrushKey::Angle, 4, {100});
    keys.addKey(BrushKey::Angle, 8, {0});
    keys.setSpline(BrushKey::Angle, true);
    EXPECT_NEAR(At(keys, BrushKey::Angle, 4), 100, 1e-3);
    EXPECT_NEAR(At(keys, BrushKey::Angle, 8), 0, 1e-3);
    // Catmull-Rom, the first key doubled before the curve: halfway through
    // the first span, 0.5 * (2 p1 + (p2 - p0) t + (2 p0 - 5 p1 + 4 p2 - p3) t^2
    // + (3 p1 - p0 - 3 p2 + p3) t^3) with p0 = p1 = 0, p2 = 100, p3 = 0 and
    // t = 0.5 is 0.5 * (50 + 100 - 37.5) = 56.25.
    EXPECT_NEAR(At(keys, BrushKey::Angle, 2), 56.25, 1e-3);
    keys.setSpline(BrushKey::Angle, false);
    EXPECT_NEAR(At(keys, BrushKey::Angle, 2), 50, 1e-3);
}

TEST(BrushKeyframer, ColourKeysHoldThreeChannelsAndBadKeysAreIgnored) {
    BrushKeyframer keys;
    keys.addKey(BrushKey::Colour, 0, {0, 100, 200});
    keys.addKey(BrushKey::Colour, 2, {100, 100, 0});
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Colour, 1, 0), 50);
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Colour, 1, 1), 100);
    EXPECT_FLOAT_EQ(At(keys, BrushKey::Colour, 1, 2), 100);
    keys.addKey(BrushKey::Colour, 5, {1});
    keys.addKey(BrushKey::Size, -1, {3});
    keys.addKey(BrushKey::Size, kMaxBrushKeyFrame + 1, {3});
    EXPECT_EQ(keys.keys(BrushKey::Colour).size(), 2u);
    EXPECT_TRUE(keys.keys(BrushKey::Size).empty());
}

TEST(BrushKeyframer, NamesRoundTrip) {
    for (BrushKey key : kBrushKeys) {
        EXPECT_EQ(BrushKeyNamed(BrushKeyName(key)), key);
    }
    EXPECT_FALSE(BrushKeyNamed("hue"));
}

}  // namespace
}  // namespace wib
