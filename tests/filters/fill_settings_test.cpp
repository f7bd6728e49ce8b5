// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/fill_commands.h"
#include "filters/selection_commands.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Values = std::map<std::string, ParamValue>;

constexpr PackedColour kGround{0, 0, 100};
constexpr PackedColour kBlock{0, 0, 0};

// A 20 x 16 picture of one colour with a 6 x 6 block of another at (5, 5).
class FillSettingsCommands : public ::testing::Test {
  protected:
    FillSettingsCommands() {
        host.newDocument(20, 16);
        RegisterFillCommands(registry);
        RegisterSelectionCommands(registry);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 20; ++x) {
                SetPixel(doc(), x, y, InBlock(x, y) ? kBlock : kGround);
            }
        }
        host.workspace.colours.primary = {255, 0, 0};
        host.workspace.colours.secondary = {0, 200, 0};
    }
    static bool InBlock(int x, int y) { return x >= 5 && x <= 10 && y >= 5 && y <= 10; }
    Document& doc() { return host.workspace.document; }
    CommandOutcome fill(Values values) {
        values.emplace("tolerance", 0LL);
        return registry.run(host.workspace, "edit.fill", values);
    }
    void fillBlock(Values values) {
        values.emplace("x", 7LL);
        values.emplace("y", 7LL);
        const CommandOutcome outcome = fill(values);
        ASSERT_EQ(outcome.status, CommandOutcome::Status::Done) << outcome.error;
    }
    PackedColour at(int x, int y) {
        return {doc().RBuffer.at(x, y), doc().GBuffer.at(x, y), doc().BBuffer.at(x, y)};
    }
    testing::TestHost host;
    CommandRegistry registry;
};

TEST_F(FillSettingsCommands, TheSecondaryColourFillsByNameOrAsTheSettingsSay) {
    fillBlock({{"source", std::string("secondary")}});
    EXPECT_EQ(at(5, 5), (PackedColour{0, 200, 0}));
    EXPECT_EQ(at(10, 10), (PackedColour{0, 200, 0}));
    EXPECT_EQ(at(4, 5), kGround);
    EXPECT_EQ(at(11, 10), kGround);

    // Left out, the source is the current setting.
    host.workspace.fill.source = FillSource::Secondary;
    host.workspace.colours.secondary = {1, 2, 3};
    fillBlock({});
    EXPECT_EQ(at(8, 6), (PackedColour{1, 2, 3}));
    host.workspace.fill.source = FillSource::Primary;
    fillBlock({});
    EXPECT_EQ(at(8, 6), (PackedColour{255, 0, 0}));
}

TEST_F(FillSettingsCommands, APatternFillTilesTheBrushImageFromTheCorner) {
    // A 3 x 2 brush image (upper bounds 2, 1): red 10 x + 1, green 50 y + 7,
    // blue 90 + x + 3 y.
    Plane r(2, 1), g(2, 1), b(2, 1), a(2, 1, 255);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) {
            r.at(x, y) = static_cast<std::uint8_t>(10 * x + 1);
            g.at(x, y) = static_cast<std::uint8_t>(50 * y + 7);
            b.at(x, y) = static_cast<std::uint8_t>(90 + x + 3 * y);
        }
    }
    host.workspace.brush.assign(std::move(r), std::move(g), std::move(b), std::move(a));
    fillBlock({{"source", 2LL}});
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 20; ++x) {
            const PackedColour want =
                InBlock(x, y) ? PackedColour{static_cast<std::uint8_t>(10 * (x % 3) + 1),
                                             static_cast<std::uint8_t>(50 * (y % 2) + 7),
                                             static_cast<std::uint8_t>(90 + x % 3 + 3 * (y % 2))}
                              : kGround;
            ASSERT_EQ(at(x, y), want) << x << ", " << y;
        }
    }
}

TEST_F(FillSettingsCommands, APatternFillWithoutABrushImageIsRefused) {
    const CommandOutcome outcome = fill({{"x", 7LL}, {"y", 7LL}, {"source", 2LL}});
    EXPECT_NE(outcome.status, CommandOutcome::Status::Done);
    ASSERT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(at(7, 7), kBlock);
}

