// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>

namespace wib {

class Clock;
class FrameStore;

// Waits, without sleeping, until strictly more than `delayMs` milliseconds
// have passed on `clock` since `start`; with a delay of 0, until the clock has
// moved on at all.
void WaitPastDelay(const Clock& clock, std::chrono::nanoseconds start, std::int32_t delayMs);

struct PlayRange;

// The frame playback shows after `current` among `count` frames within the
// play range, and the direction it then goes (1 forward, -1 back, for
// ping-pong); -1 when playback ends (the range played once without loop).
struct PlayStep {
    int frame;
    int direction;
};
PlayStep NextPlayFrame(int current, int count, const PlayRange& range, int direction);

// Playback of a frame store: through the play range, round again or back and
// forth, each frame held for its exposure in ticks of FrameDelayMs, on the
// interface thread.
class Playback {
  public:
    explicit Playback(FrameStore& frames) : frames_(frames) {}

    // -1 while playback runs, else 0.
    std::int16_t PlayingFlag() const { return playingFlag_; }
    // Starts playback from the event loop, so that it returns at once; does
    // nothing while playback runs or with fewer than 2 frames.
    void play();
    void stop();
    // The playback loop itself: returns once playback stops.
    void runLoop();

  private:
    FrameStore& frames_;
    std::int16_t playingFlag_ = 0;
    bool loopRunning_ = false;  // the loop is on the call stack
    int direction_ = 1;
};

}  // namespace wib
