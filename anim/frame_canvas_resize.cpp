// SPDX-License-Identifier: GPL-3.0-or-later
// The canvas-size change of an animation: every frame keeps its pixels at the
// same offsets as the image and gets the same fill colour. The old frames wait
// in the crop file while the new ones are made, so that the old and new stacks
// need not fit in memory together; when the file cannot be written they are
// resized in memory instead, if both fit. A change the memory cannot hold is
// refused before anything moves; should the new stack still fail to come, the
// old frames are read back from the crop file.

#include <fstream>
#include <new>
#include <vector>

#include "anim/frame_store.h"
#include "anim/stack_memory.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr const char* kResizeFailedMessage =
    "The animation frames could not be resized to the new canvas size, so the animation was "
    "freed.";

}  // namespace

bool FrameStore::resizeForCanvas(Workspace&, const CanvasChange& change) {
    if (frameCount_ == 0) {
        return true;
    }
    StopAnimation();
    const std::uint64_t needed = StackBytes(frameCount_, change.newWidth, change.newHeight);
    const std::uint64_t available = workspace_.host.system.availableMemoryBytes();
    if (needed > available + heldBytes()) {
        return false;
    }
    const bool parked = parkFrames();
    if (!parked && needed > available) {
        return false;
    }
    FrameArray old[3] = {std::move(animR_), std::move(animG_), std::move(animB_)};
    if (parked) {
        for (FrameArray& array : old) {
            array.release();
        }
    }
    bool placed = false;
    try {
        allocateFrames(change.newWidth, change.newHeight, frameCount_,
                       {change.fillR, change.fillG, change.fillB});
        placed = placeFrames(change, parked ? nullptr : old);
    } catch (const std::bad_alloc&) {
        placed = false;
    }
    if (!placed) {
        const bool restored = parked ? unparkFrames(change) : restoreFrames(old);
        if (!restored) {
            abandonResize();
        }
    }
    std::error_code ignored;
    std::filesystem::remove(cropFile_, ignored);
    refreshTransferRecord();
    showChanges();
    return placed;
}

bool FrameStore::restoreFrames(FrameArray* old) {
    animR_ = std::move(old[0]);
    animG_ = std::move(old[1]);
    animB_ = std::move(old[2]);
    return true;
}

bool FrameStore::unparkFrames(const CanvasChange& change) {
    releaseFrames();
    try {
        allocateFrames(change.oldWidth, change.oldHeight, frameCount_, {0, 0, 0});
    } catch (const std::bad_alloc&) {
        return false;
    }
    std::ifstream file(cropFile_, std::ios::binary);
    for (FrameArray* array : {&animR_, &animG_, &animB_}) {
        file.read(reinterpret_cast<char*>(array->frame(0)),
                  static_cast<std::streamsize>(array->byteCount()));
    }
    return static_cast<bool>(file);
}

bool FrameStore::parkFrames() const {
    std::ofstream file(cropFile_, std::ios::binary | std::ios::trunc);
    for (const FrameArray* array : {&animR_, &animG_, &animB_}) {
        file.write(reinterpret_cast<const char*>(array->frame(0)),
                   static_cast<std::streamsize>(array->byteCount()));
    }
    file.close();
    return !file.fail();
}

bool FrameStore::placeFrames(const CanvasChange& change, FrameArray* old) {
    std::ifstream file;
    std::vector<std::uint8_t> parked;
    if (old == nullptr) {
        file.open(cropFile_, std::ios::binary);
        parked.resize(static_cast<std::size_t>(change.oldWidth + 1) *
                      static_cast<std::size_t>(change.oldHeight + 1));
    }
    Prompter& prompter = workspace_.host.prompter;
    prompter.statusOpen("Resizing animation frames...");
    FrameArray* made[3] = {&animR_, &animG_, &animB_};
    bool complete = true;
    for (int colour = 0; colour < 3 && complete; ++colour) {
        for (int frame = 0; frame < frameCount_ && complete; ++frame) {
            const std::uint8_t* from = nullptr;
            if (old == nullptr) {
                file.read(reinterpret_cast<char*>(parked.data()),
                          static_cast<std::streamsize>(parked.size()));
                complete = static_cast<bool>(file);
                from = parked.data();
            } else {
                from = old[colour].frame(frame);
            }
            if (complete) {
                PlaceOldPixels(from, made[colour]->frame(frame), change);
            }
        }
        prompter.progress((colour + 1) * 100 / 3);
    }
    prompter.statusClose();
    return complete;
}

void FrameStore::abandonResize() {
    FreeAnimation();
    workspace_.host.prompter.message(kResizeFailedMessage);
}

}  // namespace wib
