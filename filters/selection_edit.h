// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "pixel/matte_ops.h"
#include "pixel/matte_shapes.h"

namespace wib {

class Workspace;

// The selection is the alpha buffer: 255 selected, 0 not, values between
// partly; AlphaBitsFlag 255 puts it in force. These are the selection edits
// the Select menu, the selection tools and scripts share. Each changes the
// alpha buffer in place and belongs inside the edit bracket
// (RunImageOperation), which makes it one undo step. Coordinates are image
// pixels.

// Everything selected, in force.
void SelectAll(Workspace& workspace);
// The matte back to 255 everywhere and out of force: every pixel editable.
void SelectNone(Workspace& workspace);
// 255 - value everywhere; with no selection in force, everything was
// editable, so nothing is selected afterwards.
void InvertSelection(Workspace& workspace);

// A new selection meets the one in force as `mode` says; with none in force
// the old selection counts as empty.
struct ShapeSelection {
    MatteBox box;
    bool ellipse = false;  // the ellipse inscribed in the box
    bool antialias = false;
    double feather = 0;  // radius, as FeatherSelection
    MatteMode mode = MatteMode::Replace;
};
void SelectShape(Workspace& workspace, const ShapeSelection& shape);

// The polygon through `corners` (image pixels), filled by the even-odd rule,
// as the lasso and polygon tools draw it.
struct PolygonSelection {
    std::vector<std::array<double, 2>> corners;
    bool antialias = true;
    double feather = 0;
    MatteMode mode = MatteMode::Replace;
};
void SelectPolygon(Workspace& workspace, const PolygonSelection& polygon);

// The magic wand: the pixels whose largest channel difference from the seed
// is at most `tolerance`, 4-connected to the seed when contiguous, taken from
// the current image's colour. A seed outside the image selects nothing new.
void SelectSimilar(Workspace& workspace, int x, int y, int tolerance, bool contiguous,
                   MatteMode mode);

// The current layer's coverage as a new selection; an opaque layer (a
// one-layer picture's) selects everything.
void SelectFromLayerAlpha(Workspace& workspace, MatteMode mode);
// The swap image's luminance as a new selection.
void LoadSelectionFromSwap(Workspace& workspace, MatteMode mode);
// The matte into the swap image's three planes, as grey; with no selection in
// force, white (every pixel editable).
void SaveSelectionToSwap(Workspace& workspace);

// The operations on the selection in force; with none in force they leave
// the matte as it is. Feather: a Gaussian of sigma radius / 2. Grow and
// shrink: the largest and smallest value within a disc. Border: the band of
// that width on either side of the edge. Smooth: feathered, then cut at half
// again, which rounds corners and removes specks smaller than the radius.
void FeatherSelection(Workspace& workspace, double radius);
void GrowSelection(Workspace& workspace, int radius);
void ShrinkSelection(Workspace& workspace, int radius);
void BorderSelection(Workspace& workspace, int radius);
void SmoothSelection(Workspace& workspace, int radius);

}  // namespace wib
