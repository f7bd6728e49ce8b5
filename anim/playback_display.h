// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace wib {

// What the frame store asks of the playback controls: the panel implements it,
// tests record it.
class PlaybackDisplay {
  public:
    virtual ~PlaybackDisplay() = default;
    // The frame count, the current frame, the frame counter text, the frame
    // rate or the animation's name changed: show them again.
    virtual void animationChanged() = 0;
    // Brings the playback controls into view.
    virtual void showControls() = 0;
    // Runs `loop` from the program's event loop soon after the caller has
    // returned, so that the command that starts playback returns at once.
    virtual void startLoopSoon(std::function<void()> loop) = 0;
};

}  // namespace wib
