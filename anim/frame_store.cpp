// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_store.h"

#include <algorithm>
#include <new>

#include "anim/frame_rate.h"
#include "anim/playback_display.h"
#include "anim/stack_memory.h"
#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

FrameStore::FrameStore(Workspace& workspace, std::filesystem::path cropFile)
    : workspace_(workspace), cropFile_(std::move(cropFile)) {
    workspace_.attachFrames(this);
    workspace_.resizeStores.push_back(this);
    rateField_.setText(DefaultFrameRateText(workspace_.host.preferences));
    rateShown_ = rateField_.changed.subscribe([this] { showChanges(); });
}

FrameStore::~FrameStore() {
    if (&workspace_.frames() == this) {
        workspace_.attachFrames(nullptr);
    }
    std::erase(workspace_.resizeStores, this);
}

std::string FrameStore::FrameCounterText() const {
    std::string text = std::to_string(currentFrame_) + " of " + std::to_string(frameCount_);
    if (PlayingFlag() == -1) {
        text += " playing";
    }
    return text;
}

bool FrameStore::CreateAnimation(int frames, int copyImage, bool askFirst) {
    Prompter& prompter = workspace_.host.prompter;
    if (frames < 1) {
        prompter.message(kNoFramesMessage);
        return false;
    }
    if (frameCount_ > 0 && askFirst &&
        prompter.choiceBox(kAnimationExistsQuestion, "Wibbleton", "OK", "Cancel") != 1) {
        return false;
    }
    const Document& doc = workspace_.document;
    // The old stack is released before the new one is made.
    const StackMemory memory{StackBytes(frames, doc.width, doc.height),
                             workspace_.host.system.availableMemoryBytes() + heldBytes()};
    if (!memory.fits()) {
        prompter.message(memory.refusal());
        return false;
    }
    FreeAnimation();
    try {
        allocateFrames(doc.width, doc.height, frames, {0, 0, 0});
    } catch (const std::bad_alloc&) {
        releaseFrames();
        prompter.message(memory.refusal());
        return false;
    }
    currentFrame_ = 0;
    frameCount_ = frames;
    resetTimeline();
    StoreCurrentFrame();
    if (copyImage > 0) {
        CopyImageToEveryFrame();
    }
    LayersFramesMade(workspace_, frames, copyImage > 0);
    showChanges();
    return true;
}

void FrameStore::FreeAnimation() {
    StopAnimation();
    if (frameCount_ == 0) {
        return;
    }
    releaseFrames();
    LayersFramesFreed(workspace_);
    currentFrame_ = 0;
    frameCount_ = 0;
    resetTimeline();
    showChanges();
}

void FrameStore::StoreCurrentFrame() {
    if (!ready()) {
        return;
    }
    CopyFramePlanes(imagePlanes(), stackPlanes(storedIndex()), animR_.frameBytes());
    showChanges();
}

void FrameStore::LoadCurrentFrame() {
    if (!ready()) {
        return;
    }
    refreshTransferRecord();
    CopyFramePlanes(stackPlanes(storedIndex()), imagePlanes(),
                    static_cast<std::size_t>(transfer_.planeBytes));
}

void FrameStore::CopyImageToEveryFrame() {
    if (!ready()) {
        return;
    }
    for (int frame = 0; frame < frameCount_; ++frame) {
        CopyFramePlanes(imagePlanes(), stackPlanes(frame), animR_.frameBytes());
    }
    LayersFrameRewritten(workspace_, -1);
    showChanges();
}

void FrameStore::GotoFrame(int index, GotoOptions options) {
    if (!ready()) {
        return;
    }
    const int from = storedIndex();
    currentFrame_ = std::clamp(index, 0, frameCount_);
    if (options.frameUpdate) {
        workspace_.events.beforeFrameLoad.notify(currentFrame_);
    }
    refreshTransferRecord();
    LayersLeavingFrame(workspace_);
    SwitchFramePlanes(imagePlanes(), stackPlanes(from), stackPlanes(storedIndex()),
                      static_cast<std::size_t>(transfer_.planeBytes));
    LayersEnteredFrame(workspace_, storedIndex());
    showChanges();
    if (options.redraw) {
        workspace_.host.view.refresh();
    }
}

void FrameStore::setName(const std::string& name) {
    name_ = name;
    showChanges();
}

void FrameStore::showChanges() {
    ++pixelsRevision_;
    if (display_ != nullptr) {
        display_->animationChanged();
    }
    changed.notify();
}

bool FrameStore::ready() {
    if (frameCount_ == 0) {
        return false;
    }
    if (fitsDocument()) {
        return true;
    }
    FreeAnimation();
    workspace_.host.prompter.message(kSizeChangedMessage);
    return false;
}

bool FrameStore::fitsDocument() const {
    const Document& doc = workspace_.document;
    return doc.width == width_ && doc.height == height_ &&
           doc.RBuffer.byteCount() == animR_.frameBytes();
}

int FrameStore::storedIndex() const {
    return std::min(currentFrame_, frameCount_ - 1);
}

FramePlanes FrameStore::imagePlanes() {
    Document& doc = workspace_.document;
    return {doc.RBuffer.data(), doc.GBuffer.data(), doc.BBuffer.data()};
}

FramePlanes FrameStore::stackPlanes(int index) {
    return {animR_.frame(index), animG_.frame(index), animB_.frame(index)};
}

FrameArray& FrameStore::array(FrameColour colour) {
    return colour == FrameColour::Red ? animR_ : colour == FrameColour::Green ? animG_ : animB_;
}

const FrameArray& FrameStore::array(FrameColour colour) const {
    return colour == FrameColour::Red ? animR_ : colour == FrameColour::Green ? animG_ : animB_;
}

void FrameStore::refreshTransferRecord() {
    transfer_ = {currentFrame_, width_, height_, static_cast<std::int32_t>(animR_.frameBytes())};
}

std::uint64_t FrameStore::heldBytes() const {
    return animR_.byteCount() + animG_.byteCount() + animB_.byteCount();
}

void FrameStore::releaseFrames() {
    animR_.release();
    animG_.release();
    animB_.release();
}

void FrameStore::allocateFrames(int width, int height, int frames, const Fill& fill) {
    const std::size_t bytes =
        static_cast<std::size_t>(width + 1) * static_cast<std::size_t>(height + 1);
    animR_.allocate(bytes, frames, fill.r);
    animG_.allocate(bytes, frames, fill.g);
    animB_.allocate(bytes, frames, fill.b);
    width_ = width;
    height_ = height;
}

void FrameStore::showFrame(int index, GotoOptions options) {
    StopAnimation();
    GotoFrame(std::clamp(index, 0, frameCount_), options);
}

void FrameStore::showControls() {
    if (display_ != nullptr) {
        display_->showControls();
    }
}

}  // namespace wib
