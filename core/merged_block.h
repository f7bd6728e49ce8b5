// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/pixel_block.h"

namespace wib {

class Workspace;

// The selected part of the picture as it is shown: the composite of the
// visible layers within the selection's bounding box, its alpha the
// composite's coverage weighted by the matte. Empty when nothing is selected.
PixelBlock CopyMergedBlock(const Workspace& workspace);

}  // namespace wib
