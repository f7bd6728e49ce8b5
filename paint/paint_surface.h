// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>

#include "core/plane.h"

namespace wib {

class Workspace;

// A rectangle of the image, inclusive, in image pixels.
struct DirtyRect {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;
};

// What the stroke engine paints onto, in image pixels: the planes it
// composites into, the planes its modes read, and where it reports the
// rectangle each segment changed. The engine knows nothing else of the
// document or the view.
struct PaintSurface {
    std::array<Plane*, 3> colour{};  // red, green, blue: painted
    Plane* alpha = nullptr;          // the selection: weights the paint, raised on it
    // The current layer's coverage, raised by the paint as source-over lays
    // it; null on an opaque layer or while the layer's coverage is locked.
    Plane* coverage = nullptr;
    std::array<const Plane*, 3> swap{};     // what From swap brings back
    std::array<const Plane*, 3> pattern{};  // the image brush's colours, tiled by Pattern
    int width = 0, height = 0;              // the image; planes have a spare column and row
    std::function<void(const DirtyRect&)> changed;

    bool empty() const { return colour[0] == nullptr || colour[0]->empty(); }
};

// The document's planes and the image brush, with repaints going to the
// workspace's views.
PaintSurface WorkspaceSurface(Workspace& workspace);

}  // namespace wib
