// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include "anim/frame_store.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "tests/anim/frame_store_fixture.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"
#include "ui/form1.h"

namespace wib {
namespace {

constexpr PackedColour kInk{0, 0, 0};

// Three white frames with a black dot that moves right: (2, 2), (6, 2),
// (10, 2); frame 1 current, one neighbour each side at opacity 128.
class OnionCanvas : public ::testing::Test {
  protected:
    OnionCanvas() {
        host.newDocument(16, 8);
        store.attachDisplay(&display);
        EXPECT_TRUE(store.CreateAnimation(3, 1, false));
        for (const int frame : {0, 2, 1}) {
            store.GotoFrame(frame);
            SetPixel(host.workspace.document, 2 + 4 * frame, 2, kInk);
        }
        OnionState& onion = host.workspace.view.onion;
        onion.shown = true;
        onion.before = 1;
        onion.after = 1;
        onion.opacity = 128;
        canvas.updateGeometryFromDocument();
        canvas.setFrames(&store);
    }

    QRgb shown(int x, int y) { return canvas.grab().toImage().pixel(x, y); }

    testing::TestHost host;
    FrameStore store{host.workspace, std::filesystem::temp_directory_path() /
                                         ("onion-crop-" + std::to_string(getpid()) + ".tmp")};
    testing::RecordingDisplay display{store};
    Form1 canvas{host.workspace};
};

TEST_F(OnionCanvas, NeighboursShowTintedAndThePixelsStayAsTheyWere) {
    const Document& doc = host.workspace.document;
    const Plane r = doc.RBuffer;
    const Plane g = doc.GBuffer;
    const Plane b = doc.BBuffer;
    const std::vector<std::uint8_t> frame0(store.AnimR().frame(0),
                                           store.AnimR().frame(0) + store.AnimR().frameBytes());

    // Black halfway to the tint, 128/255 of it over white:
    // before (230, 40, 40) -> (115, 20, 20) -> (185, 137, 137);
    // after (40, 90, 230) -> (20, 45, 115) -> (137, 150, 185).
    EXPECT_EQ(shown(2, 2), qRgb(185, 137, 137));
    EXPECT_EQ(shown(10, 2), qRgb(137, 150, 185));
    EXPECT_EQ(shown(0, 0), qRgb(255, 255, 255)) << "where every frame is alike nothing shows";
    // Both neighbours are white where the current dot is: their paper
    // leaves the drawing of the current frame as it is.
    EXPECT_EQ(shown(6, 2), qRgb(0, 0, 0));

    EXPECT_EQ(doc.RBuffer.byteCount(), r.byteCount());
    EXPECT_TRUE(std::equal(r.data(), r.data() + r.count(), doc.RBuffer.data()));
    EXPECT_TRUE(std::equal(g.data(), g.data() + g.count(), doc.GBuffer.data()));
    EXPECT_TRUE(std::equal(b.data(), b.data() + b.count(), doc.BBuffer.data()));
    EXPECT_TRUE(std::equal(frame0.begin(), frame0.end(), store.AnimR().frame(0)));
}

TEST_F(OnionCanvas, OffItShowsTheFrameAloneAndTheLightTableStillShows) {
    host.workspace.view.onion.shown = false;
    EXPECT_EQ(shown(2, 2), qRgb(255, 255, 255));
    EXPECT_EQ(shown(6, 2), qRgb(0, 0, 0));

    // Pinned: untinted, at half the opacity (64): black over white.
    host.workspace.view.onion.pinned = {0};
    EXPECT_EQ(shown(2, 2), qRgb(191, 191, 191));
    EXPECT_EQ(shown(10, 2), qRgb(255, 255, 255));
}

TEST_F(OnionCanvas, APaintedPixelAndARewrittenNeighbourShowAtTheNextRedraw) {
    EXPECT_EQ(shown(2, 2), qRgb(185, 137, 137));
    EXPECT_EQ(shown(10, 2), qRgb(137, 150, 185));

    // Ink on frame 0's dot: that frame is alike there and no longer shows,
    // while frame 2's white paper leaves the ink black.
    SetPixel(host.workspace.document, 2, 2, kInk);
    EXPECT_EQ(shown(2, 2), qRgb(0, 0, 0));

    // Frame 2 rewritten white, as a plug-in may: its dot is gone.
    const Plane white(host.workspace.document.RBuffer.ubX(), host.workspace.document.RBuffer.ubY(),
                      255);
    for (const FrameColour colour : {FrameColour::Red, FrameColour::Green, FrameColour::Blue}) {
        store.setFramePlane(colour, white, 2);
    }
    EXPECT_EQ(shown(10, 2), qRgb(255, 255, 255));
    EXPECT_EQ(shown(2, 2), qRgb(0, 0, 0));

    // Another tint for the frames before, and frame 0's dot uncovered again.
    host.workspace.view.onion.tintBefore = {40, 230, 40};
    // Black halfway to (40, 230, 40) is (20, 115, 20); 128/255 of it over white.
    SetPixel(host.workspace.document, 2, 2, {255, 255, 255});
    EXPECT_EQ(shown(2, 2), qRgb(137, 185, 137));
}

TEST_F(OnionCanvas, LayeredFramesShowTheirCompositeAndFollowAChangedCell) {
    ASSERT_TRUE(AddLayer(host.workspace));
    ASSERT_FALSE(IsFlatPicture(host.workspace));
    // The empty top layer changes nothing: frame 0's dot as on a flat picture.
    EXPECT_EQ(shown(2, 2), qRgb(185, 137, 137));

    // Frame 0 with the dot moved: its composite is made again.
    store.GotoFrame(0);
    SelectLayer(host.workspace, 0);
    SetPixel(host.workspace.document, 2, 2, {255, 255, 255});
    SetPixel(host.workspace.document, 3, 3, kInk);
    store.GotoFrame(1);
    EXPECT_EQ(shown(2, 2), qRgb(255, 255, 255));
    EXPECT_EQ(shown(3, 3), qRgb(185, 137, 137));
}

}  // namespace
}  // namespace wib
