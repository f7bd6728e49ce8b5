// SPDX-License-Identifier: GPL-3.0-or-later
// Layers in an animation: each frame keeps its own pixels for every layer.

#include <gtest/gtest.h>

#include "core/canvas_size.h"
#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/layer_resize.h"
#include "core/layered_document.h"
#include "core/undo.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

class LayeredFrames : public FrameStoreTest {
  protected:
    Document& doc() { return host.workspace.document; }
    Workspace& ws() { return host.workspace; }
    // Covers pixel (x, y) of the current layer with value v.
    void dot(int x, int y, std::uint8_t v) {
        doc().RBuffer.at(x, y) = v;
        if (!doc().Coverage.empty()) {
            doc().Coverage.at(x, y) = 255;
        }
    }
    std::uint8_t shown(int x, int y) { return CompositePicture(ws()).r.at(x, y); }

    // Background painted 10 in every frame, a second layer with a dot at
    // (frame, 0) of value 100 + frame, three frames, frame 0 current.
    void makeLayeredAnimation() {
        paint(10);
        ASSERT_TRUE(store.CreateAnimation(3, 255));
        ASSERT_TRUE(AddLayer(ws()));
        for (int f = 0; f < 3; ++f) {
            store.GotoFrame(f);
            dot(f, 0, static_cast<std::uint8_t>(100 + f));
        }
        store.GotoFrame(0);
    }
};

TEST_F(LayeredFrames, EachFrameShowsItsOwnLayerPixels) {
    makeLayeredAnimation();
    for (int f = 0; f < 3; ++f) {
        store.GotoFrame(f);
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(shown(x, 0), x == f ? 100 + f : 10) << "frame " << f << " x " << x;
        }
    }
    // The background's frames reach the frame store when it becomes current.
    store.GotoFrame(1);
    ASSERT_TRUE(SelectLayer(ws(), 0));
    EXPECT_TRUE(imageIs(10));
    paint(40);
    store.GotoFrame(2);
    EXPECT_TRUE(imageIs(10));
    EXPECT_EQ(shown(2, 0), 102);
    store.GotoFrame(1);
    EXPECT_TRUE(imageIs(40));
    EXPECT_EQ(shown(1, 0), 101);
    EXPECT_EQ(shown(0, 0), 40);
}

TEST_F(LayeredFrames, InsertAndDeleteMoveEveryLayer) {
    makeLayeredAnimation();
    store.GotoFrame(1);
    store.InsertFrame(1);  // the copy of frame 1 is current, at 2
    ASSERT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(shown(1, 0), 101);
    store.GotoFrame(3);
    EXPECT_EQ(shown(2, 0), 102);
    store.DeleteFrame(0);
    store.GotoFrame(0);
    EXPECT_EQ(shown(1, 0), 101);
    EXPECT_EQ(shown(0, 0), 10);
}

TEST_F(LayeredFrames, UndoingALayerDeletionBringsBackEveryFrame) {
    makeLayeredAnimation();
    SaveUndo(ws());
    ASSERT_TRUE(DeleteLayer(ws(), 1));
    ASSERT_EQ(LayerCount(ws()), 1);
    EXPECT_EQ(shown(0, 0), 10);
    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_EQ(LayerCount(ws()), 2);
    for (int f = 0; f < 3; ++f) {
        store.GotoFrame(f);
        EXPECT_EQ(shown(f, 0), 100 + f) << f;
    }
}

TEST_F(LayeredFrames, FilesKeepEveryLayerOfEveryFrame) {
    makeLayeredAnimation();
    ChangeLayer(ws(), 1, {.name = "ink", .opacity = 200, .mode = BlendMode::Screen});
    LayeredPicture picture = PictureOfDocument(ws());
    ASSERT_EQ(picture.frames.size(), 3u);
    ASSERT_EQ(picture.layers.size(), 2u);
    EXPECT_EQ(picture.frames[2][1].r.at(2, 0), 102);
    EXPECT_EQ(picture.frames[2][1].a.at(2, 0), 255);
    EXPECT_EQ(picture.frames[2][1].a.at(1, 0), 0);
    EXPECT_EQ(picture.frames[1][0].a.at(1, 0), 255);

    host.newDocument(8, 6);
    store.FreeAnimation();
    ASSERT_TRUE(InstallPicture(ws(), std::move(picture)));
    EXPECT_EQ(store.FrameCount(), 3);
    EXPECT_EQ(LayerAt(ws(), 1).name, "ink");
    EXPECT_EQ(LayerAt(ws(), 1).mode, BlendMode::Screen);
    store.GotoFrame(2);
    // screen at 200/255 opacity: 10 + (102 + 10 - 102 * 10 / 255 - 10) * 200 / 255
    EXPECT_NEAR(shown(2, 0), 10 + (102 - 102.0 * 10 / 255) * 200 / 255, 1.0);
    EXPECT_EQ(shown(1, 0), 10);
}

TEST_F(LayeredFrames, CanvasSizeClearsNewAreaOfUpperLayers) {
    LayerCanvasResize layers(ws(), CropFile().string() + "-layers");
    makeLayeredAnimation();
    ASSERT_TRUE(ChangeCanvasSize(ws(), 10, 6, {200, 200, 200}, 0));
    store.GotoFrame(1);
    EXPECT_EQ(shown(1, 0), 101);
    EXPECT_EQ(shown(9, 3), 200);  // the bottom layer's fill shows through
    EXPECT_EQ(doc().Coverage.at(9, 3), 0);
    ASSERT_TRUE(SelectLayer(ws(), 0));
    EXPECT_TRUE(doc().Coverage.empty());
    EXPECT_EQ(doc().RBuffer.at(9, 0), 200);
}

}  // namespace
}  // namespace wib::testing
