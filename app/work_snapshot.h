// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/recovery_snapshot.h"

namespace wib {

class FrameStore;
class ImageFiles;
class Workspace;

// Where the work lives: the document, the frames and the way its file was
// last saved.
struct WorkSources {
    Workspace& workspace;
    FrameStore& frames;
    ImageFiles& files;
};

// A copy of all the work, plane by plane (image, alpha, swap, brush image and
// every frame) with the file name, save type, frame rate and names. Only
// copies: quick enough for the interface thread.
RecoverySnapshot CaptureWork(const WorkSources& sources);

// Puts the work of a snapshot back. The document keeps its old file name and
// stays modified: nothing is saved until the user saves it. False, with the
// document as it was, for a snapshot without a whole image.
bool RestoreWork(const WorkSources& sources, const RecoverySnapshot& snapshot);

}  // namespace wib
