// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>

#include "core/plane.h"

namespace wib {

struct Document;
struct LayerPixels;

// The image part (no spare column or row) of the main buffer, within `area`,
// as a 32-bit picture for drawing, written into `image`. The picture is made
// anew only when its size changes, so that the redraws of playback and
// painting reuse one buffer instead of taking fresh pages every time.
void PlanesToImage(const Document& document, const QRect& area, QImage& image);
// The same for any three planes of the document's shape (the swap image).
void PlanesToImage(const Plane& r, const Plane& g, const Plane& b, const QRect& area,
                   QImage& image);
// A layers' composite (straight colour and coverage) within `area`, over a
// checkerboard fixed to the image so that it stays put as the view scrolls.
void LayersToImage(const LayerPixels& composite, const QRect& area, QImage& image);

}  // namespace wib
