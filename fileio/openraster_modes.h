// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

#include "pixel/layer_blend.h"

namespace wib {

// The composite-op an OpenRaster layer of `mode` is written with: the svg:
// names, svg:plus for add, and our own "wibbleton:subtract" for subtract,
// which has no svg: name (other readers take an op they do not know as
// svg:src-over, the nearest they can do).
const char* OpenRasterCompositeOp(BlendMode mode);

// The mode of a composite-op; nothing for one we do not know.
std::optional<BlendMode> BlendModeFromCompositeOp(std::string_view op);

}  // namespace wib
