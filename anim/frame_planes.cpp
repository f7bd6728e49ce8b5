// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing single frames without making them current, for
// plug-ins and for filters that walk the stack.

#include <algorithm>
#include <array>

#include "anim/frame_store.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/blit.h"

namespace wib {

void FrameStore::AnimToMain(int index) {
    if (!ready() || index < 0 || index >= frameCount_) {
        return;
    }
    CopyFramePlanes(stackPlanes(index), imagePlanes(), animR_.frameBytes());
}

Plane FrameStore::framePlane(FrameColour colour, int index) const {
    if (frameCount_ == 0) {
        return Plane();
    }
    if (index < 0 || index >= frameCount_) {
        throw SubscriptError();
    }
    Plane plane(width_, height_);
    BlockCopy(array(colour).frame(index), plane.data(), plane.byteCount());
    return plane;
}

void FrameStore::setFramePlane(FrameColour colour, const Plane& plane, int index) {
    if (frameCount_ == 0 || index < 0 || index >= frameCount_) {
        return;
    }
    FrameArray& frames = array(colour);
    BlockCopy(plane.data(), frames.frame(index), std::min(plane.byteCount(), frames.frameBytes()));
    ++pixelsRevision_;
    LayersFrameRewritten(workspace_, index);
}

LayerPixels FrameStore::storedColour(int index) const {
    return {framePlane(FrameColour::Red, index), framePlane(FrameColour::Green, index),
            framePlane(FrameColour::Blue, index), Plane()};
}

void FrameStore::setStoredColour(int index, const LayerPixels& pixels) {
    if (frameCount_ == 0 || index < 0 || index >= frameCount_) {
        return;
    }
    const std::array<const Plane*, 3> planes{&pixels.r, &pixels.g, &pixels.b};
    for (int c = 0; c < 3; ++c) {
        FrameArray& frames = array(static_cast<FrameColour>(c));
        const Plane& plane = *planes[static_cast<std::size_t>(c)];
        BlockCopy(plane.data(), frames.frame(index),
                  std::min(plane.byteCount(), frames.frameBytes()));
    }
    ++pixelsRevision_;
}

}  // namespace wib

namespace wib {

bool FrameStore::replaceFrames(int count) {
    if (count < 2) {
        FreeAnimation();
        return true;
    }
    return CreateAnimation(count, 0, false);
}

}  // namespace wib
