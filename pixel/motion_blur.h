// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// Mean of distance + 1 samples on a line through the pixel at `angleDegrees`
// (0 along x, 90 down), spaced one pixel apart and centred on it, each taken
// at the nearest pixel; rounded to nearest.
void MotionBlur(const PlaneBand& band, double angleDegrees, int distance);

}  // namespace wib
