// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixel/matte_view.h"

namespace wib {

// Grows the matte by a disc of `radius` pixels: each target value is the
// largest source value within the disc (dx² + dy² <= radius²). Pixels outside
// the image take no part. `target` has the source's shape and is a separate
// buffer. Each disc row is a running maximum of fixed width, so the cost per
// pixel grows with the radius but not with its square.
void GrowMatte(const MatteSource& source, std::uint8_t* target, std::size_t targetStride,
               int radius);

// Shrinks the matte by a disc: the smallest value within it. The image's own
// edge does not eat into the matte.
void ShrinkMatte(const MatteSource& source, std::uint8_t* target, std::size_t targetStride,
                 int radius);

}  // namespace wib
