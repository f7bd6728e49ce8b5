// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "core/commands.h"
#include "core/layer_commands.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/selection_commands.h"
#include "filters/transform_commands.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Values = std::map<std::string, ParamValue>;

// Each pixel's colour tells where it started: red x * 10, green y * 10.
PackedColour Marked(int x, int y) {
    return {static_cast<std::uint8_t>(10 * x), static_cast<std::uint8_t>(10 * y), 7};
}

class TransformCommands : public ::testing::Test {
  protected:
    TransformCommands() {
        host.newDocument(12, 10);
        RegisterSelectionCommands(registry);
        RegisterTransformCommands(registry);
        RegisterLayerCommands(registry);
        for (int y = 0; y < doc.height; ++y) {
            for (int x = 0; x < doc.width; ++x) {
                SetPixel(doc, x, y, Marked(x, y));
            }
        }
    }
    void run(const std::string& id, const Values& values = {}) {
        const CommandOutcome outcome = registry.run(host.workspace, id, values);
        ASSERT_EQ(outcome.status, CommandOutcome::Status::Done) << id << ": " << outcome.error;
    }
    void select(long long x, long long y, long long w, long long h) {
        run("select.rectangle", {{"x", x}, {"y", y}, {"width", w}, {"height", h}});
    }
    std::int32_t pixel(int x, int y) const { return PackedPixel(doc, x, y); }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    const PackedColour secondary = host.workspace.colours.secondary;
    CommandRegistry registry;
};

TEST_F(TransformCommands, MoveCarriesTheSelectedPixelsAndTheMatteAndLeavesTheSecondaryColour) {
    select(2, 3, 3, 2);
    run("move.selection", {{"dx", 4LL}, {"dy", 1LL}});
    for (int y = 3; y < 5; ++y) {
        for (int x = 2; x < 5; ++x) {
            EXPECT_EQ(pixel(x + 4, y + 1), Marked(x, y).packed()) << x << "," << y;
            EXPECT_EQ(doc.ABuffer.at(x + 4, y + 1), 255);
        }
    }
    EXPECT_EQ(pixel(2, 3), secondary.packed()) << "the place the pixels left";
    EXPECT_EQ(pixel(4, 4), secondary.packed());
    EXPECT_EQ(doc.ABuffer.at(2, 3), 0) << "the selection went with the pixels";
    EXPECT_EQ(pixel(5, 3), Marked(5, 3).packed()) << "unselected pixels stay";
    EXPECT_EQ(pixel(1, 1), Marked(1, 1).packed());

    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(pixel(2, 3), Marked(2, 3).packed()) << "one undo step";
    EXPECT_EQ(doc.ABuffer.at(2, 3), 255);
}

TEST_F(TransformCommands, MoveOnAnUpperLayerLeavesTransparency) {
    run("layer.new");
    ASSERT_EQ(CurrentLayer(host.workspace), 1);
    doc.Coverage = Plane(doc.width, doc.height, 255);
    select(0, 0, 2, 2);
    run("move.selection", {{"dx", 3LL}, {"dy", 0LL}});
    EXPECT_EQ(doc.Coverage.at(0, 0), 0);
    EXPECT_EQ(doc.Coverage.at(1, 1), 0);
    EXPECT_EQ(doc.Coverage.at(3, 0), 255);
    EXPECT_EQ(doc.Coverage.at(2, 0), 255) << "never selected";
}

TEST_F(TransformCommands, QuarterTurnOfASquareSelectionIsExact) {
    select(3, 2, 4, 4);
    run("transform.apply", {{"angle", 90.0}});
    // Clockwise about the box's centre: (x, y) goes to (3 + 5 - (y - 2) - 2, 2 + (x - 3)).
    for (int y = 2; y < 6; ++y) {
        for (int x = 3; x < 7; ++x) {
            const int nx = 3 + (5 - y);
            const int ny = 2 + (x - 3);
            EXPECT_EQ(pixel(nx, ny), Marked(x, y).packed()) << x << "," << y;
        }
    }
    EXPECT_EQ(pixel(2, 2), Marked(2, 2).packed());
    EXPECT_EQ(pixel(7, 5), Marked(7, 5).packed());
}

