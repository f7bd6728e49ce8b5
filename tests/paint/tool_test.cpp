// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "core/commands.h"
#include "core/layer_commands.h"
#include "core/undo.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class Tools : public ::testing::Test {
  protected:
    Tools() {
        host.newDocument(80, 60);
        // Three pixels: the centre row of a horizontal stroke is painted at
        // full strength.
        session.state().options.brushSize = 3;
        session.state().options.hardness = 100;
        session.state().options.relativeSpacing = false;
        session.state().options.spacing = 0;
        session.optionsChanged();
        session.setPrimaryColour({0, 0, 0});
    }
    static ToolInput At(float x, float y, int button = 1, ToolModifiers modifiers = {}) {
        return {x, y, button, modifiers, 1.0, false};
    }
    testing::TestHost host;
    PaintSession session{host.workspace, std::filesystem::temp_directory_path()};
};

TEST_F(Tools, TheBrushToolPaintsOneUndoableStrokeWithThePressedButton) {
    host.workspace.colours.secondary = {7, 8, 9};
    Tool& brush = session.tools().forPress({});
    brush.press(At(10, 20, 2));
    EXPECT_TRUE(brush.holdsPointer());
    brush.press(At(50, 50, 1));
    brush.drag(At(30, 20, 0));
    brush.release(At(30, 20, 0));
    EXPECT_FALSE(brush.holdsPointer());
    const Document& doc = host.workspace.document;
    for (int x = 10; x <= 30; ++x) {
        EXPECT_EQ(PackedPixel(doc, x, 20), 7 + 8 * 256 + 9 * 65536) << "x " << x;
    }
    EXPECT_EQ(PackedPixel(doc, 33, 20), 0xFFFFFF);
    EXPECT_EQ(PackedPixel(doc, 50, 50), 0xFFFFFF) << "a second press during a stroke is ignored";
    EXPECT_GT(host.view.areaRefreshes, 0);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 20, 20), 0xFFFFFF) << "the stroke was one step";

    // Any other button paints nothing, and a drag after the release neither.
    brush.press(At(10, 30, 0));
    brush.drag(At(30, 30, 0));
    brush.release(At(30, 30, 0));
    brush.drag(At(40, 40, 0));
    EXPECT_EQ(PackedPixel(doc, 20, 30), 0xFFFFFF);
    EXPECT_EQ(PackedPixel(doc, 40, 40), 0xFFFFFF);
}

TEST_F(Tools, ANewStrokeCarriesTheSpacingCounterOn) {
    session.state().options.spacing = 10;
    Tool& brush = session.tools().active();
    // The press visits its point twice, the drag five more: the counter is at 7.
    brush.press(At(0, 10));
    brush.drag(At(4, 10));
    brush.release(At(4, 10));
    brush.press(At(30, 10));
    brush.release(At(30, 10));
    const Document& doc = host.workspace.document;
    EXPECT_NE(PackedPixel(doc, 0, 10), 0xFFFFFF);
    EXPECT_EQ(PackedPixel(doc, 30, 10), 0xFFFFFF) << "counter 8 and 9: no dab";
}

TEST_F(Tools, AltPicksAndCtrlSetsTheCloneSourceForOnePress) {
    host.workspace.view.zoom = 200;
    SetPixel(host.workspace.document, 15, 12, {0x12, 0x34, 0x56});
    ToolBox& tools = session.tools();
    tools.forPress({.alt = true}).press(At(30, 24));
    EXPECT_EQ(host.workspace.colours.primary.packed(), 0x563412) << "canvas units / zoom";

    tools.forPress({.ctrl = true, .alt = true}).press(At(40, 10));
    ASSERT_TRUE(session.state().cloneSource);
    EXPECT_EQ((*session.state().cloneSource)[0], 20);
    EXPECT_EQ((*session.state().cloneSource)[1], 5);
    EXPECT_EQ(session.state().activeTool, ToolId::Brush) << "the modifiers chose for one press";
    EXPECT_EQ(PackedPixel(host.workspace.document, 20, 5), 0xFFFFFF) << "nothing painted";
}

TEST_F(Tools, ChoosingAToolMakesItThePressTool) {
    ToolBox& tools = session.tools();
    EXPECT_EQ(tools.active().cursor(), ToolCursor::BrushOutline);
    EXPECT_STREQ(tools.active().optionsPanel(), "BrushOptions");
    tools.choose(ToolId::ColourPicker);
    EXPECT_EQ(session.state().activeTool, ToolId::ColourPicker);
    EXPECT_EQ(tools.active().cursor(), ToolCursor::Picker);
    SetPixel(host.workspace.document, 5, 6, {1, 2, 3});
    tools.forPress({}).press(At(5, 6));
    EXPECT_EQ(host.workspace.colours.primary.packed(), 0x030201);
    EXPECT_EQ(PackedPixel(host.workspace.document, 5, 6), 0x030201) << "picking paints nothing";
    tools.choose(ToolId::CloneSource);
    EXPECT_EQ(tools.active().cursor(), ToolCursor::CloneSource);
}

