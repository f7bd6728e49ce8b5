// SPDX-License-Identifier: GPL-3.0-or-later
// The tablet, grid, pointer, window, wells, paper and free-form families.

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "filters/fill_commands.h"
#include "paint/paint_session.h"
#include "paint/pen_reading.h"
#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

class CanvasMethods : public MethodFixture {
  protected:
    double number(const std::string& method) { return answer(method).get().as<double>(); }
    PaintSession& paint = parts.paint;
};

TEST_F(CanvasMethods, TheTabletAnswersTheMouseUntilAPenSpeaks) {
    EXPECT_EQ(answer("Wib_IsTabletActive").get().as<int>(), 0);
    EXPECT_EQ(number("Wib_GetPressure"), 1.0);
    EXPECT_EQ(number("Wib_GetAltitude"), 90.0);
    for (const char* method :
         {"Wib_GetAzimuth", "Wib_GetPitch", "Wib_GetRoll", "Wib_GetTwist", "Wib_GetYaw"}) {
        EXPECT_EQ(number(method), 0.0) << method;
    }

    // Tilted 45 degrees right and 45 towards the user: the pen's top points
    // down-right, at atan(1 / sqrt 2) = 35.264 degrees from the surface.
    paint.state().pen = PenFromTilt(0.25, 45, 45, 30);
    EXPECT_EQ(answer("Wib_IsTabletActive").get().as<int>(), -1);
    EXPECT_DOUBLE_EQ(number("Wib_GetPressure"), 0.25);
    EXPECT_NEAR(number("Wib_GetAltitude"), 35.2644, 1e-4);
    EXPECT_NEAR(number("Wib_GetAzimuth"), 315.0, 1e-9);
    EXPECT_NEAR(number("Wib_GetYaw"), 135.0, 1e-9);
    EXPECT_EQ(number("Wib_GetPitch"), 45.0);
    EXPECT_EQ(number("Wib_GetRoll"), 45.0);
    EXPECT_EQ(number("Wib_GetTwist"), 30.0);

    // Tilted 30 degrees straight up the tablet: altitude 60, heading north.
    paint.state().pen = PenFromTilt(1, 0, -30, 0);
    EXPECT_NEAR(number("Wib_GetAltitude"), 60.0, 1e-9);
    EXPECT_NEAR(number("Wib_GetAzimuth"), 90.0, 1e-9);
    EXPECT_NEAR(number("Wib_GetYaw"), 0.0, 1e-9);
}

TEST_F(CanvasMethods, TheGridIsSetReadAndRefusedOutsideItsRange) {
    EXPECT_EQ(answer("Wib_GetGridState").get().as<int>(), 0);
    const int refreshes = host.view.refreshes;
    ASSERT_EQ(errorOf("Wib_SetGrid", Params(-1, 10, 20)), 0);
    EXPECT_EQ(host.view.refreshes, refreshes + 1);
    EXPECT_EQ(answer("Wib_GetGridState").get().as<int>(), -1);
    EXPECT_EQ(answer("Wib_GetGridX").get().as<int>(), 10);
    EXPECT_EQ(answer("Wib_GetGridY").get().as<int>(), 20);
    EXPECT_EQ(errorOf("Wib_SetGrid", Params(0, 0, 20)), 5);
    EXPECT_EQ(answer("Wib_GetGridX").get().as<int>(), 10) << "a refused call changes nothing";
    host.newDocument(4, 4);
    EXPECT_EQ(answer("Wib_GetGridY").get().as<int>(), 20) << "a new document keeps the grid";
}

TEST_F(CanvasMethods, APointerChangedIsRestoredToTheOneBeforeTheFirstChange) {
    host.workspace.pointerShape = 3;
    ASSERT_EQ(errorOf("Wib_ChangePointer", Params(11)), 0);
    ASSERT_EQ(errorOf("Wib_ChangePointer", Params(2)), 0);
    EXPECT_EQ(host.workspace.pointerShape, 2);
    ASSERT_EQ(errorOf("Wib_RestorePointer", Params()), 0);
    EXPECT_EQ(host.workspace.pointerShape, 3) << "the pointer before the first change";
    EXPECT_EQ(host.view.pointerShapes, (std::vector<int>{11, 2, 3}));
    EXPECT_EQ(errorOf("Wib_SetMousePointer", Params(16)), 5);
    ASSERT_EQ(errorOf("Wib_SetMousePointer", Params(1)), 0);
    EXPECT_EQ(host.workspace.pointerShape, 1);
    ASSERT_EQ(errorOf("Wib_RestorePointer", Params()), 0);
    EXPECT_EQ(host.workspace.pointerShape, 1) << "nothing to restore";
}

