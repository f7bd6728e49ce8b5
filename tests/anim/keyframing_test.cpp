// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/keyframing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace wib {
namespace {

Keyframing_Class TwoKeys(std::int16_t linear) {
    Keyframing_Class keys;
    keys.SetLinear(linear);
    keys.AddKey(0, {0});
    keys.AddKey(10, {100});
    keys.CreateCurve(20);
    return keys;
}

TEST(Keyframing, OneKeyHoldsItsValueEverywhere) {
    Keyframing_Class keys;
    keys.AddKey(5, {10, -3});
    keys.CreateCurve(20);
    for (int frame = 0; frame <= 20; ++frame) {
        EXPECT_EQ(keys.ReadCurve(static_cast<float>(frame), 0), 10) << frame;
        EXPECT_EQ(keys.ReadCurve(static_cast<float>(frame), 1), -3) << frame;
    }
}

TEST(Keyframing, LinearAndSplineBetweenTwoKeys) {
    const Keyframing_Class linear = TwoKeys(-1);
    EXPECT_FLOAT_EQ(linear.ReadCurve(5, 0), 50);
    EXPECT_FLOAT_EQ(linear.ReadCurve(2, 0), 20);
    EXPECT_FLOAT_EQ(linear.ReadCurve(15, 0), 100) << "after the last key";

    const Keyframing_Class spline = TwoKeys(0);
    EXPECT_FLOAT_EQ(spline.ReadCurve(5, 0), 50) << "the end keys repeat: a symmetric segment";
    EXPECT_NEAR(spline.ReadCurve(2, 0), 15.2, 1e-4);
    EXPECT_NEAR(spline.ReadCurve(8, 0), 84.8, 1e-4);
    EXPECT_FLOAT_EQ(spline.ReadCurve(10, 0), 100);
}

TEST(Keyframing, TheSplinePassesThroughInnerKeysUsingTheirNeighbours) {
    Keyframing_Class keys;
    keys.AddKey(8, {0});  // added out of order: sorted by frame
    keys.AddKey(0, {0});
    keys.AddKey(4, {40});
    keys.CreateCurve(8);
    EXPECT_FLOAT_EQ(keys.ReadCurve(4, 0), 40);
    // From 0 to 4 with P0 = 0, P1 = 0, P2 = 40, P3 = 0, at u = 0.5.
    EXPECT_FLOAT_EQ(keys.ReadCurve(2, 0), 0.5f * (-120 * 0.125f + 160 * 0.25f + 40 * 0.5f));
    EXPECT_FLOAT_EQ(keys.ReadCurve(6, 0), keys.ReadCurve(2, 0)) << "mirror image";
}

TEST(Keyframing, SmoothingAveragesTheCurveTwentyOneTimes) {
    Keyframing_Class keys;
    keys.SetLinear(-1);
    keys.SetSmoothing(1);
    keys.AddKey(0, {0});
    keys.AddKey(2, {30});
    keys.CreateCurve(2);
    // Linear 0, 15, 30. A pass takes the mean of each frame and its
    // neighbours, the ends counting themselves twice: the middle stays 15 and
    // each end's distance from it shrinks to 2/3, so after 21 passes it is
    // 15 * (2/3)^21.
    const double spread = 15.0 * std::pow(2.0 / 3.0, 21);
    EXPECT_NEAR(keys.ReadCurve(0, 0), 15.0 - spread, 1e-4);
    EXPECT_NEAR(keys.ReadCurve(1, 0), 15.0, 1e-4);
    EXPECT_NEAR(keys.ReadCurve(2, 0), 15.0 + spread, 1e-4);
    EXPECT_GT(keys.ReadCurve(0, 0), 0) << "frame 0 no longer reads exactly 0";
}

TEST(Keyframing, AddingAtAKeyedFrameReplacesTheKey) {
    Keyframing_Class keys;
    keys.AddKey(3, {1});
    keys.AddKey(7, {2});
    keys.AddKey(3, {5});
    EXPECT_EQ(keys.Key_Count(), 2);
    EXPECT_EQ(keys.IsKeyframe(3), -1);
    EXPECT_EQ(keys.IsKeyframe(4), 0);
    keys.CreateCurve(3);
    EXPECT_EQ(keys.ReadCurve(0, 0), 5);
    keys.DeleteKey(3);
    keys.DeleteKey(4);
    EXPECT_EQ(keys.Key_Count(), 1);
    keys.AddKey(-0.0f, {1});
    EXPECT_EQ(keys.IsKeyframe(0), -1) << "-0 and 0 are one frame";
    keys.clear();
    EXPECT_EQ(keys.Key_Count(), 0);
}

TEST(Keyframing, ReadCurveRoundsHalvesToEvenAndAnswersZeroOutside) {
    Keyframing_Class keys;
    keys.SetLinear(-1);
    EXPECT_EQ(keys.ReadCurve(0, 0), 0) << "no curve yet";
    keys.AddKey(0, {0});
    keys.AddKey(10, {10});
    keys.CreateCurve(10);
    EXPECT_EQ(keys.ReadCurve(4.5f, 0), 4);
    EXPECT_EQ(keys.ReadCurve(5.5f, 0), 6);
    EXPECT_EQ(keys.ReadCurve(4.4f, 0), 4);
    EXPECT_EQ(keys.ReadCurve(-0.1f, 0), 0);
    EXPECT_EQ(keys.ReadCurve(10.2f, 0), 0) << "beyond the last frame";
    EXPECT_EQ(keys.ReadCurve(3, 1), 0) << "no such channel";
    EXPECT_EQ(keys.ReadCurve(3, -1), 0);
    EXPECT_EQ(keys.ReadCurve(std::nanf(""), 0), 0);
}

TEST(Keyframing, KeysOutsideTheCurveStillShapeIt) {
    Keyframing_Class keys;
    keys.SetLinear(-1);
    keys.AddKey(-10, {0});
    keys.AddKey(10, {20});
    keys.AddKey(1e9f, {20});
    keys.CreateCurve(4);
    for (int frame = 0; frame < 4; ++frame) {
        EXPECT_FLOAT_EQ(keys.ReadCurve(static_cast<float>(frame), 0), 10.0f + frame) << frame;
    }
    // Positions beyond the curve are clamped onto its last frame, the last
    // one written winning.
    EXPECT_FLOAT_EQ(keys.ReadCurve(4, 0), 20);
}

TEST(Keyframing, HalfFrameKeysLandOnEvenFrames) {
    // Positions 0.5, 1.5, 2.5 and 3.5 round to frames 0, 2, 2 and 4: the
    // later write wins, and frames 1 and 3 are never written.
    Keyframing_Class keys;
    keys.SetLinear(-1);
    keys.AddKey(0.5f, {0});
    keys.AddKey(3.5f, {30});
    keys.CreateCurve(4);
    EXPECT_FLOAT_EQ(keys.ReadCurve(0, 0), 0);
    EXPECT_FLOAT_EQ(keys.ReadCurve(1, 0), 0);
    EXPECT_FLOAT_EQ(keys.ReadCurve(2, 0), 20);
    EXPECT_FLOAT_EQ(keys.ReadCurve(3, 0), 0);
    EXPECT_FLOAT_EQ(keys.ReadCurve(4, 0), 30);
}

}  // namespace
}  // namespace wib
