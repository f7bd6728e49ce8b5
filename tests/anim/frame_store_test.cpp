// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_store.h"

#include <gtest/gtest.h>

#include "core/image_edit.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

TEST_F(FrameStoreTest, CreatingCopiesTheImageIntoFrameZeroOrEveryFrame) {
    paint(50);
    ASSERT_TRUE(store.CreateAnimation(5, 0));
    EXPECT_EQ(store.FrameCount(), 5);
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_EQ(store.AnimR().frameBytes(), 9u * 7u) << "one spare column and row per frame";
    EXPECT_TRUE(frameIs(0, 50));
    for (int f = 1; f < 5; ++f) {
        EXPECT_TRUE(frameIs(f, 0)) << f;
    }
    EXPECT_TRUE(imageIs(50));
    EXPECT_EQ(display.counters.back(), "0 of 5");

    store.FreeAnimation();
    ASSERT_TRUE(store.CreateAnimation(4, 255));
    for (int f = 0; f < 4; ++f) {
        EXPECT_TRUE(frameIs(f, 50)) << f;
    }
}

TEST_F(FrameStoreTest, CreatingOverAnAnimationAsksFirst) {
    makeNumberedFrames(3);
    host.prompter.answers = {2};
    EXPECT_FALSE(store.CreateAnimation(6, 255));
    ASSERT_EQ(host.prompter.questions.size(), 1u);
    EXPECT_EQ(host.prompter.questions[0], "An animation already exists.  Free it?");
    EXPECT_EQ(host.prompter.buttons[0], "OK/Cancel");
    EXPECT_EQ(store.FrameCount(), 3);
    EXPECT_TRUE(frameIs(2, 30)) << "Cancel keeps the old frames";

    host.prompter.answers = {2, 1};
    EXPECT_TRUE(store.CreateAnimation(6, 255));
    EXPECT_EQ(store.FrameCount(), 6);
    EXPECT_TRUE(frameIs(5, 10));
}

TEST_F(FrameStoreTest, AnAnimationTooBigForMemoryIsRefusedAndChangesNothing) {
    makeNumberedFrames(3);
    host.prompter.defaultAnswer = 1;
    // Room for the new stack only once the old one is gone: accepted.
    host.system.memory = 4 * 63 * 3 - 3 * 63 * 3;
    EXPECT_TRUE(store.CreateAnimation(4, 255));
    EXPECT_EQ(store.FrameCount(), 4);

    makeNumberedFrames(3);
    host.system.memory = 1000;
    EXPECT_FALSE(store.CreateAnimation(100, 255));
    ASSERT_FALSE(host.prompter.messages.empty());
    EXPECT_EQ(host.prompter.messages.back(),
              "Not enough memory for this animation: its frames need 1 MB and only 0 MB are "
              "free. Use fewer frames or a smaller image.");
    EXPECT_EQ(store.FrameCount(), 3);
    EXPECT_TRUE(imageIs(10));
    for (int f = 0; f < 3; ++f) {
        EXPECT_TRUE(frameIs(f, static_cast<std::uint8_t>(10 * (f + 1)))) << f;
    }
}

// A plug-in's "replace without asking" is no licence to lose the frames when
// the new stack is refused.
TEST_F(FrameStoreTest, ARefusedReplacementWithoutAskingKeepsTheHeldFrames) {
    makeNumberedFrames(5);
    host.system.memory = 1000;
    EXPECT_FALSE(store.CreateAnimation(3000, 0, false));
    EXPECT_TRUE(host.prompter.questions.empty());
    EXPECT_EQ(store.FrameCount(), 5);
    EXPECT_TRUE(frameIs(4, 50));
    host.system.memory = std::uint64_t{1} << 30;
    EXPECT_TRUE(store.CreateAnimation(2, 0, false));
    EXPECT_TRUE(host.prompter.questions.empty());
    EXPECT_EQ(store.FrameCount(), 2);
}

TEST_F(FrameStoreTest, WithoutAnAnimationOperationsDoNothingAndNoFramesIsRefused) {
    EXPECT_FALSE(store.CreateAnimation(0, 255));
    EXPECT_FALSE(store.CreateAnimation(-4, 255));
    EXPECT_EQ(host.prompter.messages,
              (std::vector<std::string>(2, "An animation needs at least one frame.")));
    paint(40);
    store.GotoFrame(1);
    store.InsertFrame(0);
    store.DeleteFrame(0);
    store.StoreCurrentFrame();
    store.LoadCurrentFrame();
    store.AnimToMain(0);
    store.FreeAnimation();
    EXPECT_EQ(store.FrameCount(), 0);
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_TRUE(imageIs(40));
    EXPECT_TRUE(store.framePlane(FrameColour::Red, 0).empty());
    EXPECT_EQ(store.FrameCounterText(), "0 of 0");
}

