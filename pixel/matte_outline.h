// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "pixel/matte_view.h"

namespace wib {

// A straight piece of a matte's outline, on the pixel edges: from corner
// (x0, y0) to (x1, y1), horizontal or vertical.
struct OutlineEdge {
    int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

// The edges between pixels at 128 or more and pixels below (the image's
// border counts as below), each run along a row or column as one edge:
// horizontal edges first, top to bottom, then vertical ones.
std::vector<OutlineEdge> MatteOutline(const MatteSource& matte);

}  // namespace wib
