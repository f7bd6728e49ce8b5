// SPDX-License-Identifier: GPL-3.0-or-later
// The light table's pins stay on their pictures through every edit of the
// frames' order, and through its undo and redo.

#include <gtest/gtest.h>

#include "anim/animation_commands.h"
#include "anim/onion_commands.h"
#include "anim/timeline_commands.h"
#include "core/commands.h"
#include "core/undo.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

using Status = CommandOutcome::Status;
using Values = std::vector<int>;

class LightTablePins : public FrameStoreTest {
  protected:
    LightTablePins() {
        RegisterAnimationCommands(commands, store);
        RegisterTimelineCommands(commands, store);
        RegisterOnionCommands(commands, store);
    }

    Status run(const std::string& id, const std::map<std::string, ParamValue>& values = {}) {
        return commands.run(host.workspace, id, values).status;
    }

    void pin(IntegerList frames) {
        ASSERT_EQ(run("view.light_table", {{"frames", std::move(frames)}}), Status::Done);
    }

    const std::vector<int>& pinned() const { return host.workspace.view.onion.pinned; }

    // The red value each pinned frame was painted with, in pin order; the
    // image on screen stands for the current frame.
    Values pinnedPictures() const {
        Values values;
        const int current = std::min(store.CurrentFrame(), store.FrameCount() - 1);
        for (const int f : pinned()) {
            values.push_back(f == current ? host.workspace.document.RBuffer.at(0, 0)
                                          : store.AnimR().frame(f)[0]);
        }
        return values;
    }

    bool undo() { return EditUndo(host.workspace); }
    bool redo() { return EditRedo(host.workspace); }

    CommandRegistry commands;
};

TEST_F(LightTablePins, PinsMoveWithMovedAndReversedFramesAndBackOnUndo) {
    makeNumberedFrames(6);
    pin({1, 4});
    ASSERT_EQ(run("anim.move_frames", {{"first", 1LL}, {"last", 2LL}, {"to", 3LL}}), Status::Done);
    // 10 40 50 20 30 60: the pictures 20 and 50 are now at 3 and 2.
    EXPECT_EQ(pinned(), (Values{2, 3}));
    EXPECT_EQ(pinnedPictures(), (Values{50, 20}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(pinned(), (Values{1, 4}));
    ASSERT_TRUE(redo());
    EXPECT_EQ(pinned(), (Values{2, 3}));
    ASSERT_TRUE(undo());

    ASSERT_EQ(run("anim.reverse_frames", {{"first", 0LL}, {"last", 4LL}}), Status::Done);
    // 50 40 30 20 10 60
    EXPECT_EQ(pinned(), (Values{0, 3}));
    EXPECT_EQ(pinnedPictures(), (Values{50, 20}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(pinnedPictures(), (Values{20, 50}));
}

TEST_F(LightTablePins, CopiesAndNewFramesAreNotPinnedAndPinsAfterThemShift) {
    makeNumberedFrames(4);
    pin({2, 3});
    ASSERT_EQ(run("anim.duplicate_frames", {{"first", 1LL}, {"last", 2LL}}), Status::Done);
    // 10 20 30 20 30 40: the copy of 30 stays unpinned.
    EXPECT_EQ(pinned(), (Values{2, 5}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(pinned(), (Values{2, 3}));

    ASSERT_EQ(run("anim.copy_frames", {{"first", 0LL}, {"last", 0LL}}), Status::Done);
    ASSERT_EQ(run("anim.paste_frames", {{"at", 1LL}}), Status::Done);
    EXPECT_EQ(pinned(), (Values{3, 4}));
    EXPECT_EQ(pinnedPictures(), (Values{30, 40}));
    ASSERT_TRUE(undo());

    store.GotoFrame(0);
    ASSERT_EQ(run("anim.insert_blank_frame"), Status::Done);
    EXPECT_EQ(pinned(), (Values{3, 4}));
    ASSERT_TRUE(undo());

    store.GotoFrame(2);
    ASSERT_EQ(run("anim.insert_frame"), Status::Done);
    // 10 20 30 30' 40: the copy goes after the frame it doubles.
    EXPECT_EQ(pinned(), (Values{2, 4}));
    EXPECT_EQ(pinnedPictures(), (Values{30, 40}));
}

TEST_F(LightTablePins, ADeletedFrameLosesItsPin) {
    makeNumberedFrames(5);
    pin({0, 2, 4});
    store.GotoFrame(2);
    ASSERT_EQ(run("anim.delete_frame"), Status::Done);
    EXPECT_EQ(pinned(), (Values{0, 3}));
    EXPECT_EQ(pinnedPictures(), (Values{10, 50}));
    // Moving the frames later does not bring the deleted frame's pin back.
    ASSERT_EQ(run("anim.reverse_frames", {{"first", 0LL}, {"last", 3LL}}), Status::Done);
    EXPECT_EQ(pinnedPictures(), (Values{50, 10}));
}

TEST_F(LightTablePins, APinnedFrameThatAnUndoTakesAwayComesBackPinnedOnRedo) {
    makeNumberedFrames(3);
    store.GotoFrame(1);
    ASSERT_EQ(run("anim.insert_blank_frame"), Status::Done);
    ASSERT_EQ(run("view.pin_frame"), Status::Done);
    pin({0, 2});
    ASSERT_TRUE(undo());
    EXPECT_EQ(pinned(), (Values{0})) << "the blank frame is gone, and its pin with it";
    ASSERT_TRUE(redo());
    EXPECT_EQ(pinned(), (Values{0, 2}));
    EXPECT_EQ(pinnedPictures(), (Values{10, 0}));
}

TEST_F(LightTablePins, ANewAnimationStartsWithNothingPinned) {
    makeNumberedFrames(3);
    pin({1});
    ASSERT_TRUE(store.CreateAnimation(3, 0, false));
    EXPECT_TRUE(pinned().empty());
    pin({1, 9});
    ASSERT_EQ(run("anim.reverse_frames", {{"first", 0LL}, {"last", 2LL}}), Status::Done);
    EXPECT_EQ(pinned(), (Values{1})) << "a pin beyond the frames names no picture";
}

}  // namespace
}  // namespace wib::testing