TEST_F(CanvasMethods, WindowIdsAreTheViewsOwn) {
    EXPECT_EQ(answer("Wib_GetHwnd").get().as<long long>(), 0);
    host.view.canvasId = 0x3a00007;
    host.view.mainId = 0x3a00002;
    EXPECT_EQ(answer("Wib_GetHwnd").get().as<long long>(), 0x3a00007);
    EXPECT_EQ(answer("Wib_ParentWindow").get().as<long long>(), 0x3a00002);
}

TEST_F(CanvasMethods, WellsAreReadOneAtATimeAndSetTogether) {
    ASSERT_EQ(errorOf("Wib_SetWells", Params(0x123456, 0x00FF00)), 0);
    EXPECT_EQ(answer("Wib_GetWells", Params(0)).get().as<int>(), 0x123456);
    EXPECT_EQ(answer("Wib_GetWells", Params(1)).get().as<int>(), 0x00FF00);
    EXPECT_EQ(answer("Wib_GetPrimaryColor").get().as<int>(), 0x123456);
    EXPECT_EQ(errorOf("Wib_SetWells", Params(0x000001, 0x1000000)), 5);
    EXPECT_EQ(answer("Wib_GetWells", Params(0)).get().as<int>(), 0x123456);
    EXPECT_EQ(errorOf("Wib_GetWells", Params(2)), 5);
}

TEST_F(CanvasMethods, APaperSetIsReadBackAndTiledUnderTheImage) {
    std::string grain(3 * 2, '\0');
    for (std::size_t i = 0; i < grain.size(); ++i) {
        grain[i] = static_cast<char>(100 + 10 * i);  // rows 100 110 120 / 130 140 150
    }
    ASSERT_EQ(errorOf("Wib_SetPaper", PlaneParams(2, 1, grain)), 0);
    EXPECT_EQ(answer("Wib_GetPaperWidth").get().as<int>(), 3);
    EXPECT_EQ(answer("Wib_GetPaperHeight").get().as<int>(), 2);
    const msgpack::object_handle paper = answer("Wib_GetPaper");
    EXPECT_EQ(std::string(paper.get().via.array.ptr[2].via.bin.ptr, 6), grain);

    // At scale 100 without emboss, inversion or depth the grain is read as set.
    paint.state().options.paperScale = 100;
    paint.state().options.paperEmboss = false;
    paint.state().options.paperInvert = false;
    paint.state().options.paperStrength = 100;
    paint.optionsChanged();
    const Plane& read = paint.state().paper;
    ASSERT_EQ(read.stride(), 3u);
    // (7, 3) tiles onto (1, 1); (-1, -1) onto (2, 1).
    EXPECT_EQ(answer("Wib_GetBump", Params(7, 3)).get().as<int>(), 140);
    EXPECT_EQ(answer("Wib_GetBump", Params(-1, -1)).get().as<int>(), 150);
    EXPECT_TRUE(planeEquals(answer("Wib_GetMediaPreview").get(), read));

    ASSERT_EQ(errorOf("Wib_NewPaper", Params(1)), 0);
    EXPECT_EQ(answer("Wib_GetPaperWidth").get().as<int>(), 256);
    EXPECT_EQ(errorOf("Wib_NewPaper", Params(3)), 5);
}

TEST_F(CanvasMethods, TheFillModeIsReadBackRefusedOutOfRangeAndFollowedByFills) {
    for (int mode : {3, 0, 2, 1}) {
        ASSERT_EQ(errorOf("Wib_SetFillMode", Params(mode)), 0);
        EXPECT_EQ(answer("Wib_GetFillMode").get().as<int>(), mode);
    }
    for (int bad : {-1, 4}) {
        const CallResult refused = call("Wib_SetFillMode", Params(bad));
        ASSERT_TRUE(refused.error);
        EXPECT_EQ(refused.error->code, 5);
        EXPECT_NE(refused.error->message.find("0 to 3"), std::string::npos)
            << refused.error->message;
    }
    EXPECT_EQ(answer("Wib_GetFillMode").get().as<int>(), 1);

    // Mode 1: a fill run without naming its source lays the secondary colour.
    RegisterFillCommands(commands);
    host.workspace.colours.secondary = {12, 34, 56};
    ASSERT_EQ(commands.run(host.workspace, "edit.fill", {{"x", 0LL}, {"y", 0LL}}).status,
              CommandOutcome::Status::Done);
    EXPECT_EQ(PackedPixel(doc, 7, 5), (PackedColour{12, 34, 56}).packed());
}

