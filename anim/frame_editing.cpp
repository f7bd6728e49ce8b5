// SPDX-License-Identifier: GPL-3.0-or-later
// Inserting and deleting frames: the arrays grow or shrink by one frame
// keeping their contents, and the frames above the index move by one.

#include <algorithm>

#include "anim/frame_store.h"
#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

void FrameStore::InsertFrame(int index) {
    StopAnimation();
    if (!ready() || index < 0 || index >= frameCount_) {
        return;
    }
    StoreCurrentFrame();
    LayersLeavingFrame(workspace_);
    const std::uint64_t needed = 3 * static_cast<std::uint64_t>(animR_.frameBytes());
    if (needed > workspace_.host.system.availableMemoryBytes() || !resizeFrames(frameCount_ + 1)) {
        workspace_.host.prompter.message(kInsertFrameMemoryMessage);
        return;
    }
    for (int j = frameCount_ - 1; j >= index; --j) {
        CopyFramePlanes(stackPlanes(j), stackPlanes(j + 1), animR_.frameBytes());
    }
    frameCount_ += 1;
    currentFrame_ = index + 1;
    // The copy is a frame of its own, held as long as the one it doubles.
    const std::vector<std::uint32_t> before = ids_;
    ids_.insert(ids_.begin() + index + 1, nextId_++);
    followPins(before);
    exposures_.insert(exposures_.begin() + index + 1, exposures_[static_cast<std::size_t>(index)]);
    LayersFrameInserted(workspace_, index);
    LoadCurrentFrame();
    LayersEnteredFrame(workspace_, currentFrame_);
    showChanges();
    workspace_.host.view.refresh();
}

void FrameStore::DeleteFrame(int index) {
    StopAnimation();
    if (frameCount_ < 2 || !ready() || index < 0 || index >= frameCount_) {
        return;
    }
    StoreCurrentFrame();
    LayersLeavingFrame(workspace_);
    for (int j = index; j <= frameCount_ - 2; ++j) {
        CopyFramePlanes(stackPlanes(j + 1), stackPlanes(j), animR_.frameBytes());
    }
    resizeFrames(frameCount_ - 1);
    frameCount_ -= 1;
    currentFrame_ = std::min(currentFrame_, frameCount_ - 1);
    const std::vector<std::uint32_t> before = ids_;
    ids_.erase(ids_.begin() + index);
    followPins(before);
    exposures_.erase(exposures_.begin() + index);
    LayersFrameDeleted(workspace_, index);
    LoadCurrentFrame();
    LayersEnteredFrame(workspace_, currentFrame_);
    showChanges();
    workspace_.host.view.refresh();
}

bool FrameStore::resizeFrames(int frames) {
    try {
        animR_.resize(frames);
        animG_.resize(frames);
        animB_.resize(frames);
    } catch (const std::bad_alloc&) {
        for (FrameArray* array : {&animR_, &animG_, &animB_}) {
            array->resize(frameCount_);
        }
        return false;
    }
    return true;
}

}  // namespace wib
