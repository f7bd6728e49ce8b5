// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/plane.h"

namespace wib {

struct AlphaBounds;
struct Document;

// A piece of the image cut out with its own coverage: what copy takes and
// paste lays back. Its planes hold exactly its pixels (no spare column or
// row); (x, y) is where its top left corner sat in the image.
struct PixelBlock {
    int x = 0;
    int y = 0;
    Plane R, G, B, A;

    int width() const { return R.ubX() + 1; }
    int height() const { return R.ubY() + 1; }
    bool empty() const { return R.empty(); }
};

// The pixels of four planes inside `box` (not empty), placed where it lies.
PixelBlock BlockOfPlanes(const Plane& r, const Plane& g, const Plane& b, const Plane& a,
                         const AlphaBounds& box);

// The selected part of the image: the selection's bounding box, the matte as
// its alpha, placed where the box lies. Empty when nothing is selected.
PixelBlock CopySelectedBlock(const Document& document);

// Lays the block into the main planes with its top left corner at (x, y),
// each pixel mixed in by its alpha, and makes its area the selection: the
// matte is the block's alpha there and 0 elsewhere. What falls outside the
// image is left out.
void PlaceBlock(Document& document, const PixelBlock& block, int x, int y);

// Weights the block's alpha by the matte under it when its top left corner
// lies at (x, y); the parts outside the image lose all coverage.
void ClipToMatte(PixelBlock& block, const Plane& matte, int width, int height, int x, int y);

}  // namespace wib
