// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// Median of the (2 radius + 1)^2 window: comparator networks for radii 1
// and 2, otherwise column histograms summed into a window histogram that
// slides along the row, at a cost that does not grow with the radius.
void MedianFilter(const PlaneBand& band, int radius);

// Smallest and largest value of the (2 radius + 1)^2 window, as a column pass
// and a row pass.
void MinimumFilter(const PlaneBand& band, int radius);
void MaximumFilter(const PlaneBand& band, int radius);

// The 3 x 3 median where it differs from the pixel by more than `threshold`,
// the pixel itself otherwise: lone specks go, edges and texture stay.
void Despeckle(const PlaneBand& band, int threshold);

}  // namespace wib
