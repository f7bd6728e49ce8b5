// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/view_state.h"

namespace wib {
namespace {

void ExpectPoint(const ViewTransform& t, double x, double y, double wx, double wy) {
    const auto [mx, my] = t.map(x, y);
    EXPECT_NEAR(mx, wx, 1e-9) << x << "," << y;
    EXPECT_NEAR(my, wy, 1e-9) << x << "," << y;
}

TEST(ViewState, QuarterTurnsAndMirrorKeepPixelsOnWholeWindowUnits) {
    ViewState view;
    // Mirrored then turned a quarter clockwise, a 200 x 120 image stands 120
    // wide: its top edge runs down the right side, its left edge along the bottom.
    view.rotation = 90;
    view.mirrored = true;
    const ViewTransform t = view.imageToWindow(200, 120);
    EXPECT_EQ(view.windowSize(200, 120), (std::array<int, 2>{120, 200}));
    ExpectPoint(t, 0, 0, 120, 200);
    ExpectPoint(t, 200, 120, 0, 0);
    ExpectPoint(t, 200, 0, 120, 0);
    ExpectPoint(t, 149.5, 89.5, 30.5, 50.5);

    // Half a turn at 200%: both axes run backwards, twice as long.
    view = ViewState{};
    view.zoom = 200;
    view.rotation = 180;
    EXPECT_EQ(view.windowSize(10, 6), (std::array<int, 2>{20, 12}));
    ExpectPoint(view.imageToWindow(10, 6), 0, 0, 20, 12);
    ExpectPoint(view.imageToWindow(10, 6), 3, 1, 14, 10);

    view.mirrored = true;
    view.rotation = 0;
    ExpectPoint(view.imageToWindow(10, 6), 3, 1, 14, 2);
}

TEST(ViewState, AnyAngleFitsTheTurnedImageAndMapsBack) {
    ViewState view;
    view.rotation = 30;
    // 100 cos 30 + 50 sin 30 = 111.6 wide, 100 sin 30 + 50 cos 30 = 93.3 high.
    EXPECT_EQ(view.windowSize(100, 50), (std::array<int, 2>{112, 94}));
    const ViewTransform t = view.imageToWindow(100, 50);
    ExpectPoint(t, 50, 25, 111.60254037844386 / 2, 93.30127018922193 / 2);
    const auto [wx, wy] = t.map(17.25, 40.5);
    ExpectPoint(t.inverted(), wx, wy, 17.25, 40.5);

    view.rotation = 45;
    view.reset();
    EXPECT_EQ(view.rotation, 0);
    EXPECT_EQ(view.windowSize(100, 50), (std::array<int, 2>{100, 50}));
}

TEST(ViewState, AnglesAreBroughtIntoOneTurn) {
    EXPECT_EQ(NormalisedAngle(-90), 270);
    EXPECT_EQ(NormalisedAngle(450), 90);
    EXPECT_EQ(NormalisedAngle(-360), 0);
    EXPECT_EQ(NormalisedAngle(720), 0);
    EXPECT_EQ(NormalisedAngle(22.5), 22.5);
}

}  // namespace
}  // namespace wib
