// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class Workspace;

// Saves the current image (main and alpha planes, the state bytes, and the
// depth planes while depth painting is on) into the next slot of the ring.
void SaveUndo(Workspace& workspace);

// Copies the current slot back into the image, first keeping the current image
// for redo when nothing has been restored since the last save.
void RestoreUndo(Workspace& workspace);

// The Edit menu's Undo and Redo: each walks the ring one step and returns false,
// changing nothing, when there is no step to take.
bool CanUndo(const Workspace& workspace);
bool CanRedo(const Workspace& workspace);
bool EditUndo(Workspace& workspace);
bool EditRedo(Workspace& workspace);

// Allocates the ring for the current document size from the "mem_MaxUndo"
// preference; the step that builds the document planes calls it first.
void AllocateUndo(Workspace& workspace);

// Starts depth painting: makes the height plane (all -20000.0) and the wet
// planes at the document size.
void EnableDepthLayer(Workspace& workspace);

}  // namespace wib
