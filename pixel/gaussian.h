// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// Gaussian blur of standard deviation `sigma` (0.3 and up). Small sigmas use
// a separable kernel to 3 sigma; larger ones four passes of an extended box
// matched to the variance, so the cost does not grow with sigma. Either stays
// within a few levels of the exact Gaussian.
void GaussianBlur(const PlaneBand& band, double sigma);

}  // namespace wib
