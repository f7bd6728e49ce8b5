// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "core/colour_planes.h"

namespace wib {

class FrameStore;

// The picture of frame `index` as files and videos receive it: the frame's
// colour planes, the current frame's taken from the main buffer, where its
// latest pixels are. Every exporter takes its frames from here.
ColourPlanes FrameImageForExport(FrameStore& store, int index);

// How many ticks of the frame rate frame `index` is held for; a video
// writes it that many times.
int FrameExposure(const FrameStore& store, int index);

// Makes `frames`, pictures of a width x height image in the document's
// shape, the animation in place of the image and animation held now, at
// `rate` frames a second, with frame 0 shown. The caller has asked the user
// and checked the size. Refuses, with a message and nothing changed, frames
// the memory cannot hold. The frames are taken over.
bool ReplaceAnimation(FrameStore& store, int width, int height, std::vector<ColourPlanes>&& frames,
                      double rate);

}  // namespace wib
