// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/layered_picture.h"
#include "fileio/container.h"
#include "fileio/read_result.h"

// The sections of a layered picture, in the layered picture file and in the
// stored animation alike: "LAYR" the layer list and the current layer, "PIXL"
// the frames' planes and the current frame.

namespace wib {

inline constexpr FourCC kLayersSection{'L', 'A', 'Y', 'R'};
inline constexpr FourCC kPixelsSection{'P', 'I', 'X', 'L'};

// Layer flags, one bit each.
inline constexpr std::uint8_t kLayerVisible = 1;
inline constexpr std::uint8_t kLayerLockPixels = 2;
inline constexpr std::uint8_t kLayerLockAlpha = 4;

// Adds both sections. The picture must be whole: at least one layer and one
// frame, one entry per layer in every frame, planes with upper bounds
// (width, height); anything else throws std::invalid_argument, as a fault of
// the caller.
void AddPictureSections(ContainerWriter& container, const LayeredPicture& picture);

// The picture the two sections of `container` hold, or the message that says
// why they are not sound.
ReadResult<LayeredPicture> ReadPictureSections(const Container& container);

}  // namespace wib
