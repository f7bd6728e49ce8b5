// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/plane.h"

namespace wib {

// The three colour planes of one picture in the document's shape: an
// animation frame on its way to or from a file.
struct ColourPlanes {
    Plane r;
    Plane g;
    Plane b;
};

}  // namespace wib
