// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "paint/shape_fill.h"

namespace wib {

class PaintSession;

// One stroke of the current brush through `points` (canvas-window units, as
// the pen and plug-ins give them) and, when `closed`, back to the first. No
// undo step of its own: the caller brackets it.
void StrokePoints(PaintSession& session, const std::vector<std::array<float, 2>>& points,
                  bool closed);

// The shape tools' effects, in image pixels, each one undo step. Strokes use
// the current brush from a fresh start, so that the first point gets a dab
// whatever the last stroke left; fills use the primary colour.
void DrawLine(PaintSession& session, float x0, float y0, float x1, float y1);
void DrawRectangle(PaintSession& session, const ShapeBox& box, bool filled);
void DrawEllipse(PaintSession& session, const ShapeBox& box, bool filled);

}  // namespace wib
