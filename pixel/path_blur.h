// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/distort.h"

namespace wib {

// The most samples one pixel of a path blur takes: long paths far from the
// centre are thinned to this many so that the cost per pixel stays bounded.
inline constexpr int kMaxPathSamples = 256;

// Where a path blur is centred, in pixels.
struct BlurCentre {
    double x, y;
};

// Spin: each pixel becomes the mean of n bilinear samples on the circle
// through it about `centre`, spread evenly over `angleDegrees` of arc with
// the pixel in the middle; n = min(kMaxPathSamples, ceil(d a) + 1) for
// distance d and the angle a in radians, so that samples lie about a pixel
// apart. Fills rows first..end-1.
void SpinBlurRows(const RgbPlanes& source, const RgbTarget& target, int first, int end,
                  BlurCentre centre, double angleDegrees);

// Zoom: each pixel becomes the mean of n bilinear samples on the straight
// line from it toward `centre`, covering `amountPercent` of the way there;
// n = min(kMaxPathSamples, ceil(d amount / 100) + 1).
void ZoomBlurRows(const RgbPlanes& source, const RgbTarget& target, int first, int end,
                  BlurCentre centre, double amountPercent);

}  // namespace wib
