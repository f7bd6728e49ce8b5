// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/gradient.h"

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
};

// Flood fill with the primary colour: the region of the seed is found over the
// whole image, then laid on through the selection. A seed outside the image
// fills nothing.
void FloodFill(Workspace& workspace, const FloodFillRule& rule);

// The selection filled with the primary colour, weighted by the matte; with no
// selection in force, the whole image.
void FillSelection(Workspace& workspace);

// A gradient from the primary colour at (x0, y0) to the secondary at (x1, y1).
struct GradientStroke {
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    GradientShape shape = GradientShape::Linear;
    // Random dither hashes the pixel position with a fixed seed: the same
    // gradient gives the same pixels every time.
    GradientDither dither = GradientDither::None;
};
void DrawGradient(Workspace& workspace, const GradientStroke& stroke);

}  // namespace wib