TEST_F(TransformCommands, WithNothingSelectedTheWholeLayerFlipsExactly) {
    run("transform.apply", {{"flip_h", -1LL}});
    for (int y = 0; y < doc.height; ++y) {
        for (int x = 0; x < doc.width; ++x) {
            EXPECT_EQ(pixel(x, y), Marked(doc.width - 1 - x, y).packed());
        }
    }
    EXPECT_EQ(doc.AlphaBitsFlag, 0) << "no selection appears";
}

TEST_F(TransformCommands, HalfScaleKeepsTheCentreAndClearsTheRest) {
    select(0, 0, 8, 8);
    run("transform.apply", {{"scale_x", 0.5}, {"scale_y", 0.5}});
    // The 8 x 8 box shrinks to the 4 x 4 about its centre (4, 4): 2..5.
    // Each new pixel averages a 2 x 2 block: red 10 (2x + 0.5), green 10 (2y + 0.5).
    for (int y = 2; y < 6; ++y) {
        for (int x = 2; x < 6; ++x) {
            const int sx = 2 * (x - 2);
            const int sy = 2 * (y - 2);
            EXPECT_NEAR(doc.RBuffer.at(x, y), 10 * (sx + 0.5), 1) << x << "," << y;
            EXPECT_NEAR(doc.GBuffer.at(x, y), 10 * (sy + 0.5), 1);
            EXPECT_EQ(doc.ABuffer.at(x, y), 255);
        }
    }
    EXPECT_EQ(pixel(0, 0), secondary.packed());
    EXPECT_EQ(pixel(7, 7), secondary.packed());
    EXPECT_EQ(doc.ABuffer.at(0, 0), 0);
    EXPECT_EQ(pixel(9, 9), Marked(9, 9).packed());
}

TEST_F(TransformCommands, EmptySelectionIsRefusedAndChangesNothing) {
    select(0, 0, 1, 1);
    doc.ABuffer.fill(0);
    const CommandOutcome outcome =
        registry.run(host.workspace, "transform.apply", {{"angle", 30.0}});
    EXPECT_EQ(outcome.status, CommandOutcome::Status::Refused);
    EXPECT_EQ(pixel(0, 0), Marked(0, 0).packed());
}

TEST_F(TransformCommands, CropKeepsTheRectangle) {
    run("image.crop", {{"x", 3LL}, {"y", 2LL}, {"width", 5LL}, {"height", 4LL}});
    EXPECT_EQ(doc.width, 5);
    EXPECT_EQ(doc.height, 4);
    EXPECT_EQ(doc.RBuffer.ubX(), 5);
    EXPECT_EQ(pixel(0, 0), Marked(3, 2).packed());
    EXPECT_EQ(pixel(4, 3), Marked(7, 5).packed());
}

TEST_F(TransformCommands, WholePictureTurnsAndFlips) {
    run("image.rotate_clockwise");
    ASSERT_EQ(doc.width, 10);
    ASSERT_EQ(doc.height, 12);
    // Clockwise: old (x, y) lands at (oldHeight - 1 - y, x).
    EXPECT_EQ(pixel(9, 0), Marked(0, 0).packed());
    EXPECT_EQ(pixel(0, 11), Marked(11, 9).packed());
    EXPECT_EQ(pixel(6, 4), Marked(4, 3).packed());
    run("image.rotate_anticlockwise");
    ASSERT_EQ(doc.width, 12);
    EXPECT_EQ(pixel(4, 3), Marked(4, 3).packed());
    run("image.flip_vertical");
    EXPECT_EQ(pixel(4, 0), Marked(4, 9).packed());
    run("image.rotate_180");
    EXPECT_EQ(pixel(4, 0), Marked(7, 0).packed());
    run("image.flip_horizontal");
    EXPECT_EQ(pixel(4, 0), Marked(4, 0).packed());
}

}  // namespace
}  // namespace wib
