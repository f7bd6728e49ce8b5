// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstring>

#include "core/brush_image.h"
#include "core/canvas_size.h"
#include "core/document_build.h"
#include "core/undo.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class DocumentModel : public ::testing::Test {
  protected:
    void SetUp() override { host.newDocument(8, 6); }
    testing::TestHost host;
    Document& doc = host.workspace.document;

    void expectBounds(int left, int top, int right, int bottom) {
        const AlphaBounds b = SelectionBounds(doc);
        EXPECT_EQ(b.left, left);
        EXPECT_EQ(b.top, top);
        EXPECT_EQ(b.right, right);
        EXPECT_EQ(b.bottom, bottom);
    }
};

TEST_F(DocumentModel, NewDocumentIsWhiteWithFullAlphaAndPacksPixels) {
    EXPECT_EQ(doc.RBuffer.ubX(), 8);
    EXPECT_EQ(doc.RBuffer.ubY(), 6);
    EXPECT_EQ(PackedPixel(doc, 8, 6), 0xFFFFFF);
    EXPECT_EQ(doc.ABuffer.at(3, 3), 255);
    EXPECT_EQ(doc.SwapB.at(0, 0), 255);
    SetPixel(doc, 2, 3, {1, 2, 3});
    EXPECT_EQ(PackedPixel(doc, 2, 3), 197121);
}

TEST_F(DocumentModel, ReplacePlaneTakesOnlyTheSameShapeWithoutCopying) {
    Plane fitting(8, 6, 7);
    const std::uint8_t* storage = fitting.data();
    EXPECT_TRUE(ReplacePlane(doc.GBuffer, std::move(fitting)));
    EXPECT_EQ(doc.GBuffer.data(), storage);
    for (Plane misfit : {Plane(8, 5, 0), Plane(7, 6, 0), Plane(9, 6, 0)}) {
        EXPECT_FALSE(ReplacePlane(doc.ABuffer, std::move(misfit)));
    }
    EXPECT_EQ(doc.ABuffer.at(0, 0), 255);
}

TEST_F(DocumentModel, ClearFillsOnlyTheMainPlanes) {
    ClearImage(doc, {10, 20, 30});
    EXPECT_EQ(PackedPixel(doc, 8, 6), 10 + 20 * 256 + 30 * 65536);
    EXPECT_EQ(doc.ABuffer.at(0, 0), 255);
    EXPECT_EQ(doc.SwapR.at(0, 0), 255);
}

// The selection bounds are read from the matte each time, so every way the
// matte changes shows at once.
TEST_F(DocumentModel, SelectionBoundsFollowEveryMatteChange) {
    expectBounds(0, 0, 7, 5);  // a new document is wholly selected

    Plane alpha(8, 6, 0);
    alpha.at(2, 1) = 10;
    alpha.at(5, 4) = 200;
    alpha.at(8, 6) = 255;  // the spare column and row are not image
    ASSERT_TRUE(ReplacePlane(doc.ABuffer, std::move(alpha)));
    expectBounds(2, 1, 5, 4);

    doc.ABuffer.at(2, 1) = 0;
    doc.ABuffer.at(7, 0) = 1;
    expectBounds(5, 0, 7, 4);

    SaveUndo(host.workspace);
    doc.ABuffer.fill(0);
    EXPECT_TRUE(SelectionBounds(doc).empty());
    ASSERT_TRUE(EditUndo(host.workspace));
    expectBounds(5, 0, 7, 4);

    // Anchored top left, the canvas grows by 3 x 2; new area is selected.
    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 11, 8, {0, 0, 0}, 0));
    expectBounds(0, 0, 10, 7);
}

TEST(BrushImageModel, TheMaskAlwaysFollowsTheAlpha) {
    BrushImage brush;
    EXPECT_TRUE(brush.empty());
    brush.setActive(true);
    EXPECT_FALSE(brush.active()) << "no image, no image brush";

    brush.makeBlank(3, 2);
    EXPECT_EQ(brush.R.ubX(), 2);
    EXPECT_EQ(brush.A().at(2, 1), 0);
    EXPECT_EQ(brush.mask().at(2, 1), 255);

    brush.setAlpha(1, 0, 200);
    EXPECT_EQ(brush.mask().at(1, 0), 55);
    EXPECT_THROW(brush.setAlpha(3, 0, 1), SubscriptError);

    Plane alpha(4, 4, 30);
    brush.setAlpha(std::move(alpha));
    EXPECT_EQ(brush.mask().ubX(), 4);
    EXPECT_EQ(brush.mask().at(4, 4), 225);

    brush.assign(Plane(1, 1, 9), Plane(1, 1, 9), Plane(1, 1, 9), Plane(1, 1, 255));
    EXPECT_EQ(brush.mask().at(0, 0), 0);
    brush.setActive(true);
    EXPECT_TRUE(brush.active());
}

TEST(NewDocumentSize, BadSizesGetAMessageAndChangeNothing) {
    testing::TestHost host;
    host.newDocument(5, 4);
    host.workspace.view.zoom = 300;
    for (auto [w, h] : {std::pair{0, 10}, {10, -3}, {16385, 10}, {10, 40000}}) {
        EXPECT_FALSE(NewDocument(host.workspace, w, h));
    }
    EXPECT_EQ(host.prompter.messages.size(), 4u);
    EXPECT_EQ(host.workspace.document.width, 5);
    EXPECT_EQ(host.workspace.view.zoom, 300);

    EXPECT_TRUE(NewDocument(host.workspace, 16, 9));
    EXPECT_EQ(host.workspace.view.zoom, 100);
    EXPECT_EQ(host.workspace.view.anchorX, -1.0f);
    EXPECT_EQ(host.workspace.document.RBuffer.ubY(), 9);
    EXPECT_EQ(host.workspace.undo.UndoIndex, host.workspace.undo.UndoMaxIndex)
        << "one undo step saved";
}

}  // namespace
}  // namespace wib
