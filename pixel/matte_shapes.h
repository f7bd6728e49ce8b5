// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/matte_view.h"

namespace wib {

// A box in image pixels: the pixels x .. x + width - 1, y .. y + height - 1.
struct MatteBox {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// Writes 255 inside the box and 0 elsewhere; the part outside the matte is
// dropped.
void RectangleMatte(const MatteView& matte, const MatteBox& box);

// The ellipse inscribed in the box (diameters its width and height). Hard: a
// pixel is 255 when its centre lies inside. Anti-aliased: each pixel gets its
// covered fraction of 255, exact along the row and sampled on 16 sub-rows.
void EllipseMatte(const MatteView& matte, const MatteBox& box, bool antialias);

}  // namespace wib
