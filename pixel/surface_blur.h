// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// The weight a neighbour differing from the centre value by `difference`
// (0..255) gets in the surface blur: full (threshold) up to the threshold,
// then falling in a straight line to none at twice the threshold.
inline int SurfaceWeight(int difference, int threshold) {
    return std::clamp(2 * threshold - difference, 0, threshold);
}

// Edge-preserving blur: the weighted mean over the (2 radius + 1)^2 window
// (border replicated), each neighbour weighted by SurfaceWeight of its
// difference from the centre value, rounded to nearest (halves up). Edges
// steeper than twice the threshold are left sharp.
void SurfaceBlur(const PlaneBand& band, int radius, int threshold);

}  // namespace wib
