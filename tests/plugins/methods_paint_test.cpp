// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>

#include "paint/paint_session.h"
#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

class PaintMethods : public MethodFixture {
  protected:
    PaintMethods() {
        host.newDocument(60, 40);
        paint.state().options.brushSize = 3;
        paint.state().options.hardness = 100;
        paint.state().options.relativeSpacing = false;
        paint.state().options.spacing = 0;
        paint.optionsChanged();
    }
    PaintSession& paint = parts.paint;
};

TEST_F(PaintMethods, APlugInPaintsALineWithDownAndMove) {
    ASSERT_EQ(errorOf("Wib_SetPrimaryColor", Params(0x0000FF)), 0);
    ASSERT_EQ(errorOf("Wib_BrushDown", Params(10.0, 20.0)), 0);
    ASSERT_EQ(errorOf("Wib_BrushUp", Params(50.0, 20.0)), 0);
    EXPECT_EQ(PackedPixel(doc, 30, 20), 0xFFFFFF) << "down and up paint nothing";
    ASSERT_EQ(errorOf("Wib_BrushDown", Params(10.0, 20.0)), 0);
    ASSERT_EQ(errorOf("Wib_BrushMove", Params(50.0, 20.0)), 0);
    for (int x = 10; x <= 50; x += 5) {
        EXPECT_EQ(PackedPixel(doc, x, 20), 0x0000FF) << x;
    }
    EXPECT_EQ(PackedPixel(doc, 30, 25), 0xFFFFFF);
}

TEST_F(PaintMethods, BrushOptionsAreCheckedAndFollowedByTheBrush) {
    EXPECT_EQ(errorOf("Wib_SetBrushSize", Params(40)), 0);
    EXPECT_EQ(answer("Wib_GetBrushSize").get().as<int>(), 40);
    EXPECT_EQ(paint.state().tip.width, 40) << "the tip was rebuilt";
    EXPECT_EQ(errorOf("Wib_SetBrushSize", Params(0)), 5);
    EXPECT_EQ(errorOf("Wib_SetBrushMode", Params(12)), 5);
    EXPECT_EQ(errorOf("Wib_SetBrushOpacity", Params("opaque")), 5);
    EXPECT_EQ(answer("Wib_GetBrushSize").get().as<int>(), 40);
    EXPECT_EQ(errorOf("Wib_SetPrimaryColor", Params(1 << 24)), 5);
    EXPECT_EQ(errorOf("Wib_SetInternalBrush", Params(4)), 5);

    EXPECT_EQ(errorOf("Wib_SetBrushType", Params(0)), 0);
    EXPECT_EQ(errorOf("Wib_SetBrushType", Params(7)), 0);
    EXPECT_EQ(answer("Wib_GetBrushType").get().as<int>(), 0) << "7 changes nothing";
}

TEST_F(PaintMethods, SettingsGoThroughTheFileAndBack) {
    paint.state().options.dryOut = 77;
    const std::string path = answer("Wib_GetBrushSettings").get().as<std::string>();
    EXPECT_EQ(std::filesystem::file_size(path), 176u);
    paint.state().options.dryOut = 0;
    EXPECT_EQ(answer("Wib_SetBrushSettings", Params(path)).get().as<int>(), -1);
    EXPECT_EQ(paint.state().options.dryOut, 77);
    EXPECT_EQ(answer("Wib_SetBrushSettings", Params("/nonexistent/file.dat")).get().as<int>(), 0);
    EXPECT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(paint.state().options.dryOut, 77);
}

TEST_F(PaintMethods, TheBrushImageIsBuiltPlaneByPlane) {
    EXPECT_EQ(answer("Wib_GetBrushABuffer").get().as<int>(), -1) << "no custom brush yet";
    ASSERT_EQ(errorOf("Wib_CreateEmptyBrush", Params(4, 3)), 0);
    EXPECT_EQ(answer("Wib_GetBrushWidth").get().as<int>(), 4);
    ASSERT_EQ(errorOf("Wib_SetBrushA", Params(1, 1, 200)), 0);
    EXPECT_EQ(errorOf("Wib_SetBrushA", Params(4, 0, 200)), 9);
    ASSERT_EQ(errorOf("Wib_SetBrushRGB", Params(1, 1, 9, 8, 7)), 0);
    EXPECT_EQ(answer("Wib_GetBrushRGB", Params(1, 1)).get().as<int>(), 9 + 8 * 256 + 7 * 65536);
    ASSERT_EQ(errorOf("Wib_ActivateCustomBrush", Params(-1)), 0);
    EXPECT_TRUE(host.workspace.brush.active());
    EXPECT_TRUE(planeEquals(answer("Wib_GetBrushABuffer").get(), host.workspace.brush.A()));
    EXPECT_EQ(errorOf("Wib_CreateEmptyBrush", Params(0, 3)), 5);

    ASSERT_EQ(errorOf("Wib_ReplaceInternalBrush", Params(2)), 0);
    ASSERT_EQ(errorOf("Wib_SetBrushSize", Params(8)), 0);
    ASSERT_EQ(errorOf("Wib_SetInternalBrush", Params(2)), 0);
    EXPECT_EQ(paint.state().tip.width, 8) << "the image brush's shape at the Size control";
    EXPECT_EQ(paint.state().tip.height, 6);
    EXPECT_GT(paint.state().tip.at(3, 3), 100);
    EXPECT_EQ(paint.state().tip.at(7, 5), 0);
    EXPECT_EQ(errorOf("Wib_ReplaceInternalBrush", Params(4)), 5);
}

}  // namespace
}  // namespace wib::testing
