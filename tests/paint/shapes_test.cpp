// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>

#include "core/commands.h"
#include "core/undo.h"
#include "paint/paint_session.h"
#include "paint/shape_commands.h"
#include "paint/shapes.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

constexpr std::int32_t kWhite = 0xFFFFFF;

// A white 100 x 80 image, black primary colour, and a one-pixel hard brush
// laying a dab at every pixel it passes, so a stroke marks exactly its path.
class Shapes : public ::testing::Test {
  protected:
    Shapes() {
        host.newDocument(100, 80);
        PaintState& state = session.state();
        state.options.brushSize = 1;
        state.options.hardness = 100;
        state.options.relativeSpacing = false;
        state.options.spacing = 0;
        session.optionsChanged();
        session.setPrimaryColour({0, 0, 0});
        RegisterShapeCommands(commands, session);
    }
    Document& doc() { return host.workspace.document; }
    bool painted(int x, int y) { return PackedPixel(doc(), x, y) != kWhite; }
    // How much of full black the image took, in pixels' worth.
    double inkedArea() {
        double sum = 0;
        for (int y = 0; y < doc().height; ++y) {
            for (int x = 0; x < doc().width; ++x) {
                sum += (255 - doc().RBuffer.at(x, y)) / 255.0;
            }
        }
        return sum;
    }
    void expectBlank() {
        for (int y = 0; y < doc().height; ++y) {
            for (int x = 0; x < doc().width; ++x) {
                ASSERT_EQ(PackedPixel(doc(), x, y), kWhite) << x << ", " << y;
            }
        }
    }
    CommandOutcome::Status run(const std::string& id, std::map<std::string, ParamValue> values) {
        return commands.run(host.workspace, id, values).status;
    }
    testing::TestHost host;
    PaintSession session{host.workspace, std::filesystem::temp_directory_path()};
    CommandRegistry commands;
};

TEST_F(Shapes, ALinePaintsBothEndsAndItsPathAsOneUndoStep) {
    // Whatever an earlier stroke left in the spacing count, the line starts with a dab.
    session.state().options.spacing = 3;
    session.state().stroke.spacingCounter = 2;
    DrawLine(session, 10, 20, 40, 35);
    EXPECT_TRUE(painted(10, 20));
    session.state().options.spacing = 0;
    DrawLine(session, 10, 50, 40, 65);
    EXPECT_TRUE(painted(10, 50));
    EXPECT_TRUE(painted(40, 65));
    EXPECT_TRUE(painted(24, 57) || painted(25, 57)) << "the middle of the path";
    EXPECT_FALSE(painted(10, 65));
    EXPECT_TRUE(doc().modified);

    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_FALSE(painted(10, 50));
    EXPECT_FALSE(painted(40, 65));
    EXPECT_TRUE(painted(10, 20)) << "only the last line was taken back";
}

TEST_F(Shapes, AStrokedRectangleRunsRoundItsEdgePixels) {
    DrawRectangle(session, ShapeBox::FromCorners(60, 40, 20, 10), false);
    for (int x = 20; x <= 60; ++x) {
        EXPECT_TRUE(painted(x, 10) && painted(x, 40)) << "x " << x;
    }
    for (int y = 10; y <= 40; ++y) {
        EXPECT_TRUE(painted(20, y) && painted(60, y)) << "y " << y;
    }
    EXPECT_FALSE(painted(21, 11));
    EXPECT_FALSE(painted(40, 25));
    EXPECT_FALSE(painted(61, 25));
}

TEST_F(Shapes, AStrokedEllipseTouchesItsBoxAtFourPointsOnly) {
    DrawEllipse(session, ShapeBox::FromCorners(20, 10, 80, 50), false);
    EXPECT_TRUE(painted(20, 30));
    EXPECT_TRUE(painted(80, 30));
    EXPECT_TRUE(painted(50, 10));
    EXPECT_TRUE(painted(50, 50));
    EXPECT_FALSE(painted(20, 10)) << "corners of the box stay clear";
    EXPECT_FALSE(painted(80, 50));
    EXPECT_FALSE(painted(50, 30)) << "the centre stays clear";
    // Every painted pixel lies near the ellipse (x-50)^2/30^2 + (y-30)^2/20^2 = 1.
    for (int y = 0; y < doc().height; ++y) {
        for (int x = 0; x < doc().width; ++x) {
            if (painted(x, y)) {
                const double r = std::hypot((x - 50) / 30.0, (y - 30) / 20.0);
                EXPECT_NEAR(r, 1.0, 0.06) << x << ", " << y;
            }
        }
    }
}

