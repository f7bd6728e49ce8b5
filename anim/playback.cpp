// SPDX-License-Identifier: GPL-3.0-or-later
// Playback: forward through every frame, back to the first after the last,
// one frame every FrameDelayMs, on the interface thread. The wait between
// frames reads the clock without sleeping, and interface events run once per
// frame: that is where a stop command or any change to the stack ends it.

#include "anim/playback.h"

#include "anim/frame_store.h"
#include "anim/playback_display.h"
#include "core/workspace.h"

namespace wib {

void WaitPastDelay(const Clock& clock, std::chrono::nanoseconds start, std::int32_t delayMs) {
    const std::chrono::duration<double, std::milli> delay(delayMs);
    while (clock.now() - start <= delay) {
    }
}

void Playback::play() {
    if (playingFlag_ == -1 || frames_.FrameCount() < 2) {
        return;
    }
    playingFlag_ = -1;
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
        const int next = frames_.CurrentFrame() + 1;
        frames_.GotoFrame(next < frames_.FrameCount() ? next : 0);
        WaitPastDelay(clock, start, frames_.FrameDelayMs());
        workspace.host.view.processPendingEvents();
        frames_.showChanges();
    }
    loopRunning_ = false;
}

}  // namespace wib
