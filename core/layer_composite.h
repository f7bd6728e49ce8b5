// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "core/layer_stack.h"
#include "pixel/pixel_rect.h"

namespace wib {

class Workspace;

// One layer as the compositor reads it: its planes (coverage null while
// opaque) and how it is laid on.
struct CompositeSource {
    const Plane* r;
    const Plane* g;
    const Plane* b;
    const Plane* a;
    BlendMode mode;
    int opacity;
};

// Lays the sources, bottom first, over a transparent start within `rect`
// (clipped to the picture) into `out`, whose planes have the sources' shape.
void CompositeSources(const std::vector<CompositeSource>& sources, const PixelRect& rect,
                      LayerPixels& out);

// The visible layers of the current frame as the canvas shows them.
std::vector<CompositeSource> VisibleSources(const Workspace& workspace);

// Planes of the document's shape, colour 0 and coverage 0.
LayerPixels TransparentPixels(int width, int height);

// The whole composite of the current frame: straight colour and coverage.
LayerPixels CompositePicture(const Workspace& workspace);
// The same of any frame of a layered animation (the current one included).
LayerPixels CompositeOfFrame(const Workspace& workspace, int frame);

}  // namespace wib
