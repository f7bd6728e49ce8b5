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

void FrameStore::PlayAnimation() {
    if (playingFlag_ == -1 || frameCount_ < 2) {
        return;
    }
    playingFlag_ = -1;
    showChanges();
    if (display_ != nullptr) {
        display_->startLoopSoon([this] { runPlaybackLoop(); });
    } else {
        runPlaybackLoop();
    }
}

void FrameStore::StopAnimation() {
    if (playingFlag_ == 0) {
        return;
    }
    playingFlag_ = 0;
    showChanges();
}

void FrameStore::runPlaybackLoop() {
    // Playback stopped and started again within one pass of events: the loop
    // already on the stack carries on.
    if (loopRunning_) {
        return;
    }
    loopRunning_ = true;
    const Clock& clock = workspace_.host.clock;
    while (playingFlag_ == -1) {
        const std::chrono::nanoseconds start = clock.now();
        playbackStep();
        WaitPastDelay(clock, start, frameDelayMs_);
        workspace_.host.view.processPendingEvents();
        showChanges();
    }
    loopRunning_ = false;
}

void FrameStore::playbackStep() {
    GotoFrame(currentFrame_ + 1 < frameCount_ ? currentFrame_ + 1 : 0);
}

}  // namespace wib
