// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/layered_picture.h"

namespace wib {

class Workspace;

// The whole picture as the layered files keep it: every layer of every frame,
// each with a coverage plane (255 where a layer is opaque).
LayeredPicture PictureOfDocument(Workspace& workspace);

// Replaces the document by `picture` (checked by its reader: every frame has
// every layer, every plane the picture's size): the planes, the layer stack
// and, for more than one frame, the animation. False, with the user told,
// when memory runs out; the document may then be a blank one of that size.
bool InstallPicture(Workspace& workspace, LayeredPicture&& picture);

}  // namespace wib
