// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/animation_commands.h"

#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/undo.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

class AnimationCommands : public FrameStoreTest {
  protected:
    AnimationCommands() {
        host.workspace.colours.secondary = {0x10, 0x11, 0x12};
        RegisterAnimationCommands(commands, store);
    }

    CommandOutcome::Status run(const std::string& id,
                               const std::map<std::string, ParamValue>& values = {}) {
        return commands.run(host.workspace, id, values).status;
    }

    CommandRegistry commands;
};

TEST_F(AnimationCommands, CreatingFromThePanelRefusesFewerThanTwoFrames) {
    EXPECT_EQ(run("anim.create", {{"frames", 1LL}}), CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.messages,
              (std::vector<std::string>{"You cannot create an animation with 1 or less frames."}));
    EXPECT_EQ(store.FrameCount(), 0);

    paint(60);
    EXPECT_EQ(run("anim.create", {{"frames", 12LL}, {"rate", 12.0}}), CommandOutcome::Status::Done);
    EXPECT_EQ(store.FrameCount(), 12);
    EXPECT_TRUE(frameIs(11, 60)) << "the image is copied by default";
    EXPECT_EQ(store.rateField().text(), "12");
    EXPECT_EQ(store.FrameDelayMs(), 83);
}

TEST_F(AnimationCommands, StartingContentsChooseWhatTheFramesHold) {
    paint(60);
    run("anim.create", {{"frames", 3LL}, {"contents", 1LL}});
    EXPECT_TRUE(frameIs(0, 60));
    EXPECT_TRUE(frameIs(2, 0));

    host.prompter.defaultAnswer = 1;
    run("anim.create", {{"frames", 3LL}, {"contents", 2LL}});
    for (int f = 0; f < 3; ++f) {
        EXPECT_TRUE(frameIs(f, 0x10)) << f << ": the program's secondary colour";
    }
    EXPECT_TRUE(imageIs(0x10));
    EXPECT_TRUE(EditUndo(host.workspace)) << "the clearing can be undone";
    EXPECT_TRUE(imageIs(60));

    run("anim.create", {{"frames", 2LL}, {"contents", 2LL}, {"colour", 0x474645LL}});
    EXPECT_TRUE(frameIs(1, 0x45)) << "a colour given to the command";
}

TEST_F(AnimationCommands, SteppingWrapsAroundAndStopsPlayback) {
    makeNumberedFrames(3);
    run("anim.previous_frame");
    EXPECT_EQ(store.CurrentFrame(), 2);
    run("anim.next_frame");
    EXPECT_EQ(store.CurrentFrame(), 0);
    run("anim.last_frame");
    EXPECT_EQ(store.CurrentFrame(), 2);
    run("anim.play");
    EXPECT_EQ(store.PlayingFlag(), -1);
    run("anim.first_frame");
    EXPECT_EQ(store.PlayingFlag(), 0);
    EXPECT_EQ(store.CurrentFrame(), 0);
    run("anim.goto_frame", {{"frame", 40LL}});
    EXPECT_EQ(store.CurrentFrame(), 3) << "clamped to the frame count";
    EXPECT_TRUE(imageIs(30));
}

TEST_F(AnimationCommands, InsertAndDeleteActOnTheFrameShown) {
    makeNumberedFrames(3);
    run("anim.goto_frame", {{"frame", 3LL}});
    run("anim.insert_frame");
    EXPECT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(store.CurrentFrame(), 3);
    EXPECT_TRUE(frameIs(3, 30));
    run("anim.delete_frame");
    run("anim.delete_frame");
    EXPECT_EQ(store.FrameCount(), 2);
    EXPECT_TRUE(imageIs(20));
    run("anim.free");
    EXPECT_EQ(store.FrameCount(), 0);
    run("anim.show_controls");
    EXPECT_EQ(display.shown, 1);
}

TEST_F(AnimationCommands, FreeingOverUnsavedChangesAsksAndCancelKeepsTheFrames) {
    makeNumberedFrames(3);
    host.workspace.document.modified = true;
    host.prompter.answers = {3, 2};
    EXPECT_EQ(run("anim.free"), CommandOutcome::Status::Refused);
    EXPECT_EQ(store.FrameCount(), 3);
    EXPECT_EQ(run("anim.free"), CommandOutcome::Status::Done);
    EXPECT_EQ(store.FrameCount(), 0);
    EXPECT_EQ(host.prompter.buttons,
              (std::vector<std::string>{"Save/Don't Save/Cancel", "Save/Don't Save/Cancel"}));
}

}  // namespace
}  // namespace wib::testing
