// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "pixel/matte_view.h"

namespace wib {

// The polygon through `corners` (image pixels, closed back to the first),
// filled by the even-odd rule. Hard: a pixel is 255 when its centre lies
// inside. Anti-aliased: each pixel gets its covered fraction of 255, exact
// along the row and sampled on 16 sub-rows. Fewer than three corners select
// nothing.
void PolygonMatte(const MatteView& matte, const std::vector<std::array<double, 2>>& corners,
                  bool antialias);

}  // namespace wib
