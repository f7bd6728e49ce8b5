// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>

namespace wib {

struct Document;

// Painting on the matte shows it as a red veil over the image: clear where
// the matte is 255, half-covering red where it is 0, in between in step.
// The image covers `source` (image pixels, inside the document).
QImage MatteOverlay(const Document& document, const QRect& source);

}  // namespace wib
