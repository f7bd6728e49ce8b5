// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "core/plane.h"
#include "paint/animated_brush.h"
#include "paint/paint_session.h"
#include "tests/paint/stroke_fixture.h"

namespace wib {
namespace {

// One-pixel frames: red, an empty frame (alpha 0) and blue, painted in the
// pattern mode, which takes the colour from the brush.
class AnimatedStroke : public Stroke {
  protected:
    void SetUp() override {
        Stroke::SetUp();
        AnimatedBrush& brush = paint.animatedBrush;
        brush.create(3, 1, 1);
        const std::uint8_t colours[3][3] = {{255, 0, 0}, {0, 200, 0}, {0, 0, 255}};
        for (int f = 0; f < 3; ++f) {
            brush.setPlane(BrushChannel::Red, f, Plane(0, 0, colours[f][0]));
            brush.setPlane(BrushChannel::Green, f, Plane(0, 0, colours[f][1]));
            brush.setPlane(BrushChannel::Blue, f, Plane(0, 0, colours[f][2]));
            brush.setPlane(BrushChannel::Alpha, f, Plane(0, 0, f == 1 ? 0 : 255));
        }
        brush.setActive(true);
        paint.options.paintMode = static_cast<int>(PaintMode::Pattern);
    }
};

TEST_F(AnimatedStroke, EachDabTakesTheNextFrameCycling) {
    line(10, 5, 16, 5);
    const Document& doc = host.workspace.document;
    const long long red = 255, blue = 255 * 65536, white = 0xFFFFFF;
    const long long expected[7] = {red, white, blue, red, white, blue, red};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(PackedPixel(doc, 10 + i, 5), expected[i]) << "dab " << i;
    }
    EXPECT_EQ(paint.animatedBrush.current(), 7 % 3) << "the next dab takes frame 1";

    // Frames follow dabs, not visited positions: a dab every 4th pixel.
    host.newDocument(120, 120);
    paint.animatedBrush.setCurrent(2);
    paint.options.spacing = 4;
    line(0, 20, 8, 20);
    EXPECT_EQ(PackedPixel(doc, 0, 20), blue);
    EXPECT_EQ(PackedPixel(doc, 4, 20), red);
    EXPECT_EQ(PackedPixel(doc, 8, 20), white) << "the empty frame paints nothing";
    EXPECT_EQ(PackedPixel(doc, 2, 20), white);
}

TEST_F(AnimatedStroke, OffItLeavesTheFramesWhereTheyAre) {
    paint.animatedBrush.setActive(false);
    line(10, 5, 12, 5);
    EXPECT_EQ(painted().size(), 3u) << "the built-in one-pixel brush";
    EXPECT_EQ(paint.animatedBrush.current(), 0);
}

TEST_F(AnimatedStroke, FramesAreCutFromTheSelectedBoxOfEachFrame) {
    PaintSession session(host.workspace, std::filesystem::temp_directory_path());
    Document& doc = host.workspace.document;
    // Frame i is grey 10 * (i + 1) everywhere but one pixel.
    const auto frame = [&doc](int i) {
        FrameColours colours;
        for (Plane& plane : colours) {
            plane = Plane(doc.RBuffer.ubX(), doc.RBuffer.ubY(),
                          static_cast<std::uint8_t>(10 * (i + 1)));
        }
        colours[0].at(4, 3) = static_cast<std::uint8_t>(200 + i);
        return colours;
    };
    doc.ABuffer.fill(0);
    EXPECT_FALSE(session.makeAnimatedBrush(3, frame)) << "nothing selected";
    doc.ABuffer.at(3, 2) = 255;
    doc.ABuffer.at(4, 3) = 100;
    EXPECT_FALSE(session.makeAnimatedBrush(0, frame)) << "no frames";
    EXPECT_EQ(host.prompter.messages.size(), 2u);

    ASSERT_TRUE(session.makeAnimatedBrush(3, frame));
    const AnimatedBrush& brush = session.state().animatedBrush;
    EXPECT_TRUE(brush.active());
    ASSERT_EQ(brush.frameCount(), 3);
    EXPECT_EQ(brush.width(), 2);
    EXPECT_EQ(brush.height(), 2);
    EXPECT_EQ(brush.frame(2).G.at(0, 0), 30);
    EXPECT_EQ(brush.frame(1).R.at(1, 1), 201);
    EXPECT_EQ(brush.frame(0).mask().at(1, 1), 155) << "the selection's alpha is the shape";
    EXPECT_EQ(brush.frame(0).mask().at(1, 0), 255);

    session.setImageBrushActive(false);
    EXPECT_FALSE(brush.active()) << "choosing another brush stops it";
}

TEST(AnimatedBrush, FramesKeepOneSizeAndCheckTheirIndex) {
    AnimatedBrush brush;
    brush.setActive(true);
    EXPECT_FALSE(brush.active()) << "no frames, nothing to paint with";
    brush.create(2, 4, 3);
    EXPECT_EQ(brush.frameCount(), 2);
    EXPECT_EQ(brush.width(), 4);
    EXPECT_EQ(brush.height(), 3);
    EXPECT_EQ(brush.frame(1).A().at(3, 2), 0) << "new frames are transparent";
    EXPECT_EQ(brush.frame(1).mask().at(3, 2), 255);

    EXPECT_FALSE(brush.setPlane(BrushChannel::Red, 0, Plane(2, 2, 9))) << "4 x 3 only";
    EXPECT_EQ(brush.plane(BrushChannel::Red, 0).at(3, 2), 0);
    EXPECT_TRUE(brush.setPlane(BrushChannel::Alpha, 1, Plane(3, 2, 200)));
    EXPECT_EQ(brush.frame(1).mask().at(0, 0), 55) << "the shape follows the alpha";
    EXPECT_THROW(brush.setPlane(BrushChannel::Red, 2, Plane(3, 2)), SubscriptError);
    EXPECT_THROW(brush.setCurrent(-1), SubscriptError);

    brush.setCurrent(1);
    brush.setValue(BrushChannel::Green, 3, 0, 77);
    brush.setValue(BrushChannel::Alpha, 0, 2, 10);
    EXPECT_EQ(brush.frame(1).G.at(3, 0), 77);
    EXPECT_EQ(brush.frame(0).G.at(3, 0), 0) << "only the current frame";
    EXPECT_EQ(brush.value(BrushChannel::Alpha, 0, 2), 10);
    EXPECT_EQ(brush.frame(1).mask().at(0, 2), 245);
    EXPECT_THROW(brush.value(BrushChannel::Blue, 4, 0), SubscriptError);

    brush.advance();
    EXPECT_EQ(brush.current(), 0) << "after the last, the first";
}

}  // namespace
}  // namespace wib
