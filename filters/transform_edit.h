// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "core/document.h"
#include "core/packed_colour.h"
#include "core/plane.h"
#include "pixel/affine.h"

namespace wib {

class Workspace;

// Resamples rows 0..rows-1 of the target in bands across `threads`. The
// bands are small and taken in turn, since a row starts cheaply and a
// processor shared with other work would otherwise hold up the whole turn.
void ResampleRows(int threads, const AffineSource& source, const AffineTarget& target,
                  const AffineMatrix& inverse, Sampling sampling, int rows);

// One affine change of the selected pixels: scaled, flipped and turned about
// the centre of the selection's box (positive angles turn clockwise on the
// screen), then shifted by (dx, dy) image pixels.
struct TransformSpec {
    double scaleX = 1;
    double scaleY = 1;
    double angle = 0;  // degrees
    bool flipH = false;
    bool flipV = false;
    double dx = 0;
    double dy = 0;
    Sampling sampling = Sampling::Bilinear;
};

// The pixels one transform works on: the colour planes of the current layer,
// its coverage (null on the bottom layer, which is always opaque) and the
// selection (null when none is in force: the whole layer moves).
struct TransformPlanes {
    Plane* r;
    Plane* g;
    Plane* b;
    Plane* coverage;
    Plane* matte;
    int width;
    int height;
    // What the bottom layer shows where the pixels left.
    PackedColour clearColour;
};

// The box a transform starts from: the selection's box, or the whole image.
AlphaBounds TransformBox(const TransformPlanes& planes);

// Where the box's corners land (top left, top right, bottom right, bottom
// left), in image coordinates: a pixel's own square runs from x to x + 1.
struct CornerPoint {
    double x;
    double y;
};
std::array<CornerPoint, 4> TransformedCorners(const TransformSpec& spec, const AlphaBounds& box);

// Where the transform maps target pixel indices from, in the coordinates of
// a source block whose top-left pixel is `box`'s.
AffineMatrix TransformInverse(const TransformSpec& spec, const AlphaBounds& box);

// The transform done on `planes`: the selected pixels (weighted by the
// selection) are lifted, the place they left is cleared (the clear colour on
// the bottom layer, transparency on others), and they are laid back
// transformed; the selection moves with them. Rows run on `threads` threads.
// False when a selection is in force but selects nothing.
bool TransformPixels(const TransformPlanes& planes, const TransformSpec& spec, int threads);

// The planes of the workspace's current layer and selection.
TransformPlanes CurrentTransformPlanes(Workspace& workspace);

// The transform on the current layer through the selection, as one change of
// the image: run it inside the edit bracket. Says so and returns false when
// nothing is selected.
bool TransformSelection(Workspace& workspace, const TransformSpec& spec);

}  // namespace wib