TEST(CloneSource, StrokesCopyFromTheSourceAlignedOrAfresh) {
    testing::TestHost host;
    host.newDocument(60, 40);
    Document& doc = host.workspace.document;
    for (int x = 0; x < 60; ++x) {
        for (int y = 0; y < 40; ++y) {
            SetPixel(doc, x, y,
                     {static_cast<std::uint8_t>(x * 4), static_cast<std::uint8_t>(y * 6), 0});
        }
    }
    PaintSession session(host.workspace, std::filesystem::temp_directory_path());
    session.state().options.paintMode = static_cast<int>(PaintMode::Clone);
    session.state().options.brushSize = 3;
    session.state().options.hardness = 100;
    // Every position lays a dab, so each click paints whatever the spacing
    // counter carried over from the stroke before.
    session.state().options.relativeSpacing = false;
    session.state().options.spacing = 0;
    session.optionsChanged();

    session.setCloneSource(5, 5);
    session.penPress(1, 30, 20, 1.0, false);
    session.penRelease(30, 20);
    EXPECT_EQ(doc.RBuffer.at(30, 20), 5 * 4) << "the pixel at the source";
    EXPECT_EQ(doc.GBuffer.at(30, 20), 5 * 6);

    // Aligned: the next stroke keeps the offset (25, 15).
    session.penPress(1, 40, 30, 1.0, false);
    session.penRelease(40, 30);
    EXPECT_EQ(doc.RBuffer.at(40, 30), 15 * 4);

    // Not aligned: every stroke starts again from the source.
    session.state().options.cloneAligned = false;
    session.penPress(1, 50, 10, 1.0, false);
    session.penRelease(50, 10);
    EXPECT_EQ(doc.RBuffer.at(50, 10), 5 * 4);
    EXPECT_EQ(doc.GBuffer.at(50, 10), 5 * 6);
}

TEST_F(Tools, TheToolsMenuChoosesTheActiveTool) {
    CommandRegistry commands;
    RegisterPaintCommands(commands, session);
    int told = 0;
    const Subscription listening =
        host.workspace.events.paintOptionsChanged.subscribe([&told] { ++told; });
    ASSERT_EQ(commands.run(host.workspace, "tool.colour_picker", {}).status,
              CommandOutcome::Status::Done);
    EXPECT_EQ(told, 1) << "the canvas shows the tool's pointer";
    SetPixel(host.workspace.document, 5, 6, {1, 2, 3});
    Tool& picker = session.tools().forPress({});
    EXPECT_EQ(picker.cursor(), ToolCursor::Picker);
    picker.press(At(5, 6));
    picker.release(At(5, 6));
    EXPECT_EQ(host.workspace.colours.primary, (PackedColour{1, 2, 3}));

    ASSERT_EQ(commands.run(host.workspace, "tool.brush", {}).status, CommandOutcome::Status::Done);
    EXPECT_EQ(session.tools().forPress({}).cursor(), ToolCursor::BrushOutline);
}

TEST_F(Tools, TheEraserLaysTheSecondaryOnTheBottomAndTakesCoverageAboveIt) {
    CommandRegistry commands;
    RegisterLayerCommands(commands);
    host.workspace.colours.secondary = {7, 8, 9};
    ToolBox& tools = session.tools();
    tools.choose(ToolId::Eraser);
    EXPECT_EQ(tools.active().cursor(), ToolCursor::BrushOutline);
    Tool& eraser = tools.forPress({});
    eraser.press(At(10, 20));
    eraser.drag(At(30, 20));
    eraser.release(At(30, 20));
    const Document& doc = host.workspace.document;
    EXPECT_EQ(PackedPixel(doc, 20, 20), 7 + 8 * 256 + 9 * 65536);
    EXPECT_FALSE(session.state().erasing) << "only during the eraser's stroke";

    ASSERT_EQ(commands.run(host.workspace, "layer.new", {}).status, CommandOutcome::Status::Done);
    ASSERT_FALSE(doc.Coverage.empty());
    tools.choose(ToolId::Brush);
    Tool& brush = tools.forPress({});
    brush.press(At(10, 30));
    brush.drag(At(30, 30));
    brush.release(At(30, 30));
    ASSERT_EQ(doc.Coverage.at(20, 30), 255);
    const int colourBefore = PackedPixel(doc, 20, 30);

    tools.choose(ToolId::Eraser);
    eraser.press(At(20, 30));
    eraser.release(At(20, 30));
    EXPECT_EQ(doc.Coverage.at(20, 30), 0) << "a full-strength dab takes all coverage";
    EXPECT_EQ(doc.Coverage.at(24, 30), 255) << "beyond the dab";
    EXPECT_EQ(PackedPixel(doc, 20, 30), colourBefore) << "no colour laid on an upper layer";
}

TEST_F(Tools, TheEyedropperAveragesASquareOfTheChosenSize) {
    Document& doc = host.workspace.document;
    // Red rises by 10 a column around (20, 10); green is 90 on the centre only.
    for (int y = 5; y <= 15; ++y) {
        for (int x = 15; x <= 25; ++x) {
            SetPixel(doc, x, y, {static_cast<std::uint8_t>(100 + 10 * (x - 20)), 0, 0});
        }
    }
    SetPixel(doc, 20, 10, {100, 90, 0});
    session.tools().choose(ToolId::ColourPicker);
    EXPECT_STREQ(session.tools().active().optionsPanel(), "EyedropperOptions");
    const auto pick = [this](int size) {
        session.state().toolOptions.pickerSize = size;
        session.tools().active().press(At(20.5f, 10.5f));
        return host.workspace.colours.primary;
    };
    EXPECT_EQ(pick(1), (PackedColour{100, 90, 0}));
    EXPECT_EQ(pick(3), (PackedColour{100, 10, 0}));  // 90 / 9
    EXPECT_EQ(pick(5), (PackedColour{100, 4, 0}));   // 90 / 25 = 3.6
    // At the image's corner only the part inside counts.
    SetPixel(doc, 0, 0, {40, 0, 0});
    SetPixel(doc, 1, 0, {80, 0, 0});
    SetPixel(doc, 0, 1, {40, 0, 0});
    SetPixel(doc, 1, 1, {80, 0, 0});
    session.state().toolOptions.pickerSize = 3;
    session.tools().active().press(At(0.2f, 0.2f));
    EXPECT_EQ(host.workspace.colours.primary.r, 60);
}

}  // namespace
}  // namespace wib
