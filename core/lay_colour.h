// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/packed_colour.h"
#include "core/plane.h"

namespace wib {

class Workspace;

// Lays `colour` on the current layer through `matte`, a block whose top-left
// pixel goes to image pixel (left, top), weighted by the selection in force:
// shapes rendered into a matte elsewhere (text) go in this way. Parts of the
// block outside the image are dropped. An upper layer gains coverage where the
// colour goes. Returns whether any pixel was touched. Run it inside the edit
// bracket.
bool LayColourThroughMatte(Workspace& workspace, const Plane& matte, int left, int top,
                           PackedColour colour);

}  // namespace wib
