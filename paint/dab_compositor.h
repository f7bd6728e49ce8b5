#pragma once

#include <array>
#include <cstdint>

#include "core/plane.h"

namespace wib {

struct Document;
struct PaintState;

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
    // The image brush's colour planes, which the pattern modes tile; null
    // where there is no image brush.
    std::array<const Plane*, 3> pattern{};
};

// Composites one dab into the main buffer (and the alpha plane when painting
// on it) in the current paint mode, clipped to the planes.
void CompositeDab(Document& document, const PaintState& paint, const Dab& dab);

}  // namespace wib
