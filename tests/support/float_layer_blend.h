// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/layer_blend.h"

namespace wib::testing {

// The layer compositing equations evaluated in double precision, pixel by
// pixel, with one switch on the mode per pixel and each result rounded to the
// nearest byte. The tests check the integer kernels against it and the
// benchmarks time it as the obvious way to composite.
void FloatCompositeLayerRow(BlendMode mode, std::uint8_t opacity, LayerRow layer,
                            CompositeRow target, int count);

}  // namespace wib::testing
