// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/matte_view.h"

namespace wib {

// Feathers the matte: a Gaussian of sigma radius / 2 from `source` into the
// separate `target` of the same stride, rows first..end-1 (so that bands can
// run side by side). A radius below 0.6 copies the matte as it is. A matte is
// mostly flat, so the work goes tile by tile and a tile with no edge within
// the Gaussian's reach is filled with its one value.
void FeatherMatte(const MatteSource& source, const MatteView& target, double radius, int first,
                  int end);

}  // namespace wib
