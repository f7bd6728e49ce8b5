// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "core/fill_settings.h"
#include "core/plane.h"

namespace wib {

class Workspace;

// A gradient stroke rendered in the workspace's primary and secondary colours
// into three planes of the document's shape.
std::array<Plane, 3> RenderGradientStroke(Workspace& workspace, const GradientStroke& stroke);

// What a fill lays: a colour, the brush image tiled from the image's top-left
// corner, or a gradient.
struct FillPaint {
    FillSource source = FillSource::Primary;
    GradientStroke gradient;  // for FillSource::Gradient
};

// Lays the paint on the current image weighted by `weight` (a matte of the
// image's shape) and raises the current layer's coverage by the same weight,
// unless the layer's alpha is locked, so that a fill on a transparent layer
// shows.
void FillThrough(Workspace& workspace, const Plane& weight, const FillPaint& paint);

}  // namespace wib
