// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/fill_commands.h"
#include "filters/selection_commands.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "paint/shape_commands.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Values = std::map<std::string, ParamValue>;

// Each tool, driven by press, drag and release, leaves the picture as its
// command does with the same numbers.
class ToolCommands : public ::testing::Test {
  protected:
    ToolCommands() {
        host.newDocument(40, 30);
        RegisterSelectionCommands(registry);
        RegisterFillCommands(registry);
        RegisterPaintCommands(registry, session);
        RegisterShapeCommands(registry, session);
        host.workspace.view.zoom = 200;  // tools get window units: twice the pixels
        session.setPrimaryColour({200, 10, 10});
        session.setSecondaryColour({10, 10, 200});
        // Stripes to give the wand and the fill edges to stop at.
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x) {
                SetPixel(doc(), x, y, x < 15 ? PackedColour{50, 50, 50} : PackedColour{60, 90, 60});
            }
        }
    }
    Document& doc() { return host.workspace.document; }
    static ToolInput At(float x, float y, ToolModifiers keys = {}) {
        return {x, y, 1, keys, 1, false};
    }
    // Press at `from`, drag half-way, release at `to` (image pixels), with
    // `keys` held at the press and `held` on the move and the release.
    void drag(ToolId id, std::array<float, 2> from, std::array<float, 2> to,
              ToolModifiers keys = {}, ToolModifiers held = {}) {
        session.tools().choose(id);
        Tool& tool = session.tools().forPress(keys);
        tool.press(At(from[0] * 2, from[1] * 2, keys));
        tool.drag(At(from[0] + to[0], from[1] + to[1], held));
        tool.release(At(to[0] * 2, to[1] * 2, held));
    }
    void run(const std::string& id, const Values& values) {
        const CommandOutcome outcome = registry.run(host.workspace, id, values);
        ASSERT_EQ(outcome.status, CommandOutcome::Status::Done) << id << ": " << outcome.error;
    }
    // The matte and the colours now.
    std::vector<int> picture() {
        std::vector<int> out{doc().AlphaBitsFlag};
        for (int y = 0; y < doc().height; ++y) {
            for (int x = 0; x < doc().width; ++x) {
                out.push_back(doc().ABuffer.at(x, y));
                out.push_back(PackedPixel(doc(), x, y));
            }
        }
        return out;
    }
    // Runs `tool`, then undoes it and runs `command`: both must give the
    // same picture, one undo step each, and change something.
    void expectSame(const std::function<void()>& tool, const std::string& command,
                    const Values& values) {
        const std::vector<int> before = picture();
        tool();
        const std::vector<int> byTool = picture();
        EXPECT_NE(byTool, before) << command << ": the tool changed nothing";
        ASSERT_TRUE(EditUndo(host.workspace));
        ASSERT_EQ(picture(), before) << command << ": the tool was not one undo step";
        run(command, values);
        EXPECT_EQ(picture(), byTool) << command;
    }

    testing::TestHost host;
    CommandRegistry registry;
    PaintSession session{host.workspace, std::filesystem::temp_directory_path()};
};

TEST_F(ToolCommands, SelectionToolsMakeTheirCommandsMatte) {
    ToolOptions& options = session.state().toolOptions;
    options.feather = 1.5;
    options.antialias = true;
    expectSame(
        [this] {
            drag(ToolId::SelectRectangle, {22, 18}, {4, 3});
        },
        "select.rectangle",
        {{"x", 4LL},
         {"y", 3LL},
         {"width", 18LL},
         {"height", 15LL},
         {"feather", 1.5},
         {"antialias", -1LL}});
    expectSame(
        [this] {
            drag(ToolId::SelectEllipse, {3, 2}, {30.2f, 21.7f});
        },
        "select.ellipse",
        {{"x", 3LL}, {"y", 2LL}, {"width", 27LL}, {"height", 20LL}, {"feather", 1.5}});
    options.feather = 0;
    expectSame(
        [this] {
            session.tools().choose(ToolId::SelectLasso);
            Tool& lasso = session.tools().active();
            lasso.press(At(10, 10));
            lasso.drag(At(30, 30));
            lasso.release(At(10, 50));
        },
        "select.polygon", {{"points", IntegerList{5, 5, 15, 15, 5, 25}}});
    options.tolerance = 20;
    expectSame(
        [this] {
            session.tools().choose(ToolId::MagicWand);
            session.tools().active().press(At(60, 10));
        },
        "select.wand", {{"x", 30LL}, {"y", 5LL}, {"tolerance", 20LL}});
}

