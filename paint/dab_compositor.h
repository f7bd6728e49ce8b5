// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/plane.h"

namespace wib {

struct PaintState;
struct PaintSurface;

// One dab as the stroke engine lays it.
struct Dab {
    const Plane* mask;                     // 0 = full strength, 255 = outside the brush
    double x = 0, y = 0;                   // centre, image pixels
    int opacity = 0;                       // the rounded stroke opacity, 0..255
    std::array<int, 3> colour;             // the dab colour
    int paperShiftX = 0, paperShiftY = 0;  // grain offset of this dab
    int mode = 0;                          // the paint mode, 0..11
    // The dab's width within the mask rows; the rest of each row, if any, is
    // padding of 255 that lets whole vectors be processed. 0: the mask's width.
    int maskWidth = 0;
    // The eraser on a layer with coverage: the dab takes coverage away
    // instead of laying colour.
    bool erasesCoverage = false;
};

// Composites one dab into the surface's colour planes (and its alpha plane
// when painting on it) in the dab's paint mode, clipped to the planes.
void CompositeDab(PaintSurface& surface, const PaintState& paint, const Dab& dab);

}  // namespace wib
