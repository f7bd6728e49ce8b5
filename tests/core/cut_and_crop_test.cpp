// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "core/canvas_size.h"
#include "core/cut_and_crop.h"
#include "core/pixel_block.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

// A 20 x 10 image whose pixels name their place (red x * 10, green y * 20,
// blue 77), with a selection: the box (4, 2)..(7, 5) fully selected but for
// (4, 2) at 128; nothing else selected.
class CutAndCrop : public ::testing::Test {
  protected:
    CutAndCrop() {
        host.newDocument(20, 10);
        Document& doc = host.workspace.document;
        for (int y = 0; y < doc.height; ++y) {
            for (int x = 0; x < doc.width; ++x) {
                SetPixel(
                    doc, x, y,
                    {static_cast<std::uint8_t>(x * 10), static_cast<std::uint8_t>(y * 20), 77});
            }
        }
        doc.ABuffer.fill(0);
        for (int y = 2; y <= 5; ++y) {
            for (int x = 4; x <= 7; ++x) {
                doc.ABuffer.at(x, y) = 255;
            }
        }
        doc.ABuffer.at(4, 2) = 128;
        doc.AlphaBitsFlag = 255;
    }
    Document& doc() { return host.workspace.document; }
    testing::TestHost host;
};

TEST_F(CutAndCrop, CopyTakesTheBoundingBoxWithTheMatteAsAlpha) {
    const PixelBlock block = CopySelectedBlock(doc());
    EXPECT_EQ(block.x, 4);
    EXPECT_EQ(block.y, 2);
    ASSERT_EQ(block.width(), 4);
    ASSERT_EQ(block.height(), 4);
    EXPECT_EQ(block.R.at(3, 0), 70);
    EXPECT_EQ(block.G.at(3, 3), 100);
    EXPECT_EQ(block.B.at(1, 1), 77);
    EXPECT_EQ(block.A.at(0, 0), 128);
    EXPECT_EQ(block.A.at(3, 3), 255);

    doc().ABuffer.fill(0);
    EXPECT_TRUE(CopySelectedBlock(doc()).empty()) << "nothing selected, nothing copied";
}

TEST_F(CutAndCrop, PlacingMixesByAlphaMakesTheSelectionAndClipsAtTheEdges) {
    PixelBlock block;
    block.R = Plane(1, 1, 0);
    block.G = Plane(1, 1, 0);
    block.B = Plane(1, 1, 0);
    block.A = Plane(1, 1, 255);
    block.A.at(1, 1) = 51;  // a fifth
    PlaceBlock(doc(), block, -1, 8);
    // Only the block's right column lands, at x = 0, rows 8 and 9.
    EXPECT_EQ(PackedPixel(doc(), 0, 8), 0);
    // (0, 9) was red 0, green 180, blue 77: four fifths of it remain.
    EXPECT_EQ(doc().RBuffer.at(0, 9), 0);
    EXPECT_EQ(doc().GBuffer.at(0, 9), 144);
    EXPECT_NEAR(doc().BBuffer.at(0, 9), 77 * 0.8, 0.5);
    EXPECT_EQ(doc().ABuffer.at(0, 8), 255);
    EXPECT_EQ(doc().ABuffer.at(0, 9), 51);
    EXPECT_EQ(doc().ABuffer.at(5, 3), 0) << "the old selection is gone";
    EXPECT_EQ(doc().AlphaBitsFlag, 255);
    EXPECT_EQ(PackedPixel(doc(), 1, 8), PackedColour(10, 160, 77).packed());
}

TEST_F(CutAndCrop, ClippingToTheMatteWeightsTheAlphaAndDropsWhatFallsOutside) {
    PixelBlock block;
    block.R = Plane(2, 0, 9);
    block.G = Plane(2, 0, 9);
    block.B = Plane(2, 0, 9);
    block.A = Plane(2, 0, 200);
    ClipToMatte(block, doc().ABuffer, doc().width, doc().height, 3, 2);
    EXPECT_EQ(block.A.at(0, 0), 0) << "(3, 2) is not selected";
    EXPECT_EQ(block.A.at(1, 0), 100) << "(4, 2) is half selected";
    EXPECT_EQ(block.A.at(2, 0), 200);

    block.A.fill(255);
    ClipToMatte(block, doc().ABuffer, doc().width, doc().height, 18, 2);
    EXPECT_EQ(block.A.at(2, 0), 0) << "beyond the right edge";
}

TEST_F(CutAndCrop, ClearingMovesSelectedPixelsTowardsTheColourByTheMatte) {
    ClearSelectedPixels(host.workspace);
    const PackedColour white{255, 255, 255};
    ASSERT_EQ(host.workspace.colours.secondary, white);
    EXPECT_EQ(PackedPixel(doc(), 7, 5), white.packed());
    EXPECT_EQ(PackedPixel(doc(), 3, 2), PackedColour(30, 40, 77).packed());
    // Half way from (40, 40, 77) to white.
    EXPECT_NEAR(doc().RBuffer.at(4, 2), 40 + (255 - 40) * 128 / 255.0, 0.5);
    EXPECT_NEAR(doc().BBuffer.at(4, 2), 77 + (255 - 77) * 128 / 255.0, 0.5);
}

class RecordingStore : public CanvasResizeStore {
  public:
    bool resizeBeforePlanes() const override { return true; }
    bool resizeForCanvas(Workspace&, const CanvasChange& change) override {
        changes.push_back(change);
        return true;
    }
    std::vector<CanvasChange> changes;
};

TEST_F(CutAndCrop, CropKeepsTheSelectedBoxFramesIncluded) {
    RecordingStore frames;
    host.workspace.resizeStores.push_back(&frames);
    ASSERT_TRUE(CropToSelection(host.workspace));
    EXPECT_EQ(doc().width, 4);
    EXPECT_EQ(doc().height, 4);
    EXPECT_EQ(PackedPixel(doc(), 0, 0), PackedColour(40, 40, 77).packed());
    EXPECT_EQ(PackedPixel(doc(), 3, 3), PackedColour(70, 100, 77).packed());
    EXPECT_EQ(doc().ABuffer.at(0, 0), 128);
    ASSERT_EQ(frames.changes.size(), 1u);
    EXPECT_EQ(frames.changes[0].offsets.dx, -4);
    EXPECT_EQ(frames.changes[0].offsets.dy, -2);
    EXPECT_EQ(frames.changes[0].newWidth, 4);
    EXPECT_TRUE(doc().modified);
}

TEST_F(CutAndCrop, CropWithNothingSelectedSaysSoAndKeepsTheImage) {
    doc().ABuffer.fill(0);
    EXPECT_FALSE(CropToSelection(host.workspace));
    EXPECT_EQ(doc().width, 20);
    EXPECT_EQ(host.prompter.messages, std::vector<std::string>{kNothingSelected});
}

}  // namespace
}  // namespace wib
