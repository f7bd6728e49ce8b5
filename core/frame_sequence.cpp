// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frame_sequence.h"

namespace wib {

LayerPixels FrameSequence::storedColour(int) const {
    return {};
}

void FrameSequence::setStoredColour(int, const LayerPixels&) {}

bool FrameSequence::replaceFrames(int count) {
    return count < 2;
}

}  // namespace wib