TEST_F(FillSettingsCommands, AGradientFillRunsAcrossTheRegionOrAsTheLastGradient) {
    fillBlock({{"source", std::string("gradient")}});
    EXPECT_EQ(at(5, 7), (PackedColour{255, 0, 0}));
    EXPECT_EQ(at(10, 7), (PackedColour{0, 200, 0}));
    EXPECT_EQ(at(4, 7), kGround);
    // Half-way along x = 5 .. 10 lies between the two ends on both channels.
    EXPECT_GT(at(8, 9).r, 0);
    EXPECT_LT(at(8, 9).r, 255);
    EXPECT_EQ(at(8, 9), at(8, 5)) << "a left-to-right gradient is the same down a column";

    // A vertical gradient laid on another picture sets where the next fill's ends lie.
    ASSERT_EQ(registry
                  .run(host.workspace, "draw.gradient",
                       {{"x0", 0LL}, {"y0", 0LL}, {"x1", 0LL}, {"y1", 15LL}})
                  .status,
              CommandOutcome::Status::Done);
    ClearImage(doc(), kGround);
    fillBlock({{"source", 3LL}, {"gradient", std::string("last")}});
    EXPECT_EQ(at(7, 0), (PackedColour{255, 0, 0}));
    EXPECT_EQ(at(7, 15), (PackedColour{0, 200, 0}));
    EXPECT_EQ(at(3, 8), at(17, 8));
}

TEST_F(FillSettingsCommands, TheAntialiasedEdgeIsPartialOnlyNextToTheRegionsBorder) {
    // Red 255 over red 0 shows the fill's weight itself.
    fillBlock({{"antialias", -1LL}});
    EXPECT_EQ(at(7, 7).r, 255);  // inside, two pixels from the edge
    EXPECT_EQ(at(5, 7).r, 170);  // inside on a side: 6 of 9
    EXPECT_EQ(at(4, 7).r, 85);   // outside on a side: 3 of 9
    EXPECT_EQ(at(5, 5).r, 113);  // inside corner: 4 of 9
    EXPECT_EQ(at(4, 4).r, 28);   // outside corner: 1 of 9
    EXPECT_EQ(at(3, 7).r, 0);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 20; ++x) {
            const int red = at(x, y).r;
            if (red == 0 || red == 255) {
                EXPECT_EQ(red == 255, InBlock(x, y)) << x << ", " << y;
                continue;
            }
            // Partial: within one pixel of the edge, on either side of it.
            bool nearEdge = false;
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -1; dx <= 1; ++dx) {
                    nearEdge = nearEdge || InBlock(x, y) != InBlock(x + dx, y + dy);
                }
            }
            EXPECT_TRUE(nearEdge) << x << ", " << y << " is " << red;
        }
    }
}

TEST_F(FillSettingsCommands, WithoutTheAntialiasedEdgeTheFillIsHard) {
    fillBlock({{"antialias", 0LL}});
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 20; ++x) {
            EXPECT_EQ(at(x, y).r, InBlock(x, y) ? 255 : 0) << x << ", " << y;
        }
    }
}

TEST_F(FillSettingsCommands, CompositeSamplingSeesAPixelOnlyAnotherLayerHolds) {
    // A layer above, clear but for one opaque white pixel inside the block.
    ASSERT_TRUE(AddLayer(host.workspace));
    const int top = CurrentLayer(host.workspace);
    Plane white(20, 16, 255);
    Plane coverage(20, 16, 0);
    coverage.at(8, 8) = 255;
    for (int channel = 0; channel < 3; ++channel) {
        ASSERT_TRUE(SetLayerPlane(host.workspace, top, channel, white));
    }
    ASSERT_TRUE(SetLayerPlane(host.workspace, top, 3, coverage));
    ASSERT_TRUE(SelectLayer(host.workspace, 0));

    fillBlock({{"sample", std::string("composite")}});
    EXPECT_EQ(at(8, 8), kBlock) << "the top layer's pixel bounds the region";
    EXPECT_EQ(at(7, 7), (PackedColour{255, 0, 0}));
    EXPECT_EQ(at(9, 9), (PackedColour{255, 0, 0}));

    ASSERT_TRUE(EditUndo(host.workspace));
    fillBlock({{"sample", std::string("layer")}});
    EXPECT_EQ(at(8, 8), (PackedColour{255, 0, 0})) << "the current layer alone is one colour";
}

TEST_F(FillSettingsCommands, AFillOnATransparentLayerCoversWhatItFills) {
    ASSERT_TRUE(AddLayer(host.workspace));
    ASSERT_FALSE(doc().Coverage.empty());
    doc().Coverage.fill(0);
    host.workspace.fill.antialias = true;
    fillBlock({});  // every pixel of the new layer is one colour: the whole picture
    EXPECT_EQ(doc().Coverage.at(0, 0), 255);
    EXPECT_EQ(doc().Coverage.at(19, 15), 255);
}

}  // namespace
}  // namespace wib
