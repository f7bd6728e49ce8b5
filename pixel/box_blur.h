// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// Mean of the (2 radius + 1)^2 window, rounded to nearest (halves up). Running
// sums down the columns and, past a small radius, along the rows, so the cost
// does not grow with the radius.
void BoxBlur(const PlaneBand& band, int radius);

}  // namespace wib
