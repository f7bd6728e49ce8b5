// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "core/layer_composite.h"

namespace wib {

class Workspace;

// The visible layers of animation frame `frame` as the canvas would show
// them there: the current frame's from the main planes, any other's from the
// layers' cells, which are whole for every frame but the current one. Layers
// without a cell in that frame are left out.
std::vector<CompositeSource> FrameSources(const Workspace& workspace, int frame);

}  // namespace wib