TEST_F(FrameStoreTest, GoingToAFrameStoresTheImageAndLoadsTheFrame) {
    makeNumberedFrames(4);
    paint(99);  // painted on frame 0, not yet stored
    store.GotoFrame(2);
    EXPECT_TRUE(imageIs(30));
    EXPECT_TRUE(frameIs(0, 99));
    EXPECT_EQ(store.transferRecord().frame, 2);
    EXPECT_EQ(store.transferRecord().planeBytes, 63);
    store.GotoFrame(2);  // to itself: the image survives its own store and load
    EXPECT_TRUE(imageIs(30));
    store.GotoFrame(0);
    EXPECT_TRUE(imageIs(99));
    EXPECT_EQ(display.counters.back(), "0 of 4");
}

TEST_F(FrameStoreTest, TheRepeatOverFramesFiltersEachFrameFromItsOwnStoredPlanes) {
    makeNumberedFrames(3);
    store.GotoFrame(1);
    paint(70);  // painted on frame 1, not yet stored
    host.prompter.defaultAnswer = 1;
    const auto brighten = [this] {
        paint(static_cast<std::uint8_t>(host.workspace.document.RBuffer.at(0, 0) + 5));
        return true;
    };
    ASSERT_TRUE(RunImageOperation(host.workspace, brighten, "Apply filter to all frames?"));
    EXPECT_TRUE(frameIs(0, 15));
    EXPECT_TRUE(frameIs(1, 75)) << "the trial taken back, the painting stored and filtered once";
    EXPECT_TRUE(frameIs(2, 35));
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_TRUE(imageIs(15));
}

TEST_F(FrameStoreTest, GoingToAFrameClampsToZeroAndToTheFrameCount) {
    makeNumberedFrames(5);
    store.GotoFrame(-3);
    EXPECT_EQ(store.CurrentFrame(), 0);
    store.GotoFrame(12);
    EXPECT_EQ(store.CurrentFrame(), 5);
    EXPECT_EQ(store.FrameCounterText(), "5 of 5");
    EXPECT_TRUE(imageIs(50)) << "one past the last frame shows the last";
    paint(77);
    store.GotoFrame(0);
    EXPECT_TRUE(frameIs(4, 77)) << "and stores into it";
}

TEST_F(FrameStoreTest, TheFrameUpdateAndRedrawCanBeLeftOut) {
    makeNumberedFrames(3);
    std::vector<int> updates;
    const Subscription listening = host.workspace.events.beforeFrameLoad.subscribe(
        [&](int frame) { updates.push_back(frame); });
    const int redraws = host.view.refreshes;
    store.GotoFrame(1);
    store.GotoFrame(2, {.frameUpdate = false, .redraw = true});
    store.GotoFrame(0, {.frameUpdate = true, .redraw = false});
    EXPECT_EQ(updates, (std::vector<int>{1, 0}));
    EXPECT_EQ(host.view.refreshes - redraws, 2);
    EXPECT_TRUE(imageIs(10));
}

TEST_F(FrameStoreTest, InsertingDoublesTheFrameAndMakesTheCopyCurrent) {
    makeNumberedFrames(5);
    store.GotoFrame(1);
    paint(15);  // unstored change to frame 1: the insert stores it first
    store.InsertFrame(2);
    ASSERT_EQ(store.FrameCount(), 6);
    EXPECT_EQ(store.CurrentFrame(), 3);
    const std::uint8_t expected[] = {10, 15, 30, 30, 40, 50};
    for (int f = 0; f < 6; ++f) {
        EXPECT_TRUE(frameIs(f, expected[f])) << f;
    }
    EXPECT_TRUE(imageIs(30));
    EXPECT_EQ(display.counters.back(), "3 of 6");
}

