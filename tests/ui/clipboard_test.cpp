// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include "core/commands.h"
#include "core/cut_and_crop.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"
#include "ui/clipboard_commands.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

// A 30 x 20 image whose pixels name their place (red 8x, green 12y, blue 99)
// with the box (5, 3)..(12, 8) selected, its corner (5, 3) half.
class Clipboard : public ::testing::Test {
  protected:
    Clipboard() {
        RegisterClipboardCommands(commands);
        host.newDocument(30, 20);
        for (int y = 0; y < doc().height; ++y) {
            for (int x = 0; x < doc().width; ++x) {
                SetPixel(doc(), x, y, Original(x, y));
            }
        }
        selectBox(5, 3, 12, 8);
        doc().ABuffer.at(5, 3) = 128;
        QGuiApplication::clipboard()->clear();
    }
    static PackedColour Original(int x, int y) {
        return {static_cast<std::uint8_t>(8 * x), static_cast<std::uint8_t>(12 * y), 99};
    }
    Document& doc() { return host.workspace.document; }
    void selectBox(int left, int top, int right, int bottom) {
        doc().ABuffer.fill(0);
        for (int y = top; y <= bottom; ++y) {
            for (int x = left; x <= right; ++x) {
                doc().ABuffer.at(x, y) = 255;
            }
        }
        doc().AlphaBitsFlag = 255;
    }
    void selectNothingAndWipe() {
        doc().ABuffer.fill(255);
        doc().AlphaBitsFlag = 0;
        ClearImage(doc(), {255, 255, 255});
    }
    Status run(const std::string& id) { return commands.run(host.workspace, id, {}).status; }
    testing::TestHost host;
    CommandRegistry commands;
};

TEST_F(Clipboard, CopyThenPasteBringsBackThePixelsAndTheSelection) {
    ASSERT_EQ(run("edit.copy"), Status::Done);
    EXPECT_FALSE(doc().modified) << "copy changes nothing";
    selectNothingAndWipe();
    ASSERT_EQ(run("edit.paste"), Status::Done);
    for (int y = 0; y < doc().height; ++y) {
        for (int x = 0; x < doc().width; ++x) {
            const bool inside = x >= 5 && x <= 12 && y >= 3 && y <= 8;
            const bool corner = x == 5 && y == 3;
            EXPECT_EQ(doc().ABuffer.at(x, y), corner ? 128 : inside ? 255 : 0) << x << "," << y;
            if (inside && !corner) {
                EXPECT_EQ(PackedPixel(doc(), x, y), Original(x, y).packed()) << x << "," << y;
            } else if (!inside) {
                EXPECT_EQ(PackedPixel(doc(), x, y), 0xFFFFFF) << x << "," << y;
            }
        }
    }
    // The half-selected corner comes back half over the white: (40, 36, 99).
    EXPECT_NEAR(doc().RBuffer.at(5, 3), (40 + 255) / 2.0, 1.0);
    EXPECT_NEAR(doc().GBuffer.at(5, 3), (36 + 255) / 2.0, 1.0);
    EXPECT_EQ(doc().AlphaBitsFlag, 255);

    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc(), 8, 5), 0xFFFFFF) << "paste was one undo step";
}

TEST_F(Clipboard, OtherProgramsGetAPngWithTheAlpha) {
    ASSERT_EQ(run("edit.copy"), Status::Done);
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(data, nullptr);
    ASSERT_TRUE(data->hasFormat("image/png"));
    const QImage image = QImage::fromData(data->data("image/png"), "PNG");
    ASSERT_EQ(image.size(), QSize(8, 6));
    ASSERT_TRUE(image.hasAlphaChannel());
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 128);
    EXPECT_EQ(image.pixel(7, 5), qRgba(8 * 12, 12 * 8, 99, 255));
}

// Over the picture, a layer red (200, 0, 0) from column 9 rightwards and
// empty to its left.
TEST_F(Clipboard, CopyMergedTakesTheVisibleLayersAsShownWithTheirCoverage) {
    ASSERT_TRUE(AddLayer(host.workspace));
    for (int y = 0; y < doc().height; ++y) {
        for (int x = 9; x < doc().width; ++x) {
            SetPixel(doc(), x, y, {200, 0, 0});
            doc().Coverage.at(x, y) = 255;
        }
    }
    selectBox(5, 3, 12, 8);
    doc().ABuffer.at(5, 3) = 128;
    const auto clipboardPng = [] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        return data != nullptr ? QImage::fromData(data->data("image/png"), "PNG") : QImage();
    };

    ASSERT_EQ(run("edit.copy_merged"), Status::Done);
    EXPECT_FALSE(doc().modified);
    QImage png = clipboardPng();
    ASSERT_EQ(png.size(), QSize(8, 6));
    EXPECT_EQ(png.pixel(3, 2), qRgba(8 * 8, 12 * 5, 99, 255)) << "the picture below";
    EXPECT_EQ(png.pixel(4, 2), qRgba(200, 0, 0, 255)) << "the layer on top";
    EXPECT_EQ(qAlpha(png.pixel(0, 0)), 128) << "weighted by the matte";

    // Pasted onto the bottom layer, the merged pixels come back where they were.
    ASSERT_TRUE(SelectLayer(host.workspace, 0));
    selectNothingAndWipe();
    ASSERT_EQ(run("edit.paste"), Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 8, 5), Original(8, 5).packed());
    EXPECT_EQ(PackedPixel(doc(), 10, 5), PackedColour(200, 0, 0).packed());
    EXPECT_EQ(PackedPixel(doc(), 13, 5), 0xFFFFFF);
    EXPECT_EQ(doc().ABuffer.at(5, 3), 128);

    // A hidden layer is left out; where nothing covers, the copy is transparent.
    ASSERT_TRUE(ChangeLayer(host.workspace, 0, {.visible = false}));
    selectBox(5, 3, 12, 8);
    ASSERT_EQ(run("edit.copy_merged"), Status::Done);
    png = clipboardPng();
    ASSERT_EQ(png.size(), QSize(8, 6));
    EXPECT_EQ(qAlpha(png.pixel(3, 2)), 0);
    EXPECT_EQ(png.pixel(7, 5), qRgba(200, 0, 0, 255));

    doc().ABuffer.fill(0);
    EXPECT_EQ(run("edit.copy_merged"), Status::Refused);
    EXPECT_EQ(host.prompter.messages, std::vector<std::string>{kNothingSelected});
}

