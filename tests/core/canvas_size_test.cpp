// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/canvas_size.h"
#include "core/undo.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

TEST(CanvasSize, AnchorsPlaceTheOldImage) {
    EXPECT_EQ(AnchorOffsets(4, 10, 10, 13, 10).dx, 2);  // 1.5 -> 2
    EXPECT_EQ(AnchorOffsets(4, 10, 10, 15, 10).dx, 2);  // 2.5 -> 2
    const int expected[9][2] = {{0, 0},  {3, 0},  {6, 0},  {0, -2}, {3, -2},
                                {6, -2}, {0, -3}, {3, -3}, {6, -3}};  // -1.5 -> -2
    for (int anchor = 0; anchor < 9; ++anchor) {
        const auto offsets = AnchorOffsets(anchor, 4, 8, 10, 5);
        EXPECT_EQ(offsets.dx, expected[anchor][0]) << anchor;
        EXPECT_EQ(offsets.dy, expected[anchor][1]) << anchor;
    }
    for (int anchor : {-1, 9, 100}) {
        const auto offsets = AnchorOffsets(anchor, 4, 8, 10, 5);
        EXPECT_EQ(offsets.dx, 0);
        EXPECT_EQ(offsets.dy, 0);
    }
}

// Paints every pixel of the main, alpha and swap planes with a value made of
// its coordinates, so that any misplaced pixel shows.
void Pattern(Document& doc) {
    for (int y = 0; y < doc.height; ++y) {
        for (int x = 0; x < doc.width; ++x) {
            const auto v = static_cast<std::uint8_t>(x * 16 + y);
            for (Plane* p : {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer, &doc.ABuffer, &doc.SwapR,
                             &doc.SwapG, &doc.SwapB}) {
                p->at(x, y) = v;
            }
        }
    }
}

class RecordingStore : public CanvasResizeStore {
  public:
    explicit RecordingStore(bool before, bool refuse = false) : before_(before), refuse_(refuse) {}
    bool resizeBeforePlanes() const override { return before_; }
    bool resizeForCanvas(Workspace& workspace, const CanvasChange& change) override {
        changes.push_back(change);
        widthSeen = workspace.document.width;
        return !refuse_;
    }
    std::vector<CanvasChange> changes;
    int widthSeen = 0;

  private:
    bool before_;
    bool refuse_;
};

TEST(CanvasSize, GrowingCentredKeepsPixelsAndFillsNewArea) {
    testing::TestHost host;
    host.newDocument(4, 3);
    Document& doc = host.workspace.document;
    Pattern(doc);
    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 7, 6, {10, 20, 30}, 4));
    // dW = 3 -> dx = 2 (1.5 to even), dH = 3 -> dy = 2.
    EXPECT_EQ(doc.width, 7);
    EXPECT_EQ(doc.RBuffer.ubX(), 7);
    EXPECT_EQ(doc.SwapG.ubY(), 6);
    for (int y = 0; y <= 6; ++y) {
        for (int x = 0; x <= 7; ++x) {
            const bool old = x >= 2 && x < 6 && y >= 2 && y < 5;
            const auto v = static_cast<std::uint8_t>((x - 2) * 16 + (y - 2));
            EXPECT_EQ(doc.RBuffer.at(x, y), old ? v : 10) << x << "," << y;
            EXPECT_EQ(doc.BBuffer.at(x, y), old ? v : 30);
            EXPECT_EQ(doc.ABuffer.at(x, y), old ? v : 255);
            EXPECT_EQ(doc.SwapR.at(x, y), old ? v : 10);
            EXPECT_EQ(doc.SwapB.at(x, y), old ? v : 30);
        }
    }
    EXPECT_EQ(host.workspace.view.zoom, 100);
}

