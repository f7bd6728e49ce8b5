// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "core/plane.h"

namespace wib {

class Workspace;

inline constexpr const char* kImageMemoryMessage = "Not enough memory for an image of this size.";

// The seven planes of a document (main, alpha, swap), made at a new size
// before anything changes: main and swap white, alpha 255.
struct FreshPlanes {
    int width = 0;
    int height = 0;
    std::array<Plane, 7> planes;  // R, G, B, A, swap R, swap G, swap B
};

// Throws std::bad_alloc when the planes cannot be had.
FreshPlanes MakeFreshPlanes(int width, int height);
// Puts the planes in and allocates the undo ring for their size (dropping its
// steps); the canvas is told the document was resized.
void InstallFreshPlanes(Workspace& workspace, FreshPlanes&& fresh);

// Rebuilds the document planes at width x height: allocates the undo ring for
// that size first (dropping its steps), then makes the main planes white, the
// alpha plane 255 and the swap planes white. The size must already be valid;
// the caller checks it with DocumentSizeProblem. Throws std::bad_alloc when the
// planes cannot be had, leaving the old planes in place.
void BuildDocumentPlanes(Workspace& workspace, int width, int height);

// A new image: checks the size (a bad one gets its message and changes
// nothing), stores it, resets the zoom to 100 and both view anchors to -1.0,
// rebuilds the planes, saves an undo step and refreshes. Returns false when
// nothing changed.
bool NewDocument(Workspace& workspace, int width, int height);

}  // namespace wib
