// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetrics>
#include <QLineEdit>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/selection_commands.h"
#include "filters/transform_commands.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"
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
    Form1 canvas{host.workspace};
    CanvasToolContext context{host.workspace, commands, canvas};
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
    EXPECT_TRUE(tool.key(ToolKey::Enter));
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
    EXPECT_TRUE(tool.key(ToolKey::Escape));
    EXPECT_TRUE(canvas.preview().isNull());
    EXPECT_FALSE(tool.key(ToolKey::Enter)) << "nothing left to apply";
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

TEST_F(TransformTools, CropToolCropsToTheMarkedRectangle) {
    CropTool tool(context);
    tool.press(At(10.2f, 5));
    tool.drag(At(50, 45.4f));
    tool.release(At(50, 45.4f));
    EXPECT_EQ(tool.marked(), QRect(10, 5, 40, 40));
    EXPECT_FALSE(canvas.preview().isNull());
    EXPECT_TRUE(tool.key(ToolKey::Enter));
    EXPECT_EQ(doc.width, 40);
    EXPECT_EQ(doc.height, 40);
    EXPECT_TRUE(canvas.preview().isNull());
}

TEST_F(TransformTools, TextIsLaidInThePrimaryColourInsideItsGlyphBoxOnly) {
    TextStyle style;
    style.size = 30;
    style.antialias = false;
    TextTool tool(context);
    tool.setStyle(style);
    tool.press(At(12, 20));
    ASSERT_NE(tool.editor(), nullptr);
    tool.editor()->setText("Hello");
    EXPECT_EQ(changedOutside(QRect()), 0) << "nothing is laid while editing";
    EXPECT_TRUE(tool.key(ToolKey::Enter));
    EXPECT_EQ(tool.editor(), nullptr);

    QFont font(QString::fromStdString(style.font));
    font.setPixelSize(style.size);
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