TEST_F(FrameStoreTest, InsertingWorksAtEitherEndAndIsIgnoredOutsideTheFrames) {
    makeNumberedFrames(3);
    store.InsertFrame(-1);
    store.InsertFrame(3);
    EXPECT_EQ(store.FrameCount(), 3) << "3 is past the last frame of three";
    store.InsertFrame(0);
    store.InsertFrame(3);
    ASSERT_EQ(store.FrameCount(), 5);
    EXPECT_EQ(store.CurrentFrame(), 4);
    const std::uint8_t expected[] = {10, 10, 20, 30, 30};
    for (int f = 0; f < 5; ++f) {
        EXPECT_TRUE(frameIs(f, expected[f])) << f;
    }
    host.system.memory = 10;
    store.InsertFrame(1);
    EXPECT_EQ(store.FrameCount(), 5);
    EXPECT_EQ(host.prompter.messages.back(), kInsertFrameMemoryMessage);
}

TEST_F(FrameStoreTest, DeletingMovesTheLaterFramesDown) {
    makeNumberedFrames(5);
    store.GotoFrame(3);
    store.DeleteFrame(1);
    ASSERT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(store.CurrentFrame(), 3) << "the index stays; it now holds the old frame 4";
    const std::uint8_t expected[] = {10, 30, 40, 50};
    for (int f = 0; f < 4; ++f) {
        EXPECT_TRUE(frameIs(f, expected[f])) << f;
    }
    EXPECT_TRUE(imageIs(50));
    store.DeleteFrame(0);
    EXPECT_TRUE(frameIs(0, 30));
    EXPECT_EQ(display.counters.back(), "2 of 3");
}

TEST_F(FrameStoreTest, DeletingTheCurrentFrameKeepsItsUnstoredPaintOrMovesToTheNewLast) {
    makeNumberedFrames(3);
    store.GotoFrame(2);
    paint(33);
    store.DeleteFrame(0);
    EXPECT_EQ(store.CurrentFrame(), 1);
    EXPECT_TRUE(imageIs(33));
    store.DeleteFrame(1);
    EXPECT_EQ(store.FrameCount(), 1);
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_TRUE(imageIs(20));
    // Out of range, or the only frame left: ignored.
    store.DeleteFrame(-1);
    store.DeleteFrame(1);
    store.DeleteFrame(0);
    EXPECT_EQ(store.FrameCount(), 1);
    EXPECT_TRUE(frameIs(0, 20));
}

TEST_F(FrameStoreTest, FramesAreReadAndWrittenWithoutMakingThemCurrent) {
    makeNumberedFrames(3);
    store.AnimToMain(2);
    EXPECT_TRUE(imageIs(30));
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_TRUE(frameIs(0, 10)) << "no store first";
    store.AnimToMain(3);
    store.AnimToMain(-1);
    EXPECT_TRUE(imageIs(30));

    Plane green = store.framePlane(FrameColour::Green, 1);
    EXPECT_EQ(green.ubX(), 8);
    EXPECT_EQ(green.ubY(), 6);
    EXPECT_EQ(green.at(3, 3), 21);
    EXPECT_THROW(store.framePlane(FrameColour::Blue, 3), SubscriptError);

    green.fill(5);
    store.setFramePlane(FrameColour::Green, green, 2);
    EXPECT_EQ(store.framePlane(FrameColour::Green, 2).at(8, 6), 5);
    store.setFramePlane(FrameColour::Green, Plane(20, 20, 9), 3);  // ignored
    // Another shape is copied byte for byte, as far as the frame reaches.
    store.setFramePlane(FrameColour::Red, Plane(100, 100, 7), 0);
    store.setFramePlane(FrameColour::Red, Plane(2, 0, 8), 0);
    const Plane red = store.framePlane(FrameColour::Red, 0);
    EXPECT_EQ(red.at(2, 0), 8);
    EXPECT_EQ(red.at(3, 0), 7);
    EXPECT_EQ(red.at(8, 6), 7);
}

TEST_F(FrameStoreTest, ANewImageOfAnotherSizeFreesTheAnimationAtItsNextUse) {
    makeNumberedFrames(3);
    host.newDocument(20, 10);
    store.GotoFrame(1);
    EXPECT_EQ(store.FrameCount(), 0);
    EXPECT_EQ(host.prompter.messages.back(), kSizeChangedMessage);
}

TEST_F(FrameStoreTest, FreeingKeepsTheImageOnScreen) {
    makeNumberedFrames(3);
    store.GotoFrame(2);
    store.FreeAnimation();
    EXPECT_EQ(store.FrameCount(), 0);
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_EQ(store.AnimR().frames(), 0);
    EXPECT_TRUE(imageIs(30));
    EXPECT_EQ(display.counters.back(), "0 of 0");
}

}  // namespace
}  // namespace wib::testing