TEST_F(CanvasMethods, AFreeFormPathIsStrokedWithTheCurrentBrushOnlyWhenAsked) {
    host.newDocument(60, 40);
    paint.state().options.brushSize = 3;
    paint.state().options.hardness = 100;
    paint.state().options.relativeSpacing = false;
    paint.state().options.spacing = 0;
    paint.optionsChanged();
    ASSERT_EQ(errorOf("Wib_SetPrimaryColor", Params(0x0000FF)), 0);

    const int kept = answer("Wib_CreateFF").get().as<int>();
    ASSERT_EQ(errorOf("Wib_SetFF", Params(kept, 5.0, 5.0)), 0);
    ASSERT_EQ(errorOf("Wib_SetFF", Params(kept, 50.0, 5.0)), 0);
    ASSERT_EQ(errorOf("Wib_FreeFF", Params(kept)), 0);
    EXPECT_EQ(PackedPixel(doc, 30, 5), 0xFFFFFF) << "freed without a stroke";
    EXPECT_EQ(errorOf("Wib_SetFF", Params(kept, 1.0, 1.0)), 5) << "the handle is gone";

    // A closed triangle: its three sides are painted, its inside is not.
    const int path = answer("Wib_CreateFF").get().as<int>();
    EXPECT_NE(path, kept);
    for (const auto& [x, y] : {std::pair{10.0, 10.0}, {50.0, 10.0}, {10.0, 30.0}}) {
        ASSERT_EQ(errorOf("Wib_SetFF", Params(path, x, y)), 0);
    }
    ASSERT_EQ(errorOf("Wib_SetFFSettings", Params(path, -1)), 0);
    ASSERT_EQ(errorOf("Wib_FreeFF", Params(path, -1)), 0);
    EXPECT_EQ(PackedPixel(doc, 30, 10), 0x0000FF) << "top side";
    EXPECT_EQ(PackedPixel(doc, 10, 20), 0x0000FF) << "closing side";
    EXPECT_EQ(PackedPixel(doc, 30, 20), 0x0000FF) << "slanted side, (50,10) to (10,30)";
    EXPECT_EQ(PackedPixel(doc, 20, 16), 0xFFFFFF) << "inside";
}

// A 2 x 2 brush: alpha 255, 0 / 128, 255 over a white image.
TEST_F(CanvasMethods, TheBrushIsCopiedFromAndBlendedIntoTheImage) {
    EXPECT_EQ(errorOf("Wib_PasteBrush", Params(0, 0)), 5) << "no brush image yet";
    BrushImage& brush = host.workspace.brush;
    brush.makeBlank(2, 2);
    const std::uint8_t alpha[2][2] = {{255, 0}, {128, 255}};
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) {
            brush.setAlpha(x, y, alpha[y][x]);
        }
    }
    doc.RBuffer.at(3, 4) = 10;
    doc.GBuffer.at(4, 4) = 20;
    doc.BBuffer.at(4, 5) = 30;
    ASSERT_EQ(errorOf("Wib_CopyBrush", Params(3, 4)), 0);
    EXPECT_EQ(brush.R.at(0, 0), 10);
    EXPECT_EQ(brush.G.at(1, 0), 20);
    EXPECT_EQ(brush.B.at(1, 1), 30);
    EXPECT_EQ(brush.R.at(0, 1), 255);
    EXPECT_EQ(brush.A().at(0, 1), 128) << "alpha stays";
    EXPECT_EQ(errorOf("Wib_CopyBrush", Params(7, 0)), 9) << "one column past the right edge";

    // Pasted at (-1, 4): the left column falls outside; (1, 0) of the brush,
    // alpha 0, keeps the image; (1, 1) at alpha 255 takes the brush.
    doc.RBuffer.at(0, 4) = 200;
    doc.BBuffer.at(0, 5) = 100;
    ASSERT_EQ(errorOf("Wib_PasteBrush", Params(-1, 4)), 0);
    EXPECT_EQ(PackedPixel(doc, 0, 4), 0xFFFFC8);
    EXPECT_EQ(PackedPixel(doc, 0, 5), 0x1EFFFF) << "red 255, green 255, blue 30";
    EXPECT_TRUE(doc.modified);
    // At alpha 128 brush red 255 over image red 0: (255 * 128 + 127) / 255 = 128.
    brush.R.at(0, 1) = 255;
    doc.RBuffer.at(5, 1) = 0;
    ASSERT_EQ(errorOf("Wib_PasteBrush", Params(5, 0)), 0);
    EXPECT_EQ(doc.RBuffer.at(5, 1), 128);
}

TEST_F(CanvasMethods, NewBrushNamesAreFreeNamesInTheBrushSetFolder) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("wib-brush-set-" + std::to_string(getpid()));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    EXPECT_EQ(errorOf("Wib_SetBrushSetFolder", Params((folder / "none").string())), 5);
    ASSERT_EQ(errorOf("Wib_SetBrushSetFolder", Params(folder.string())), 0);
    EXPECT_EQ(answer("Wib_NewBrushFilename").get().as<std::string>(),
              (folder / "brush0001.bmp").string());
    std::ofstream(folder / "brush0001.bmp") << "x";
    std::ofstream(folder / "brush0003.bmp") << "x";
    EXPECT_EQ(answer("Wib_NewBrushFilename").get().as<std::string>(),
              (folder / "brush0002.bmp").string());
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace wib::testing
