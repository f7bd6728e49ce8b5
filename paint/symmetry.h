// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

class Workspace;
struct PaintState;

// Sits between the canvas and BrushStep: with radial symmetry or a mirror on,
// each pointer event becomes one call per symmetric copy, each copy joined
// only to its own previous point. x and y are canvas-window units.
void DispatchStroke(Workspace& workspace, PaintState& paint, std::int16_t button,
                    std::int16_t shift, float x, float y);

}  // namespace wib
