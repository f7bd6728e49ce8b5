// SPDX-License-Identifier: GPL-3.0-or-later
// Playback: through the play range, back to its first frame after its last
// (or turning round, for ping-pong), each frame held for its exposure in
// ticks of FrameDelayMs, on the interface thread. The wait between
// frames reads the clock without sleeping, and interface events run once per
// frame: that is where a stop command or any change to the stack ends it.

#include "anim/playback.h"

#include <algorithm>

#include "anim/frame_store.h"
#include "anim/playback_display.h"
#include "core/workspace.h"

namespace wib {

void WaitPastDelay(const Clock& clock, std::chrono::nanoseconds start, std::int32_t delayMs) {
    const std::chrono::duration<double, std::milli> delay(delayMs);
    while (clock.now() - start <= delay) {
    }
}

PlayStep NextPlayFrame(int current, int count, const PlayRange& range, int direction) {
    const int last = count - 1;
    const int out = range.out < 0 ? last : std::clamp(range.out, 0, last);
    const int in = std::clamp(range.in, 0, out);
    if (current < in || current > out) {
        return {in, 1};
    }
    const int next = current + direction;
    if (next >= in && next <= out) {
        return {next, direction};
    }
    if (!range.loop) {
        return {-1, direction};
    }
    if (range.pingPong && in < out) {
        return {current - direction, -direction};
    }
    return {direction > 0 ? in : out, direction};
}

void Playback::play() {
    if (playingFlag_ == -1 || frames_.FrameCount() < 2) {
        return;
    }
    playingFlag_ = -1;
    direction_ = 1;
    frames_.showChanges();
    if (PlaybackDisplay* display = frames_.display()) {
        display->startLoopSoon([this] { runLoop(); });
    } else {
        runLoop();
    }
}

void Playback::stop() {
    if (playingFlag_ == 0) {
        return;
    }
    playingFlag_ = 0;
    frames_.showChanges();
}

void Playback::runLoop() {
    // Playback stopped and started again within one pass of events: the loop
    // already on the stack carries on.
    if (loopRunning_) {
        return;
    }
    loopRunning_ = true;
    Workspace& workspace = frames_.workspace();
    const Clock& clock = workspace.host.clock;
    while (playingFlag_ == -1) {
        const std::chrono::nanoseconds start = clock.now();
        const PlayStep step = NextPlayFrame(frames_.CurrentFrame(), frames_.FrameCount(),
                                            frames_.playRange(), direction_);
        if (step.frame < 0) {
            stop();
            break;
        }
        direction_ = step.direction;
        frames_.GotoFrame(step.frame);
        WaitPastDelay(clock, start, frames_.FrameDelayMs() * frames_.exposure(step.frame));
        workspace.host.view.processPendingEvents();
        frames_.showChanges();
    }
    loopRunning_ = false;
}

}  // namespace wib