TEST_F(ToolCommands, ThePolygonToolClosesOnItsFirstCornerOrOnEnter) {
    const auto corners = [this](bool byEnter) {
        session.tools().choose(ToolId::SelectPolygon);
        Tool& tool = session.tools().active();
        const std::array<float, 2> clicks[] = {{4, 4}, {30, 6}, {20, 26}};
        for (const auto& [x, y] : clicks) {
            tool.press(At(x * 2, y * 2));
            tool.release(At(x * 2, y * 2));
        }
        EXPECT_TRUE(tool.holdsPointer());
        EXPECT_EQ(tool.overlay().kind, ToolOverlay::Kind::Polygon);
        if (byEnter) {
            tool.finish();
        } else {
            tool.press(At(4 * 2 + 3, 4 * 2 - 2));  // within a few screen pixels of the first
        }
        EXPECT_FALSE(tool.holdsPointer());
    };
    expectSame([&] { corners(false); }, "select.polygon",
               {{"points", IntegerList{4, 4, 30, 6, 20, 26}}});
    run("select.none", {});
    expectSame([&] { corners(true); }, "select.polygon",
               {{"points", IntegerList{4, 4, 30, 6, 20, 26}}});
}

TEST_F(ToolCommands, ModifierKeysChooseHowTheNewSelectionMeetsTheOld) {
    struct Case {
        ToolModifiers keys;
        int inOldOnly, inBoth, inNewOnly;
    };
    // Old: columns 0..19; new: columns 10..29, every row.
    const Case cases[] = {{{}, 0, 255, 255},
                          {{.shift = true}, 255, 255, 255},
                          {{.alt = true}, 255, 0, 0},
                          {{.shift = true, .alt = true}, 0, 255, 0}};
    for (const Case& c : cases) {
        run("select.rectangle", {{"x", 0LL}, {"y", 0LL}, {"width", 20LL}, {"height", 30LL}});
        drag(ToolId::SelectRectangle, {10, 0}, {30, 30}, c.keys);
        EXPECT_EQ(doc().ABuffer.at(5, 9), c.inOldOnly);
        EXPECT_EQ(doc().ABuffer.at(15, 9), c.inBoth);
        EXPECT_EQ(doc().ABuffer.at(25, 9), c.inNewOnly);
        EXPECT_EQ(doc().ABuffer.at(35, 9), 0);
        EXPECT_EQ(session.state().activeTool, ToolId::SelectRectangle)
            << "the keys do not borrow the clone or picker tool";
    }
    // A click without a drag selects nothing, in replace mode only.
    drag(ToolId::SelectRectangle, {10, 10}, {10, 10}, {.shift = true});
    EXPECT_EQ(doc().AlphaBitsFlag, 255);
    drag(ToolId::SelectRectangle, {10, 10}, {10, 10});
    EXPECT_EQ(doc().AlphaBitsFlag, 0);
}

TEST_F(ToolCommands, FillGradientAndShapesRunTheirCommands) {
    ToolOptions& options = session.state().toolOptions;
    options.tolerance = 5;
    options.eightConnected = true;
    expectSame(
        [this] {
            session.tools().choose(ToolId::Fill);
            session.tools().active().press(At(4, 4));
        },
        "edit.fill", {{"x", 2LL}, {"y", 2LL}, {"tolerance", 5LL}, {"connectivity", 8LL}});
    options.gradientShape = 1;
    options.gradientDither = 0;
    expectSame(
        [this] {
            drag(ToolId::Gradient, {20, 15}, {35.4f, 15});
        },
        "draw.gradient", {{"x0", 20LL}, {"y0", 15LL}, {"x1", 35LL}, {"y1", 15LL}, {"shape", 1LL}});
    options.gradientDither = 2;
    expectSame(
        [this] {
            drag(ToolId::Gradient, {2, 3}, {37, 28});
        },
        "draw.gradient",
        {{"x0", 2LL},
         {"y0", 3LL},
         {"x1", 37LL},
         {"y1", 28LL},
         {"shape", 1LL},
         {"dither", -1LL},
         {"dither_kind", 1LL}});
    options.shapeFilled = true;
    expectSame(
        [this] {
            drag(ToolId::Rectangle, {3, 4}, {20, 12});
        },
        "draw.rectangle", {{"x0", 3LL}, {"y0", 4LL}, {"x1", 20LL}, {"y1", 12LL}, {"filled", -1LL}});
    expectSame(
        [this] {
            drag(ToolId::Line, {1, 28}, {38, 2});
        },
        "draw.line", {{"x0", 1LL}, {"y0", 28LL}, {"x1", 38LL}, {"y1", 2LL}});
}

