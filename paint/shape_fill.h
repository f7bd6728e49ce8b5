// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/packed_colour.h"

namespace wib {

struct Document;

// A rectangle of whole image pixels between two corners given in any order,
// both included.
struct ShapeBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    static ShapeBox FromCorners(int x0, int y0, int x1, int y1);
    int width() const { return right - left + 1; }
    int height() const { return bottom - top + 1; }
};

// Fills the box with the colour through the matte; what lies outside the
// image is left out.
void FillRectangle(Document& document, const ShapeBox& box, PackedColour colour);

// Fills the ellipse inscribed in the box (its diameters the box's width and
// height) with the colour through the matte. Edge pixels take the colour by
// the share of them the ellipse covers, so the edge is anti-aliased.
void FillEllipse(Document& document, const ShapeBox& box, PackedColour colour);

}  // namespace wib
