// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

class Workspace;
struct PaintState;

// One segment of a stroke. Button 0 only places the pen (the previous
// position) and takes the stroke opacity from the panel; button 1 paints from
// the previous position to (x, y) in the primary colour, button 2 in the
// secondary. x and y come in canvas-window units and are rewritten in image
// pixels (divided by zoom / 100). Shift is passed on and changes nothing.
void BrushStep(Workspace& workspace, PaintState& paint, std::int16_t& button, std::int16_t& shift,
               float& x, float& y);

// Rebuilds the built-in brush tip from the options (brush, size, hardness,
// bristles); the next segment transforms it anew.
void RebuildBuiltinTip(PaintState& paint);

}  // namespace wib
