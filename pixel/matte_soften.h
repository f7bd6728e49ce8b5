// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/matte_view.h"

namespace wib {

// Softens a matte's edges by one pixel: each target value is the mean of the
// source's 3 x 3 window around it, rounded to nearest, the window cut to the
// matte so that its own border is not faded. Inside and outside a hard-edged
// region the values stay 255 and 0; only pixels next to the edge change.
// Source and target must not overlap.
void SoftenMatteEdge(const MatteSource& source, const MatteView& target);

}  // namespace wib
