// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/fill_settings.h"

namespace wib {

class Workspace;

// Fills and gradients on the current image, through the selection in force
// (weighted by the matte). Each belongs inside the edit bracket
// (RunImageOperation), which makes it one undo step. Coordinates are image
// pixels; the colours are the workspace's primary and secondary.

struct FloodFillRule {
    int x = 0;
    int y = 0;
    int tolerance = 0;
    bool contiguous = true;
    bool eightConnected = false;
    FillSource source = FillSource::Primary;
    FillSample sample = FillSample::Layer;
    bool antialias = false;
    FillGradientPlacement gradient = FillGradientPlacement::Region;
};

// Flood fill: the region of the seed is found over the whole image (the
// current layer or the composite, as the rule samples), softened at its edge
// when asked, then laid on through the selection. A seed outside the image
// fills nothing. A pattern fill with no brush image lays nothing.
void FloodFill(Workspace& workspace, const FloodFillRule& rule);

// The selection filled with the primary colour, weighted by the matte; with no
// selection in force, the whole image.
void FillSelection(Workspace& workspace);

// A gradient from the primary colour at (x0, y0) to the secondary at (x1, y1);
// gradient fills placed as the last gradient follow it from then on.
void DrawGradient(Workspace& workspace, const GradientStroke& stroke);

}  // namespace wib