TEST(CanvasSize, ShrinkingBottomRightCropsTheTopLeft) {
    testing::TestHost host;
    host.newDocument(6, 5);
    Document& doc = host.workspace.document;
    Pattern(doc);
    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 4, 2, {0, 0, 0}, 8));
    // dx = -2, dy = -3: old (2..5, 3..4) survives at (0..3, 0..1).
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 4; ++x) {
            const auto v = static_cast<std::uint8_t>((x + 2) * 16 + (y + 3));
            EXPECT_EQ(doc.GBuffer.at(x, y), v);
            EXPECT_EQ(doc.SwapG.at(x, y), v);
            EXPECT_EQ(doc.ABuffer.at(x, y), v);
        }
    }
    EXPECT_EQ(doc.RBuffer.at(4, 2), 0) << "spare column and row take the fill colour";
}

TEST(CanvasSize, SavesAStepBeforeAndAfterAndTellsTheStores) {
    testing::TestHost host;
    host.newDocument(4, 4);
    RecordingStore frames(true), layers(false);
    host.workspace.resizeStores = {&frames, &layers};
    Document& doc = host.workspace.document;
    ClearImage(doc, {1, 2, 3});

    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 6, 4, {9, 9, 9}, 0));
    ASSERT_EQ(frames.changes.size(), 1u);
    EXPECT_EQ(frames.widthSeen, 4) << "frames resize before the planes are rebuilt";
    EXPECT_EQ(layers.widthSeen, 6) << "layers resize after";
    EXPECT_EQ(frames.changes[0].newWidth, 6);
    EXPECT_EQ(frames.changes[0].fillR, 9);

    const UndoRing& ring = host.workspace.undo;
    EXPECT_EQ(ring.UndoIndex, ring.UndoMaxIndex - 1) << "two saves into the new ring";
    EXPECT_EQ(PackedPixel(doc, 0, 0), 1 + 2 * 256 + 3 * 65536);
    // The step saved after the change holds the image on screen, so the first
    // undo goes on to the freshly rebuilt (white) planes; redo comes back.
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0xFFFFFF);
    ASSERT_TRUE(EditRedo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 0, 0), 1 + 2 * 256 + 3 * 65536);
}

TEST(CanvasSize, BadSizeChangesNothing) {
    testing::TestHost host;
    host.newDocument(4, 4);
    RecordingStore frames(true);
    host.workspace.resizeStores = {&frames};
    SetPixel(host.workspace.document, 1, 1, {5, 6, 7});
    for (auto [w, h] : {std::pair{0, 4}, {4, -1}, {20000, 4}}) {
        EXPECT_FALSE(ChangeCanvasSize(host.workspace, w, h, {0, 0, 0}, 4));
    }
    EXPECT_EQ(host.prompter.messages.size(), 3u);
    EXPECT_TRUE(frames.changes.empty());
    EXPECT_EQ(host.workspace.document.width, 4);
    EXPECT_EQ(PackedPixel(host.workspace.document, 1, 1), 5 + 6 * 256 + 7 * 65536);
}

TEST(CanvasSize, AStoreThatCannotFollowLeavesEverythingAsItWas) {
    testing::TestHost host;
    host.newDocument(4, 4);
    RecordingStore frames(true, true), layers(false);
    host.workspace.resizeStores = {&frames, &layers};
    SetPixel(host.workspace.document, 1, 1, {5, 6, 7});
    const int steps = host.workspace.undo.UndoSteps;

    EXPECT_FALSE(ChangeCanvasSize(host.workspace, 9, 9, {0, 0, 0}, 4));
    EXPECT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_TRUE(layers.changes.empty());
    EXPECT_EQ(host.workspace.document.width, 4);
    EXPECT_EQ(host.workspace.document.RBuffer.ubX(), 4);
    EXPECT_EQ(PackedPixel(host.workspace.document, 1, 1), 5 + 6 * 256 + 7 * 65536);
    EXPECT_EQ(host.workspace.undo.UndoSteps, steps);
    EXPECT_FALSE(host.workspace.document.modified);
}

}  // namespace
}  // namespace wib
