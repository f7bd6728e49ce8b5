#pragma once

namespace wib {

class Workspace;

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
bool Wib_NewBuffer(Workspace& workspace, int width, int height);

}  // namespace wib
