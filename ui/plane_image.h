// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>

#include "core/plane.h"

namespace wib {

struct Document;

// The image part (no spare column or row) of the main buffer, within `area`,
// as a 32-bit picture for drawing, written into `image`. The picture is made
// anew only when its size changes, so that the redraws of playback and
// painting reuse one buffer instead of taking fresh pages every time.
void PlanesToImage(const Document& document, const QRect& area, QImage& image);
// The same for any three planes of the document's shape (the swap image).
void PlanesToImage(const Plane& r, const Plane& g, const Plane& b, const QRect& area,
                   QImage& image);

}  // namespace wib
