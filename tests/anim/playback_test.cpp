// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/playback.h"

#include <gtest/gtest.h>

#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

using namespace std::chrono_literals;

class Playback : public FrameStoreTest {
  protected:
    Playback() {
        host.clock.step = 1ms;  // the clock moves on at every reading
    }

    // Starts playback and runs its loop, as the event loop would, noting at
    // each pass of events which frame is shown and when; the pass `stopAt`
    // (counted from 1) lets a stop through.
    void play(int stopAt, std::function<void()> stop = {}) {
        host.view.pendingEvents = [this, stopAt, stop] {
            shown.push_back(store.CurrentFrame());
            times.push_back(host.clock.time);
            if (static_cast<int>(shown.size()) == stopAt) {
                stop ? stop() : store.StopAnimation();
            }
        };
        store.PlayAnimation();
        ASSERT_EQ(display.loops.size(), 1u);
        display.loops[0]();
    }

    std::vector<int> shown;
    std::vector<std::chrono::nanoseconds> times;
};

TEST_F(Playback, LoopsForwardOverEveryFrameUntilStopped) {
    makeNumberedFrames(4);
    store.GotoFrame(2);
    play(7);
    EXPECT_EQ(shown, (std::vector<int>{3, 0, 1, 2, 3, 0, 1}));
    EXPECT_EQ(store.PlayingFlag(), 0);
    EXPECT_EQ(store.FrameCounterText(), "1 of 4");
    EXPECT_TRUE(imageIs(20));
}

TEST_F(Playback, FramesAreShownOneDelayApart) {
    makeNumberedFrames(3);
    store.rateField().setRate(24);
    play(5);
    for (std::size_t i = 1; i < times.size(); ++i) {
        const auto interval = times[i] - times[i - 1];
        EXPECT_GT(interval, 41ms) << i;
        EXPECT_LE(interval, 44ms) << i;
    }
}

TEST_F(Playback, WaitingPastNoDelayStillNeedsTheClockToMove) {
    host.clock.step = 1ns;
    const auto start = host.clock.time;
    WaitPastDelay(host.clock, start, 0);
    EXPECT_EQ(host.clock.time - start, 2ns) << "the first reading shows no time passed";
    WaitPastDelay(host.clock, host.clock.time, 1);
    EXPECT_EQ(host.clock.time - start, 2ns + 1000002ns);
}

TEST_F(Playback, ChangingTheStackStopsPlayback) {
    makeNumberedFrames(3);
    play(2, [this] { store.InsertFrame(0); });
    EXPECT_EQ(store.PlayingFlag(), 0);
    EXPECT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(shown.size(), 2u);
}

TEST_F(Playback, StoppingAndStartingWithinOneBatchOfEventsKeepsOneLoop) {
    makeNumberedFrames(3);
    host.view.pendingEvents = [this] {
        shown.push_back(store.CurrentFrame());
        if (shown.size() == 3) {
            store.StopAnimation();
            store.PlayAnimation();
            display.loops.back()();  // returns at once: a loop already runs
        } else if (shown.size() == 4) {
            store.StopAnimation();
        }
    };
    store.PlayAnimation();
    display.loops.front()();
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 0, 1}));
    EXPECT_EQ(display.loops.size(), 2u);
}

TEST_F(Playback, NeedsTwoFramesAndDoesNotStartTwice) {
    store.PlayAnimation();
    paint(10);
    ASSERT_TRUE(store.CreateAnimation(1, 255));
    store.PlayAnimation();
    EXPECT_EQ(store.PlayingFlag(), 0);
    store.InsertFrame(0);
    store.PlayAnimation();
    store.PlayAnimation();
    EXPECT_EQ(store.PlayingFlag(), -1);
    EXPECT_EQ(display.loops.size(), 1u);
    store.FreeAnimation();
    EXPECT_EQ(store.PlayingFlag(), 0);
}

}  // namespace
}  // namespace wib::testing

namespace wib::testing {
namespace {

TEST_F(Playback, PlaysWithinTheRangeBackAndForth) {
    makeNumberedFrames(6);
    store.playRange() = {1, 3, true, true};
    play(8);
    EXPECT_EQ(shown, (std::vector<int>{1, 2, 3, 2, 1, 2, 3, 2}))
        << "a frame outside the range starts it at its in mark";
}

TEST_F(Playback, WithoutLoopStopsAtTheOutMark) {
    makeNumberedFrames(5);
    store.playRange() = {2, -1, false, false};
    play(100);
    EXPECT_EQ(shown, (std::vector<int>{2, 3, 4})) << "out -1 is the last frame";
    EXPECT_EQ(store.PlayingFlag(), 0);
}

TEST_F(Playback, EachFrameIsHeldForItsExposure) {
    makeNumberedFrames(3);
    store.rateField().setRate(10);
    store.setExposure(1, 3);
    play(4);
    ASSERT_EQ(shown, (std::vector<int>{1, 2, 0, 1}));
    // Events pass once a frame's hold is over: frame 1 is held three delays
    // of 100 ms, the others one.
    EXPECT_GT(times[1] - times[0], 100ms);
    EXPECT_LE(times[1] - times[0], 103ms);
    EXPECT_GT(times[3] - times[2], 300ms);
    EXPECT_LE(times[3] - times[2], 303ms);
}

TEST(PlayStep, SingleFrameRangeAndReversedMarks) {
    EXPECT_EQ(NextPlayFrame(2, 5, {2, 2, true, true}, 1).frame, 2);
    EXPECT_EQ(NextPlayFrame(0, 5, {4, 1, true, false}, 1).frame, 1)
        << "an in mark past the out mark is pulled back to it";
    EXPECT_EQ(NextPlayFrame(3, 4, {0, 9, true, false}, 1).frame, 0)
        << "an out mark past the end is the last frame";
}

}  // namespace
}  // namespace wib::testing
