// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "anim/onion_commands.h"
#include "core/commands.h"
#include "core/onion_state.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

using Status = CommandOutcome::Status;

std::vector<int> FrameNumbers(const std::vector<OnionFrame>& frames) {
    std::vector<int> numbers;
    for (const OnionFrame& frame : frames) {
        numbers.push_back(frame.frame);
    }
    return numbers;
}

TEST(OnionFrames, NeighboursStopAtTheEndsOfTheAnimation) {
    OnionState state;
    state.shown = true;
    state.before = 3;
    state.after = 2;
    // Bottom first: the farthest neighbours, then nearer ones.
    EXPECT_EQ(FrameNumbers(OnionFrames(state, 5, 10)), (std::vector<int>{2, 3, 7, 4, 6}));
    EXPECT_EQ(FrameNumbers(OnionFrames(state, 0, 10)), (std::vector<int>{2, 1}))
        << "nothing before the first frame, no wrapping";
    EXPECT_EQ(FrameNumbers(OnionFrames(state, 9, 10)), (std::vector<int>{6, 7, 8}));
    EXPECT_EQ(FrameNumbers(OnionFrames(state, 1, 3)), (std::vector<int>{0, 2}));
    EXPECT_TRUE(OnionFrames(state, 0, 1).empty()) << "a single frame has no neighbours";
    EXPECT_TRUE(OnionFrames(state, 0, 0).empty());

    state.shown = false;
    EXPECT_TRUE(OnionFrames(state, 5, 10).empty());
}

TEST(OnionFrames, OpacityFallsOffWithDistanceOnEachSide) {
    OnionState state;
    state.shown = true;
    state.before = 3;
    state.after = 1;
    state.opacity = 150;
    const std::vector<OnionFrame> frames = OnionFrames(state, 5, 10);
    ASSERT_EQ(frames.size(), 4u);
    // 150 x 1/3, 2/3, 3/3 before; the one frame after at full opacity.
    EXPECT_EQ(frames[0].frame, 2);
    EXPECT_EQ(frames[0].opacity, 50);
    EXPECT_EQ(frames[0].side, OnionSide::Before);
    EXPECT_EQ(frames[1].opacity, 100);
    EXPECT_EQ(frames[2].frame, 4);
    EXPECT_EQ(frames[2].opacity, 150);
    EXPECT_EQ(frames[3].frame, 6);
    EXPECT_EQ(frames[3].side, OnionSide::After);
    EXPECT_EQ(frames[3].opacity, 150);
}

TEST(OnionFrames, PinnedFramesLieBeneathAndShowOnce) {
    OnionState state;
    state.shown = true;
    state.before = 1;
    state.after = 1;
    state.opacity = 100;
    state.pinned = {0, 4, 5, 8, 20};
    const std::vector<OnionFrame> frames = OnionFrames(state, 5, 10);
    // 4 is a neighbour, 5 the current frame, 20 beyond the animation.
    EXPECT_EQ(FrameNumbers(frames), (std::vector<int>{0, 8, 4, 6}));
    EXPECT_EQ(frames[0].side, OnionSide::Pinned);
    EXPECT_EQ(frames[0].opacity, 50);

    state.shown = false;
    EXPECT_EQ(FrameNumbers(OnionFrames(state, 5, 10)), (std::vector<int>{0, 4, 8}))
        << "the light table shows with the onion skin off";

    TogglePinned(state, 4);
    TogglePinned(state, 2);
    EXPECT_EQ(state.pinned, (std::vector<int>{0, 2, 5, 8, 20}));
}

class OnionCommands : public FrameStoreTest {
  protected:
    OnionCommands() { RegisterOnionCommands(commands, store); }

    Status run(const std::string& id, const std::map<std::string, ParamValue>& values = {}) {
        return commands.run(host.workspace, id, values).status;
    }

    const OnionState& onion() const { return host.workspace.view.onion; }

    CommandRegistry commands;
};

TEST_F(OnionCommands, OnionChecksItsRanges) {
    EXPECT_EQ(run("view.onion", {{"before", 6LL}}), Status::BadParameter);
    EXPECT_EQ(run("view.onion", {{"after", -1LL}}), Status::BadParameter);
    EXPECT_EQ(run("view.onion", {{"opacity", 256LL}}), Status::BadParameter);
    EXPECT_FALSE(onion().shown) << "a refused setting changes nothing";

    EXPECT_EQ(run("view.onion", {{"before", 5LL}, {"after", 0LL}, {"opacity", 255LL}}),
              Status::Done);
    EXPECT_TRUE(onion().shown);
    EXPECT_EQ(onion().before, 5);
    EXPECT_EQ(onion().after, 0);
    EXPECT_EQ(onion().opacity, 255);
    EXPECT_GT(host.view.refreshes, 0);

    EXPECT_EQ(run("view.onion", {{"after", 3LL}}), Status::Done);
    EXPECT_EQ(onion().before, 5) << "what is not given stays";
    EXPECT_EQ(onion().after, 3);
}

TEST_F(OnionCommands, SettingsAreRememberedButNotThePinnedFrames) {
    run("view.onion", {{"before", 4LL}, {"after", 1LL}, {"opacity", 90LL}});
    run("view.onion_toggle");
    run("view.light_table", {{"frames", IntegerList{7, 3, 7}}});
    EXPECT_EQ(onion().pinned, (std::vector<int>{3, 7}));
    const OnionState loaded = LoadOnionState(host.preferences);
    EXPECT_FALSE(loaded.shown);
    EXPECT_EQ(loaded.before, 4);
    EXPECT_EQ(loaded.after, 1);
    EXPECT_EQ(loaded.opacity, 90);
    EXPECT_EQ(loaded.tintBefore, onion().tintBefore);
    EXPECT_TRUE(loaded.pinned.empty());

    host.preferences.setValue("Onion", "Before", "9");
    host.preferences.setValue("Onion", "Opacity", "many");
    EXPECT_EQ(LoadOnionState(host.preferences).before, 5) << "a count out of range is clamped";
    EXPECT_EQ(LoadOnionState(host.preferences).opacity, OnionState{}.opacity);
}

TEST_F(OnionCommands, LightTableAndPinningTheCurrentFrame) {
    EXPECT_EQ(run("view.light_table", {{"frames", IntegerList{-1}}}), Status::BadParameter);
    EXPECT_EQ(run("view.pin_frame"), Status::Refused) << "no animation, nothing to pin";

    ASSERT_TRUE(store.CreateAnimation(4, 1, false));
    store.GotoFrame(2);
    EXPECT_EQ(run("view.pin_frame"), Status::Done);
    EXPECT_EQ(onion().pinned, (std::vector<int>{2}));
    EXPECT_EQ(run("view.pin_frame"), Status::Done);
    EXPECT_TRUE(onion().pinned.empty()) << "pinning again unpins";
}

}  // namespace
}  // namespace wib::testing
