// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "core/canvas_size.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

class FrameCanvasResize : public FrameStoreTest {
  protected:
    // Frame f holds, at each pixel, a value made of f and the coordinates.
    void patternFrames(int frames) {
        ASSERT_TRUE(store.CreateAnimation(frames, 0));
        for (int f = 0; f < frames; ++f) {
            Plane plane(8, 6);
            for (int y = 0; y < 6; ++y) {
                for (int x = 0; x < 8; ++x) {
                    plane.at(x, y) = static_cast<std::uint8_t>(f * 100 + y * 8 + x);
                }
            }
            store.setFramePlane(FrameColour::Red, plane, f);
            store.setFramePlane(FrameColour::Blue, plane, f);
            store.setFramePlane(FrameColour::Green, Plane(8, 6, 0), f);
        }
    }

    // Every frame resized from 8 x 6 to 11 x 4, centred: the old image sits at
    // (2, -1), new area is (1, 2, 3).
    void expectResizedFrames(int frames) {
        ASSERT_EQ(store.FrameCount(), frames);
        EXPECT_EQ(store.AnimR().frameBytes(), 12u * 5u);
        for (int f = 0; f < frames; ++f) {
            const Plane red = store.framePlane(FrameColour::Red, f);
            const Plane green = store.framePlane(FrameColour::Green, f);
            ASSERT_EQ(red.ubX(), 11);
            ASSERT_EQ(red.ubY(), 4);
            for (int y = 0; y < 4; ++y) {
                for (int x = 0; x < 11; ++x) {
                    const int ox = x - 2;
                    const int oy = y + 1;
                    const bool old = ox >= 0 && ox < 8;
                    EXPECT_EQ(red.at(x, y), old ? f * 100 + oy * 8 + ox : 1) << f << x << y;
                    EXPECT_EQ(green.at(x, y), old ? 0 : 2) << f << x << y;
                }
            }
        }
        EXPECT_EQ(host.workspace.document.width, 11);
        EXPECT_FALSE(std::filesystem::exists(CropFile()));
    }
};

TEST_F(FrameCanvasResize, EveryFrameMovesAndFillsLikeTheImage) {
    patternFrames(3);
    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 11, 4, {1, 2, 3}, 4));
    expectResizedFrames(3);
    store.GotoFrame(1);
    EXPECT_EQ(host.workspace.document.RBuffer.at(2, 0), 108) << "frames fit the new image";
}

TEST_F(FrameCanvasResize, FramesWaitInTheCropFileWhenBothStacksDoNotFit) {
    patternFrames(3);
    // The new stack alone fits; the old and new together do not.
    host.system.memory = 3 * 60 * 3 - 1;
    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 11, 4, {1, 2, 3}, 4));
    expectResizedFrames(3);
}

TEST_F(FrameCanvasResize, WithoutTheCropFileFramesAreResizedInMemory) {
    FrameStore elsewhere(host.workspace, "/nonexistent-folder/CropAnim.tmp");
    elsewhere.attachDisplay(&display);
    ASSERT_TRUE(elsewhere.CreateAnimation(2, 255));
    ASSERT_TRUE(ChangeCanvasSize(host.workspace, 11, 4, {1, 2, 3}, 4));
    EXPECT_EQ(elsewhere.FrameCount(), 2);
    EXPECT_EQ(elsewhere.framePlane(FrameColour::Green, 1).at(0, 0), 2);
    EXPECT_EQ(elsewhere.framePlane(FrameColour::Green, 1).at(2, 0), 255);
}

TEST_F(FrameCanvasResize, ACanvasChangeTheFramesCannotFollowIsRefusedWhole) {
    FrameStore elsewhere(host.workspace, "/nonexistent-folder/CropAnim.tmp");
    ASSERT_TRUE(elsewhere.CreateAnimation(2, 255));
    host.system.memory = 2 * 60 * 3 - 1;
    EXPECT_FALSE(ChangeCanvasSize(host.workspace, 11, 4, {1, 2, 3}, 4));
    EXPECT_EQ(elsewhere.FrameCount(), 2);
    EXPECT_EQ(elsewhere.framePlane(FrameColour::Red, 1).ubX(), host.workspace.document.width);
    EXPECT_NE(host.workspace.document.width, 11);
    EXPECT_EQ(host.prompter.messages.back(), "Not enough memory to change the canvas size.");
}

}  // namespace
}  // namespace wib::testing
