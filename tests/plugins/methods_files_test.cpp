// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>

#include "paint/paint_session.h"
#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

class FileMethods : public MethodFixture {
  protected:
    ~FileMethods() override { std::filesystem::remove(bitmap); }
    std::string bitmap = (std::filesystem::temp_directory_path() /
                          ("wib-methods-" + std::to_string(::getpid()) + ".bmp"))
                             .string();
};

TEST_F(FileMethods, BitmapsGoOutAndComeBackAsImageOrBrush) {
    SetPixel(doc, 3, 2, {10, 20, 30});
    ASSERT_EQ(answer("Wib_SaveBMP", Params(bitmap)).get().as<int>(), -1);
    ClearImage(doc, {0, 0, 0});
    ASSERT_EQ(answer("Wib_LoadBMP", Params(bitmap)).get().as<int>(), -1);
    EXPECT_EQ(PackedPixel(doc, 3, 2), 10 + 20 * 256 + 30 * 65536);

    ASSERT_EQ(answer("Wib_LoadBMPtoBrush", Params(bitmap)).get().as<int>(), -1);
    EXPECT_TRUE(host.workspace.brush.active());
    EXPECT_EQ(answer("Wib_GetBrushWidth").get().as<int>(), 8);
    EXPECT_EQ(answer("Wib_GetBrushRGB", Params(3, 2)).get().as<int>(), 10 + 20 * 256 + 30 * 65536);
}

TEST_F(FileMethods, RefusalsAnswerZeroAndChangeNothing) {
    SetPixel(doc, 1, 1, {5, 5, 5});
    EXPECT_EQ(answer("Wib_LoadBMP", Params("/nonexistent/x.bmp")).get().as<int>(), 0);
    EXPECT_EQ(answer("Wib_LoadTargaToBrush", Params("/nonexistent/x.tga")).get().as<int>(), 0);
    EXPECT_EQ(host.prompter.messages.size(), 2u);
    EXPECT_EQ(doc.RBuffer.at(1, 1), 5);
    EXPECT_FALSE(host.workspace.brush.active());
    EXPECT_EQ(answer("Wib_Load_IM", Params("/tmp/x.png")).get().as<int>(), 0)
        << "no converter here";
    EXPECT_EQ(errorOf("Wib_LoadBMP", Params(12)), 5);
}

TEST_F(FileMethods, NumberedNamesCountOn) {
    EXPECT_EQ(answer("Wib_NewFilename", Params("shot0009.tga")).get().as<std::string>(),
              "shot0010.tga");
}

}  // namespace
}  // namespace wib::testing
