// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/layer_stack.h"

namespace wib {

class Workspace;

inline constexpr const char* kLastLayerMessage = "A picture needs at least one layer.";
inline constexpr const char* kNoLayerBelowMessage = "There is no layer below to merge with.";
inline constexpr const char* kLayerLockedMessage = "The current layer is locked.";

// The properties a change names; the rest stay as they are.
struct LayerChange {
    std::optional<std::string> name;
    std::optional<int> opacity;
    std::optional<BlendMode> mode;
    std::optional<bool> visible;
    std::optional<bool> lockPixels;
    std::optional<bool> lockAlpha;
};

// One opaque "Background" layer holding the document's planes, for a new or
// opened flat picture, with `frames` cells (at least one).
void ResetLayers(Workspace& workspace, int frames = 1);

int LayerCount(const Workspace& workspace);
int CurrentLayer(const Workspace& workspace);
const LayerProperties& LayerAt(const Workspace& workspace, int index);
bool ValidLayer(const Workspace& workspace, int index);

// Whether the picture is one opaque, visible, fully covering layer, shown and
// saved as its main planes are.
bool IsFlatPicture(const Workspace& workspace);

// The pixels of layer `index` in the current frame: for the current layer the
// main planes and coverage (coverage null while opaque), a cell otherwise.
struct LayerPlanesView {
    const Plane* r;
    const Plane* g;
    const Plane* b;
    const Plane* a;  // null: opaque everywhere
};
LayerPlanesView LayerPlanesOf(const Workspace& workspace, int index);

// The current layer's pixels as a cell of their own (a copy).
LayerCell CopyCurrentLayer(const Workspace& workspace);

// Each of these is one change of the picture: run it inside the edit bracket
// (the layer commands do). They return false, with a message where the user
// should hear why, when they change nothing.
bool AddLayer(Workspace& workspace);
bool DuplicateLayer(Workspace& workspace);
bool DeleteLayer(Workspace& workspace, int index);
// Moves layer `index` by `step` places (MoveLayer) or to place `to`
// (MoveLayerTo), the layers between shifting over.
bool MoveLayer(Workspace& workspace, int index, int step);
bool MoveLayerTo(Workspace& workspace, int index, int to);
bool MergeDown(Workspace& workspace);
bool MergeVisible(Workspace& workspace);
bool Flatten(Workspace& workspace);
bool ClearLayer(Workspace& workspace);
bool LayerFromSelection(Workspace& workspace);
bool ChangeLayer(Workspace& workspace, int index, const LayerChange& change);
// Replaces one plane of a layer (0 red, 1 green, 2 blue, 3 coverage) in the
// current frame; false when the plane's shape is not the document's.
bool SetLayerPlane(Workspace& workspace, int index, int channel, const Plane& plane);

// Makes layer `index` current; not an undo step. False outside the list.
bool SelectLayer(Workspace& workspace, int index);

// The current layer's pixels back into its cell, and the cell of
// (CurrentLayer, frame) into the main planes: the frame store calls these
// around a frame change.
void StoreCurrentLayerCell(Workspace& workspace);
void LoadCurrentLayerCell(Workspace& workspace);

// Layers and animation frames. With one layer the frame store alone holds
// the frames; with more, every layer keeps a cell per frame and the frame
// store holds the current layer's colour too. The frame store tells the
// layers of each change with these.
//
// Before the current frame is left: its cell takes the document's pixels.
void LayersLeavingFrame(Workspace& workspace);
// After frame `index` was loaded into the main planes: its coverage follows.
void LayersEnteredFrame(Workspace& workspace, int index);
// Frame `index` was doubled (the copy is index + 1) or removed.
void LayersFrameInserted(Workspace& workspace, int index);
void LayersFrameDeleted(Workspace& workspace, int index);
// The frames were rearranged: new frame i takes old frame sources[i]'s cells,
// or, where sources[i] is negative, given[i] (a cell per layer, bottom first;
// a layer without one takes its first frame's cell).
void LayersFramesMapped(Workspace& workspace, const std::vector<int>& sources,
                        const std::vector<std::vector<LayerCell>>& given);
// The cells of a new empty frame, bottom first: the bottom layer black, the
// others clear (none while the frame store alone holds the frames).
std::vector<LayerCell> BlankFrameCells(const Workspace& workspace);
// Every layer's cell of frame `frame`, bottom first (shared, not copied).
std::vector<LayerCell> LayerCellsOfFrame(Workspace& workspace, int frame);
// An animation of `frames` frames was made: each layer's other frames copy its
// current cell or start empty (the bottom layer black, the others clear).
void LayersFramesMade(Workspace& workspace, int frames, bool copyImage);
// The animation was freed: each layer keeps the current frame's cell.
void LayersFramesFreed(Workspace& workspace);
// The current layer's colour in frame `index` (every frame for -1) was
// rewritten in the frame store.
void LayersFrameRewritten(Workspace& workspace, int index);
// Before a change of the layer list in an animation: the current layer's
// cells are made whole from the frame store.
void PrepareLayerCells(Workspace& workspace);

// The current layer's frames other than the current one into the frame
// store, after the stack was replaced.
void LoadLayerFramesIntoStore(Workspace& workspace);

// The undo ring's companions: the layer state saved with a slot, put back
// with it, and whether the slot's state is the one showing.
void SaveLayerState(Workspace& workspace, int slot);
void RestoreLayerState(Workspace& workspace, int slot);
bool LayerStateMatches(const Workspace& workspace, int slot);

}  // namespace wib
