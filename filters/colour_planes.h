// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "core/plane.h"

namespace wib {

// The three colour planes a filter reads or writes, all of one shape. The
// image is width x height; the spare column and row beyond it are not image
// pixels and filters leave them as they are.
struct ColourPlanes {
    std::array<Plane*, 3> planes;
    int width = 0;
    int height = 0;

    Plane& operator[](int c) const { return *planes[static_cast<std::size_t>(c)]; }
};

}  // namespace wib
