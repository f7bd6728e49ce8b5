// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// Correlation with a `size` x `size` kernel (3 or 5), given row by row with
// its first value over (x - r, y - r): out = clamp(sum / divisor + offset),
// the division truncating toward zero. Kernel values up to 65536 in size keep
// the sum inside 32 bits.
void Convolve(const PlaneBand& band, const int* kernel, int size, int divisor, int offset);

}  // namespace wib
