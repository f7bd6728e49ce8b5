// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

namespace wib {

// A free-form object: a path a plug-in builds point by point, in the units of
// Wib_BrushMove, which the program strokes with the current brush.
struct FreeFormPath {
    std::vector<std::array<float, 2>> points;
    bool closed = false;  // the stroke goes back to the first point
};

}  // namespace wib
