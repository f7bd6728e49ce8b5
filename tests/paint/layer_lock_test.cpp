// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/layer_edit.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class LayerLocks : public ::testing::Test {
  protected:
    LayerLocks() {
        host.newDocument(40, 30);
        // Three pixels wide at full strength: the stroke's centre row takes
        // the colour whole.
        session.state().options.brushSize = 3;
        session.state().options.hardness = 100;
        session.state().options.relativeSpacing = false;
        session.state().options.spacing = 0;
        session.optionsChanged();
        session.setPrimaryColour({200, 100, 50});
    }
    void lock(bool pixels, bool alpha) {
        ChangeLayer(host.workspace, CurrentLayer(host.workspace),
                    {.lockPixels = pixels, .lockAlpha = alpha});
    }
    // A stroke of the brush tool along row `y` from x 5 to 20.
    void stroke(int y) {
        Tool& brush = session.tools().forPress({});
        const auto at = [y](float x) {
            return ToolInput{x, static_cast<float>(y), 1, {}, 1.0, false};
        };
        brush.press(at(5));
        brush.drag(at(20));
        brush.release(at(20));
    }
    long lockedLines() const {
        return std::count(host.log.lines.begin(), host.log.lines.end(), kLayerLockedMessage);
    }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    PaintSession session{host.workspace, std::filesystem::temp_directory_path()};
};

TEST_F(LayerLocks, LockedPixelsRefuseTheBrushAndSayWhy) {
    lock(true, false);
    doc.modified = false;
    stroke(10);
    EXPECT_EQ(PackedPixel(doc, 10, 10), 0xFFFFFF);
    EXPECT_FALSE(doc.modified);
    EXPECT_EQ(lockedLines(), 1) << "one line per refused stroke";
    EXPECT_TRUE(host.prompter.messages.empty()) << "no box in the painter's way";

    // A plug-in's stroke is refused the same way.
    session.brushDown(5, 15);
    session.brushMove(20, 15);
    session.brushUp(20, 15);
    EXPECT_EQ(PackedPixel(doc, 10, 15), 0xFFFFFF);
    EXPECT_EQ(lockedLines(), 2);

    lock(false, false);
    stroke(10);
    EXPECT_EQ(PackedPixel(doc, 10, 10), 200 + 100 * 256 + 50 * 65536);
    EXPECT_TRUE(doc.modified);
    EXPECT_EQ(lockedLines(), 2);
}

TEST_F(LayerLocks, LockedAlphaKeepsTheCoverageWhileTheColourChanges) {
    ASSERT_TRUE(AddLayer(host.workspace));  // clear: coverage 0 everywhere
    lock(false, true);
    stroke(10);
    EXPECT_EQ(doc.RBuffer.at(10, 10), 200);
    EXPECT_EQ(doc.Coverage.at(10, 10), 0);
    EXPECT_EQ(lockedLines(), 0);

    // Unlocked, the same stroke covers the layer where it paints fully.
    lock(false, false);
    stroke(20);
    EXPECT_EQ(doc.Coverage.at(10, 20), 255);
    EXPECT_EQ(doc.Coverage.at(10, 25), 0);
}

}  // namespace
}  // namespace wib
