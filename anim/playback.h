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

// Playback of a frame store: forward through every frame and round again, one
// frame every FrameDelayMs, on the interface thread.
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
};

}  // namespace wib
