// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/paint_modes.h"
#include "paint/paint_session.h"
#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

class AnimatedBrushMethods : public MethodFixture {
  protected:
    AnimatedBrush& brush() { return parts.paint.state().animatedBrush; }
};

// A plane of one repeated byte and a frame index, as the frame setters take them.
msgpack::sbuffer FrameParams(int ubX, int ubY, std::uint8_t fill, int frame) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(2);
    packer.pack_array(3);
    packer.pack(ubX);
    packer.pack(ubY);
    const std::string bytes(static_cast<std::size_t>((ubX + 1) * (ubY + 1)),
                            static_cast<char>(fill));
    packer.pack_bin(static_cast<std::uint32_t>(bytes.size()));
    packer.pack_bin_body(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    packer.pack(frame);
    return buffer;
}

TEST_F(AnimatedBrushMethods, CreatingChecksItsSizesAndTurnsTheBrushOn) {
    EXPECT_EQ(answer("Wib_GetAnimbrush_Totalframes").get().as<int>(), 0);
    EXPECT_EQ(errorOf("Wib_CreateNewAnBr", Params(0, 4, 4)), 5);
    EXPECT_EQ(errorOf("Wib_CreateNewAnBr", Params(257, 4, 4)), 5);
    EXPECT_EQ(errorOf("Wib_CreateNewAnBr", Params(2, 1025, 4)), 5);
    EXPECT_EQ(errorOf("Wib_CreateNewAnBr", Params(2, 4, 0)), 5);
    EXPECT_FALSE(brush().active());

    ASSERT_EQ(errorOf("Wib_CreateNewAnBr", Params(3, 5, 2)), 0);
    EXPECT_EQ(answer("Wib_GetAnimbrush_Totalframes").get().as<int>(), 3);
    EXPECT_EQ(answer("Wib_Animbrush_Currentframe").get().as<int>(), 0);
    EXPECT_TRUE(brush().active());
    const msgpack::object_handle alpha = answer("Wib_GetAnimbrush_A", Params(2));
    EXPECT_TRUE(planeEquals(alpha.get(), Plane(4, 1, 0))) << "5 x 2, transparent";

    EXPECT_EQ(errorOf("Wib_ActivateCustomBrush", Params(0)), 0);
    EXPECT_FALSE(brush().active()) << "choosing another brush stops it";
    EXPECT_EQ(answer("Wib_GetAnimbrush_Totalframes").get().as<int>(), 3) << "its frames stay";
}

TEST_F(AnimatedBrushMethods, FramePlanesGoInAndComeBackByFrame) {
    ASSERT_EQ(errorOf("Wib_CreateNewAnBr", Params(2, 3, 2)), 0);
    EXPECT_EQ(errorOf("Wib_SetAnimBrushGFrame", FrameParams(2, 1, 40, 1)), 0);
    EXPECT_EQ(errorOf("Wib_SetAnimBrushAFrame", FrameParams(2, 1, 255, 1)), 0);
    EXPECT_TRUE(planeEquals(answer("Wib_GetAnimbrush_G", Params(1)).get(), Plane(2, 1, 40)));
    EXPECT_TRUE(planeEquals(answer("Wib_GetAnimbrush_G", Params(0)).get(), Plane(2, 1, 0)));
    EXPECT_EQ(brush().frame(1).mask().at(2, 1), 0) << "alpha 255: full strength";

    EXPECT_EQ(errorOf("Wib_SetAnimBrushRFrame", FrameParams(3, 1, 9, 0)), 5) << "4 x 2 is no fit";
    EXPECT_EQ(errorOf("Wib_SetAnimBrushBFrame", FrameParams(2, 1, 9, 2)), 9) << "no frame 2";
    EXPECT_EQ(errorOf("Wib_GetAnimbrush_R", Params(-1)), 9);
    EXPECT_TRUE(planeEquals(answer("Wib_GetAnimbrush_R", Params(0)).get(), Plane(2, 1, 0)));
    EXPECT_TRUE(planeEquals(answer("Wib_GetAnimbrush_B", Params(1)).get(), Plane(2, 1, 0)));
}

TEST_F(AnimatedBrushMethods, PixelSettersWorkOnTheCurrentFrame) {
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_R", Params(0, 0, 1)), 9) << "no animated brush";
    EXPECT_EQ(errorOf("Wib_Animbrush_Next", Params()), 9);
    ASSERT_EQ(errorOf("Wib_CreateNewAnBr", Params(3, 2, 2)), 0);

    EXPECT_EQ(answer("Wib_Animbrush_Currentframe", Params(2)).get().as<int>(), 2);
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_R", Params(1, 0, 11)), 0);
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_G", Params(1, 0, 22)), 0);
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_B", Params(1, 0, 33)), 0);
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_A", Params(0, 1, 200)), 0);
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_A", Params(2, 0, 1)), 9);
    EXPECT_EQ(errorOf("Wib_SeAnimtBrush_A", Params(0, 0, 256)), 5);
    const BrushImage& third = brush().frame(2);
    const PackedColour pixel{third.R.at(1, 0), third.G.at(1, 0), third.B.at(1, 0)};
    EXPECT_EQ(pixel.packed(), 11 + 22 * 256 + 33 * 65536);
    EXPECT_EQ(third.mask().at(0, 1), 55);
    EXPECT_EQ(brush().frame(0).R.at(1, 0), 0);

    EXPECT_EQ(answer("Wib_Animbrush_Next").get().as<int>(), 0) << "after the last, the first";
    EXPECT_EQ(answer("Wib_Animbrush_Next").get().as<int>(), 1);
    EXPECT_EQ(errorOf("Wib_Animbrush_Currentframe", Params(3)), 9);
    EXPECT_EQ(answer("Wib_Animbrush_Currentframe").get().as<int>(), 1);
}

TEST_F(AnimatedBrushMethods, AStrokeTakesTheFramesInTurn) {
    host.newDocument(20, 10);
    // A dab at every pixel, in the pattern mode, which paints the brush's own colours.
    BrushOptionsModel& options = parts.paint.state().options;
    options.relativeSpacing = false;
    options.spacing = 0;
    options.paintMode = static_cast<int>(PaintMode::Pattern);
    ASSERT_EQ(errorOf("Wib_CreateNewAnBr", Params(2, 1, 1)), 0);
    const std::uint8_t reds[2] = {10, 20};
    for (int f = 0; f < 2; ++f) {
        ASSERT_EQ(errorOf("Wib_SetAnimBrushRFrame", FrameParams(0, 0, reds[f], f)), 0);
        ASSERT_EQ(errorOf("Wib_SetAnimBrushAFrame", FrameParams(0, 0, 255, f)), 0);
    }
    ASSERT_EQ(errorOf("Wib_BrushDown", Params(2.0, 4.0)), 0);
    ASSERT_EQ(errorOf("Wib_BrushMove", Params(6.0, 4.0)), 0);
    for (int x = 2; x <= 6; ++x) {
        EXPECT_EQ(PackedPixel(doc, x, 4), reds[(x - 2) % 2]) << x;
    }
    EXPECT_EQ(answer("Wib_Animbrush_Currentframe").get().as<int>(), 1) << "five dabs";
}

}  // namespace
}  // namespace wib::testing
