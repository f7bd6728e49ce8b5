// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/layered_picture.h"
#include "fileio/container.h"
#include "fileio/read_result.h"

// The sections of a layered picture, in the layered picture file and in the
// stored animation alike: "LAYR" the layer list and the current layer, "FRMS"
// the frame count and the current frame, and one "FRAM" per frame, in order,
// with the planes of its layers.

namespace wib {

inline constexpr FourCC kLayersSection{'L', 'A', 'Y', 'R'};
inline constexpr FourCC kFramesSection{'F', 'R', 'M', 'S'};
inline constexpr FourCC kFrameSection{'F', 'R', 'A', 'M'};

// Layer flags, one bit each.
inline constexpr std::uint8_t kLayerVisible = 1;
inline constexpr std::uint8_t kLayerLockPixels = 2;
inline constexpr std::uint8_t kLayerLockAlpha = 4;

// Writes the sections, compressing the frames a few at a time. The picture must be whole: at least
// one layer and one frame, one entry per layer in every frame, planes with upper bounds (width,
// height); anything else throws std::invalid_argument, as a fault of the caller.
void AddPictureSections(ContainerWriter& container, const LayeredPicture& picture);

// The picture the sections of `container` hold, or the message that says
// why they are not sound.
ReadResult<LayeredPicture> ReadPictureSections(const Container& container);

}  // namespace wib
