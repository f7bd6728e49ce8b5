// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetrics>
#include <QLineEdit>
#include <filesystem>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/selection_commands.h"
#include "filters/transform_commands.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"
#include "ui/clipboard_commands.h"
#include "ui/crop_tool.h"
#include "ui/form1.h"
#include "ui/move_tool.h"
#include "ui/text_command.h"
#include "ui/text_tool.h"
#include "ui/transform_tool.h"

namespace wib {
namespace {

const PackedColour kWhite{255, 255, 255};
const PackedColour kInk{200, 10, 30};

class TransformTools : public ::testing::Test {
  protected:
    TransformTools() {
        host.newDocument(160, 80);
        ClearImage(doc, kWhite);
        host.workspace.colours.primary = kInk;
        host.workspace.colours.secondary = kWhite;
        RegisterSelectionCommands(commands);
        RegisterTransformCommands(commands);
        RegisterTextCommands(commands);
        RegisterPaintCommands(commands, paint);
        RegisterClipboardCommands(commands);
    }
    static ToolInput At(float x, float y, bool shift = false) {
        ToolInput input;
        input.x = x;
        input.y = y;
        input.button = 1;
        input.modifiers.shift = shift;
        return input;
    }
    void select(long long x, long long y, long long w, long long h) {
        commands.run(host.workspace, "select.rectangle",
                     {{"x", x}, {"y", y}, {"width", w}, {"height", h}});
    }
    // A dark square at (20..29, 20..29) to move about.
    void paintSquare() {
        for (int y = 20; y < 30; ++y) {
            for (int x = 20; x < 30; ++x) {
                SetPixel(doc, x, y, PackedColour{0, 0, 0});
            }
        }
    }
    int changedOutside(const QRect& box) const {
        int count = 0;
        for (int y = 0; y < doc.height; ++y) {
            for (int x = 0; x < doc.width; ++x) {
                if (!box.contains(x, y) && PackedPixel(doc, x, y) != kWhite.packed()) {
                    ++count;
                }
            }
        }
        return count;
    }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry commands;
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    Form1 canvas{host.workspace};
    CanvasToolContext context{paint, canvas};
};

TEST_F(TransformTools, TransformPreviewsWithoutTouchingPixelsUntilEnter) {
    paintSquare();
    select(20, 20, 10, 10);
    TransformTool tool(context);
    tool.press(At(25, 25));
    tool.drag(At(45, 30));
    tool.release(At(45, 30));
    EXPECT_FALSE(canvas.preview().isNull());
    EXPECT_EQ(PackedPixel(doc, 25, 25), 0) << "the preview leaves the document alone";
    EXPECT_TRUE(tool.pending()) << "Enter and Escape belong to the tool now";
    tool.finish();
    EXPECT_FALSE(tool.pending());
    EXPECT_TRUE(canvas.preview().isNull());
    EXPECT_EQ(PackedPixel(doc, 25, 25), kWhite.packed());
    EXPECT_EQ(PackedPixel(doc, 45, 30), 0) << "moved by (20, 5)";
    EXPECT_EQ(doc.ABuffer.at(45, 30), 255);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 25, 25), 0);
}

TEST_F(TransformTools, EscapeCancelsAndATurnGripRotates) {
    paintSquare();
    select(20, 20, 10, 10);
    TransformTool tool(context);
    // Outside the outline, right of the centre (25, 25), dragged to below it.
    tool.press(At(40, 25));
    tool.drag(At(25, 40));
    EXPECT_NEAR(tool.spec().angle, 90, 1e-9);
    tool.cancel();
    EXPECT_TRUE(canvas.preview().isNull());
    EXPECT_FALSE(tool.pending()) << "nothing left to apply";
    tool.finish();
    EXPECT_EQ(PackedPixel(doc, 20, 20), 0);
}

TEST_F(TransformTools, CornerGripScalesAlongTheBox) {
    select(20, 20, 10, 10);
    TransformTool tool(context);
    tool.press(At(30, 30));  // bottom-right corner; the centre is (25, 25)
    tool.drag(At(35, 32));
    EXPECT_NEAR(tool.spec().scaleX, 2.0, 1e-9);
    EXPECT_NEAR(tool.spec().scaleY, 1.4, 1e-9);
    tool.release(At(35, 32));
    tool.press(At(35, 32, true));
    tool.drag(At(45, 32));
    EXPECT_NEAR(tool.spec().scaleX, 4.0, 1e-9);
    EXPECT_NEAR(tool.spec().scaleY, 2.8, 1e-9) << "Shift keeps the proportions";
}

