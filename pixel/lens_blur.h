// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// Mean over the disc of offsets (i, j) with i^2 + j^2 <= radius^2, rounded to
// nearest (halves up), the border replicated: the out-of-focus blur of a
// round lens aperture.
void LensBlur(const PlaneBand& band, int radius);

}  // namespace wib
