// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/colour_planes.h"

namespace wib {

// Raw video frames: width x height pixels of red, green and blue bytes, rows
// from the top, no padding.

// The top-left width x height of `planes` as one raw frame in `out`.
void RgbFromPlanes(const ColourPlanes& planes, int width, int height, std::uint8_t* out);

// One raw frame as planes of a width x height document (the spare column and
// row black).
ColourPlanes PlanesFromRgb(const std::uint8_t* rgb, int width, int height);

}  // namespace wib