TEST_F(Clipboard, APictureFromAnotherProgramPastesAtTheTopLeftWithItsAlpha) {
    QImage picture(3, 2, QImage::Format_ARGB32);
    picture.fill(qRgba(10, 20, 30, 255));
    picture.setPixel(2, 1, qRgba(0, 0, 0, 0));
    picture.setPixel(1, 1, qRgba(200, 200, 200, 51));
    QGuiApplication::clipboard()->setImage(picture);
    ASSERT_EQ(run("edit.paste"), Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 0, 0), PackedColour(10, 20, 30).packed());
    EXPECT_EQ(PackedPixel(doc(), 2, 1), Original(2, 1).packed());
    // A fifth of (200, 200, 200) over (8, 12, 99).
    EXPECT_NEAR(doc().RBuffer.at(1, 1), 8 + (200 - 8) * 0.2, 1.0);
    EXPECT_NEAR(doc().BBuffer.at(1, 1), 99 + (200 - 99) * 0.2, 1.0);
    EXPECT_EQ(doc().ABuffer.at(0, 0), 255);
    EXPECT_EQ(doc().ABuffer.at(1, 1), 51);
    EXPECT_EQ(doc().ABuffer.at(2, 1), 0);
    EXPECT_EQ(doc().ABuffer.at(8, 5), 0) << "the old selection is replaced";
}

TEST_F(Clipboard, CutLeavesTheSecondaryColourThroughASoftSelection) {
    host.workspace.colours.secondary = {0, 0, 255};
    ASSERT_EQ(run("edit.cut"), Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 12, 8), PackedColour(0, 0, 255).packed());
    EXPECT_EQ(PackedPixel(doc(), 13, 8), Original(13, 8).packed());
    // (40, 36, 99) half way to (0, 0, 255).
    EXPECT_NEAR(doc().RBuffer.at(5, 3), 40 * 127 / 255.0, 0.5);
    EXPECT_NEAR(doc().BBuffer.at(5, 3), 99 + (255 - 99) * 128 / 255.0, 0.5);
    EXPECT_EQ(doc().ABuffer.at(6, 4), 255) << "the selection stays";

    // What was cut is on the clipboard: pasting brings it back where it was.
    ASSERT_EQ(run("edit.paste"), Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 12, 8), Original(12, 8).packed());

    ASSERT_TRUE(EditUndo(host.workspace));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc(), 12, 8), Original(12, 8).packed()) << "cut was one step";
    EXPECT_EQ(PackedPixel(doc(), 5, 3), Original(5, 3).packed());
}

TEST_F(Clipboard, PasteIntoSelectionLandsInItsBoxClippedToIt) {
    ASSERT_EQ(run("edit.copy"), Status::Done);
    selectBox(20, 10, 23, 11);
    ASSERT_EQ(run("edit.paste_into"), Status::Done);
    // The copied block's (1, 1), from (6, 4), lands on (21, 11).
    EXPECT_EQ(PackedPixel(doc(), 21, 11), Original(6, 4).packed());
    EXPECT_EQ(PackedPixel(doc(), 23, 10), Original(8, 3).packed());
    EXPECT_EQ(PackedPixel(doc(), 24, 10), Original(24, 10).packed()) << "clipped on the right";
    EXPECT_EQ(PackedPixel(doc(), 21, 12), Original(21, 12).packed()) << "clipped below";
    EXPECT_EQ(doc().ABuffer.at(20, 10), 128) << "the block's soft corner, weighted";
    EXPECT_EQ(doc().ABuffer.at(21, 12), 0);
    EXPECT_EQ(PackedPixel(doc(), 8, 5), Original(8, 5).packed());
}

TEST_F(Clipboard, NothingSelectedOrNothingToPasteIsRefusedWithAMessage) {
    ASSERT_EQ(run("edit.paste"), Status::Refused);
    doc().ABuffer.fill(0);
    EXPECT_EQ(run("edit.copy"), Status::Refused);
    EXPECT_EQ(run("edit.cut"), Status::Refused);
    EXPECT_EQ(run("edit.paste_into"), Status::Refused);
    EXPECT_EQ(host.prompter.messages,
              (std::vector<std::string>{"The clipboard holds no picture that can be pasted.",
                                        kNothingSelected, kNothingSelected, kNothingSelected}));
    EXPECT_EQ(PackedPixel(doc(), 8, 5), Original(8, 5).packed());
}

}  // namespace
}  // namespace wib