TEST_F(ToolCommands, ShiftWhileDraggingKeepsLinesToEighthTurnsAndBoxesSquare) {
    const ToolModifiers shift{true, false, false};
    // 3 down over 15 across is within 22.5 degrees of the horizontal.
    expectSame(
        [&] {
            drag(ToolId::Line, {5, 5}, {20, 8}, {}, shift);
        },
        "draw.line", {{"x0", 5LL}, {"y0", 5LL}, {"x1", 20LL}, {"y1", 5LL}});
    expectSame(
        [&] {
            drag(ToolId::Line, {5, 5}, {7, 25}, {}, shift);
        },
        "draw.line", {{"x0", 5LL}, {"y0", 5LL}, {"x1", 5LL}, {"y1", 25LL}});
    // Up and to the right, nearer the diagonal: the longer side counts.
    expectSame(
        [&] {
            drag(ToolId::Line, {5, 25}, {16, 15}, {}, shift);
        },
        "draw.line", {{"x0", 5LL}, {"y0", 25LL}, {"x1", 16LL}, {"y1", 14LL}});
    expectSame(
        [&] {
            drag(ToolId::Rectangle, {4, 4}, {20, 10}, {}, shift);
        },
        "draw.rectangle", {{"x0", 4LL}, {"y0", 4LL}, {"x1", 20LL}, {"y1", 20LL}});
    // Dragged up and to the left: the square grows that way.
    expectSame(
        [&] {
            drag(ToolId::SelectEllipse, {30, 25}, {22, 20}, {}, shift);
        },
        "select.ellipse", {{"x", 22LL}, {"y", 17LL}, {"width", 8LL}, {"height", 8LL}});
    // Shift at the press still adds; held on, it also squares the box.
    run("select.rectangle", {{"x", 0LL}, {"y", 0LL}, {"width", 2LL}, {"height", 2LL}});
    drag(ToolId::SelectRectangle, {10, 10}, {16, 13}, shift, shift);
    EXPECT_EQ(doc().ABuffer.at(0, 0), 255) << "added to, not replaced";
    EXPECT_EQ(doc().ABuffer.at(15, 15), 255);
    EXPECT_EQ(doc().ABuffer.at(15, 16), 0);
    EXPECT_EQ(doc().ABuffer.at(16, 15), 0);
}

TEST_F(ToolCommands, SelectingByColourTakesTheColourEverywhereAndHonoursTheKeys) {
    // An island of the left stripe's colour, apart from it.
    for (int y = 10; y < 13; ++y) {
        for (int x = 30; x < 33; ++x) {
            SetPixel(doc(), x, y, {50, 50, 50});
        }
    }
    ToolOptions& options = session.state().toolOptions;
    options.tolerance = 0;
    options.contiguous = true;  // the wand's option; selecting by colour ignores it
    expectSame(
        [this] {
            session.tools().choose(ToolId::SelectByColour);
            session.tools().active().press(At(4, 4));
        },
        "select.wand", {{"x", 2LL}, {"y", 2LL}, {"tolerance", 0LL}, {"contiguous", 0LL}});
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            const bool grey = x < 15 || (x >= 30 && x < 33 && y >= 10 && y < 13);
            ASSERT_EQ(doc().ABuffer.at(x, y), grey ? 255 : 0) << x << ", " << y;
        }
    }
    // Alt takes the colour away again.
    session.tools().active().press(At(64, 24, {.alt = true}));
    EXPECT_EQ(doc().ABuffer.at(31, 11), 0);
    EXPECT_EQ(doc().ABuffer.at(2, 2), 0);
}

TEST_F(ToolCommands, AGradientDragShowsItsLineUntilReleased) {
    session.tools().choose(ToolId::Gradient);
    Tool& tool = session.tools().active();
    tool.press(At(10, 20));
    tool.drag(At(30, 40));
    const ToolOverlay line = tool.overlay();
    ASSERT_EQ(line.kind, ToolOverlay::Kind::Line);
    ASSERT_EQ(line.points.size(), 2U);
    EXPECT_FLOAT_EQ(line.points[1][0], 15);  // image pixels at 200 %
    EXPECT_FLOAT_EQ(line.points[1][1], 20);
    tool.release(At(30, 40));
    EXPECT_EQ(tool.overlay().kind, ToolOverlay::Kind::None);
}

}  // namespace
}  // namespace wib
