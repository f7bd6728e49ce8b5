// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixel/distort.h"

namespace wib {

struct RegionRule {
    // A pixel matches when the largest of its three channel differences from
    // the seed pixel is at most this (0..255).
    int tolerance = 0;
    // Only matching pixels joined to the seed through matching pixels; else
    // every matching pixel of the image.
    bool contiguous = true;
    // Diagonal neighbours join as well as the four sides.
    bool eightConnected = false;
};

// Finds the region of the seed pixel and writes it into `mask` (the image's
// shape, `maskStride` bytes a row): 255 inside, 0 outside. Works with an
// explicit list of spans, never recursion, so any image size is safe.
// Returns the number of pixels in the region; a seed outside the image gives
// an empty mask and 0.
std::size_t FindRegion(const RgbPlanes& image, int seedX, int seedY, const RegionRule& rule,
                       std::uint8_t* mask, std::size_t maskStride);

}  // namespace wib