TEST_F(TransformTools, MoveToolMovesOnRelease) {
    paintSquare();
    MoveTool tool(context);
    tool.press(At(25, 25));
    tool.drag(At(35, 45));
    EXPECT_FALSE(canvas.preview().isNull());
    EXPECT_EQ(PackedPixel(doc, 35, 45), kWhite.packed());
    tool.release(At(35, 45));
    EXPECT_TRUE(canvas.preview().isNull());
    EXPECT_EQ(PackedPixel(doc, 30, 40), 0) << "the whole layer moved by (10, 20)";
    EXPECT_EQ(PackedPixel(doc, 25, 25), kWhite.packed());
}

TEST_F(TransformTools, TheMoveToolCarriesAPastedBlock) {
    paintSquare();
    select(20, 20, 10, 10);
    ASSERT_EQ(commands.run(host.workspace, "edit.copy", {}).status, CommandOutcome::Status::Done);
    ASSERT_EQ(commands.run(host.workspace, "select.none", {}).status, CommandOutcome::Status::Done);
    ASSERT_EQ(commands.run(host.workspace, "edit.paste", {}).status, CommandOutcome::Status::Done);
    ASSERT_EQ(doc.AlphaBitsFlag, 255) << "the pasted block is the selection";

    MoveTool tool(context);
    tool.press(At(22, 22));
    tool.drag(At(40, 30));
    tool.release(At(52.4f, 36.6f));
    for (const auto& [x, y] : {std::pair{50, 35}, {59, 35}, {50, 44}, {59, 44}}) {
        EXPECT_EQ(PackedPixel(doc, x, y), 0) << x << ", " << y;
        EXPECT_EQ(doc.ABuffer.at(x, y), 255) << "the selection went along";
    }
    EXPECT_EQ(changedOutside(QRect(50, 35, 10, 10)), 0) << "the place it left is cleared";
    EXPECT_EQ(doc.ABuffer.at(25, 25), 0);

    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 25, 25), 0) << "one undo puts the block back where it was pasted";
    EXPECT_EQ(doc.ABuffer.at(25, 25), 255);
    EXPECT_EQ(PackedPixel(doc, 55, 40), kWhite.packed());
}

TEST_F(TransformTools, CropToolCropsToTheMarkedRectangle) {
    CropTool tool(context);
    tool.press(At(10.2f, 5));
    tool.drag(At(50, 45.4f));
    tool.release(At(50, 45.4f));
    EXPECT_EQ(tool.marked(), QRect(10, 5, 40, 40));
    EXPECT_FALSE(canvas.preview().isNull());
    EXPECT_TRUE(tool.pending());
    tool.finish();
    EXPECT_EQ(doc.width, 40);
    EXPECT_EQ(doc.height, 40);
    EXPECT_TRUE(canvas.preview().isNull());
}

TEST_F(TransformTools, TextIsLaidInThePrimaryColourInsideItsGlyphBoxOnly) {
    ToolOptions& options = paint.state().toolOptions;
    options.textSize = 30;
    options.textAntialias = false;
    TextTool tool(context);
    tool.press(At(12, 20));
    ASSERT_NE(tool.editor(), nullptr);
    tool.editor()->setText("Hello");
    EXPECT_EQ(changedOutside(QRect()), 0) << "nothing is laid while editing";
    EXPECT_TRUE(tool.pending());
    tool.finish();
    EXPECT_EQ(tool.editor(), nullptr);

    QFont font(QString::fromStdString(options.textFont));
    font.setPixelSize(options.textSize);
    const QFontMetrics metrics(font);
    const QRect box(12, 20, metrics.horizontalAdvance("Hello"), metrics.height());
    EXPECT_EQ(changedOutside(box), 0);
    int ink = 0;
    int other = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            const std::int32_t value = PackedPixel(doc, x, y);
            ink += value == kInk.packed() ? 1 : 0;
            other += value != kInk.packed() && value != kWhite.packed() ? 1 : 0;
        }
    }
    EXPECT_GT(ink, 50);
    EXPECT_EQ(other, 0) << "without anti-aliasing every glyph pixel is the primary colour";
}

TEST_F(TransformTools, TextGoesOnlyWhereSelected) {
    select(0, 0, 20, 80);
    ASSERT_EQ(commands
                  .run(host.workspace, "draw.text",
                       {{"x", 4LL}, {"y", 10LL}, {"text", std::string("WWWW")}, {"size", 40LL}})
                  .status,
              CommandOutcome::Status::Done);
    EXPECT_EQ(changedOutside(QRect(0, 0, 20, 80)), 0);
    EXPECT_NE(changedOutside(QRect()), 0) << "some ink went into the selected strip";
}

}  // namespace
}  // namespace wib
