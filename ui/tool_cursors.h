// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QRect>

#include "paint/tool.h"

class QPainter;

namespace wib {

// The pointer shape of a tool; a brush outline is a circle of `diameter`
// screen pixels (the brush at the current zoom) around a small cross.
QCursor ToolPointer(ToolCursor cursor, double diameter);

// Draws what a tool is dragging, in window units at `scale`.
void DrawToolOverlay(QPainter& painter, const ToolOverlay& overlay, double scale);
// The window area the overlay covers, pen included.
QRect ToolOverlayArea(const ToolOverlay& overlay, double scale);

}  // namespace wib
