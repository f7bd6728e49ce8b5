// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/layered_picture.h"

namespace wib {

// The animation's frames as operations that change the image see them: the
// repeat over all frames steps through them. The frame store implements it;
// a document without an animation has none.
class FrameSequence {
  public:
    virtual ~FrameSequence() = default;
    virtual int frameCount() const = 0;
    // Stores the current image into its frame, then shows frame `index`: its
    // stored colour planes are copied into the main buffer byte for byte.
    virtual void gotoFrame(int index) = 0;
    // The colour planes stored for frame `index` (coverage left empty), and
    // their replacement: the layers keep the current layer's frames here.
    // Without frames there is nothing stored.
    virtual LayerPixels storedColour(int index) const;
    virtual void setStoredColour(int index, const LayerPixels& pixels);
    // Replaces the animation, without asking, by `count` black frames at the
    // document's size, frame 0 current; below 2 there is no animation after.
    // False when the frames cannot be had (the user has been told).
    virtual bool replaceFrames(int count);
    // The undo ring's companions for the frames' order and timing: kept with
    // undo slot `slot`, put back with it, and whether the slot's are showing.
    virtual void saveTimeline(int) {}
    virtual void restoreTimeline(int) {}
    virtual bool timelineMatches(int) const { return true; }
    // Shows the frame the image of slot `slot` was saved on, when the frames
    // are still in the slot's order: before the image on screen is kept for
    // redo, so that it is kept with its own frame.
    virtual void showSavedFrame(int) {}
};

// The frames of a document that is no animation.
class NoFrames final : public FrameSequence {
  public:
    int frameCount() const override { return 0; }
    void gotoFrame(int) override {}
};

}  // namespace wib