TEST_F(Shapes, AFilledEllipseCoversPiABWithASoftEdge) {
    DrawEllipse(session, ShapeBox::FromCorners(10, 10, 69, 49), true);  // 60 x 40
    const double expected = std::numbers::pi * 30 * 20;
    EXPECT_NEAR(inkedArea(), expected, expected * 0.005);
    EXPECT_EQ(PackedPixel(doc(), 40, 30), 0);
    EXPECT_FALSE(painted(10, 10));
    EXPECT_FALSE(painted(70, 30));
    int partial = 0;
    for (int x = 10; x < 40; ++x) {
        const int v = doc().RBuffer.at(x, 16);
        partial += v > 0 && v < 255 ? 1 : 0;
    }
    EXPECT_GE(partial, 1) << "the edge is anti-aliased";

    ASSERT_TRUE(EditUndo(host.workspace));
    expectBlank();
}

TEST_F(Shapes, FillsGoThroughTheSelection) {
    // Only the left half is selected, the column x = 50 half.
    for (int y = 0; y < doc().height; ++y) {
        for (int x = 50; x < doc().width; ++x) {
            doc().ABuffer.at(x, y) = x == 50 ? 128 : 0;
        }
    }
    doc().AlphaBitsFlag = 255;
    session.setPrimaryColour({0, 100, 200});
    DrawRectangle(session, ShapeBox::FromCorners(40, 5, 60, 6), true);
    EXPECT_EQ(PackedPixel(doc(), 40, 5), PackedColour(0, 100, 200).packed());
    EXPECT_EQ(PackedPixel(doc(), 49, 6), PackedColour(0, 100, 200).packed());
    EXPECT_NEAR(doc().RBuffer.at(50, 5), 255 * 127 / 255.0, 0.5);
    EXPECT_NEAR(doc().BBuffer.at(50, 5), 200 + 55 * 127 / 255.0, 0.5);
    EXPECT_EQ(PackedPixel(doc(), 51, 5), kWhite);
    EXPECT_EQ(PackedPixel(doc(), 39, 5), kWhite);

    DrawEllipse(session, ShapeBox::FromCorners(20, 20, 79, 79), true);
    EXPECT_FALSE(painted(60, 50));
    EXPECT_TRUE(painted(45, 50));
}

TEST_F(Shapes, TheCommandsTakeImagePixelsWhateverTheZoom) {
    host.workspace.view.zoom = 200;
    EXPECT_EQ(run("draw.line", {{"x0", 5LL}, {"y0", 5LL}, {"x1", 15LL}, {"y1", 5LL}}),
              CommandOutcome::Status::Done);
    EXPECT_TRUE(painted(5, 5));
    EXPECT_TRUE(painted(15, 5));
    EXPECT_FALSE(painted(16, 5));
    EXPECT_EQ(run("draw.rectangle",
                  {{"x0", 70LL}, {"y0", 70LL}, {"x1", 79LL}, {"y1", 74LL}, {"filled", -1LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 70, 70), 0);
    EXPECT_EQ(PackedPixel(doc(), 79, 74), 0);
    EXPECT_FALSE(painted(80, 74));
    EXPECT_FALSE(painted(79, 75));
    EXPECT_EQ(run("draw.ellipse", {{"x0", 0LL}, {"y0", 30LL}, {"x1", 10LL}, {"y1", 40LL}}),
              CommandOutcome::Status::Done);
    EXPECT_TRUE(painted(0, 35));
    EXPECT_FALSE(painted(5, 35));

    for (int step = 0; step < 3; ++step) {
        ASSERT_TRUE(EditUndo(host.workspace)) << "each shape is one step";
    }
    expectBlank();
}

}  // namespace
}  // namespace wib
