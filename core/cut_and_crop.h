// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/packed_colour.h"

namespace wib {

class CommandRegistry;
class Workspace;

// Told when an edit needs a selection and nothing is selected.
inline constexpr const char* kNothingSelected = "Select part of the image first.";

// What cut leaves where the selection was. There is one layer today, the
// bottom one, and it keeps the secondary colour; the layers above it will
// become transparent instead, and that choice belongs here.
PackedColour CutLeavesColour(const Workspace& workspace);

// Mixes the colour into the main planes weighted by the matte: a fully
// selected pixel takes it, a partly selected one moves part of the way.
void ClearSelectedPixels(Workspace& workspace, PackedColour colour);

// Crops the document, every frame included, to the selection's bounding box.
// With nothing selected it says so and changes nothing; returns false then.
bool CropToSelection(Workspace& workspace);

// Image > Crop to selection.
void RegisterCropCommands(CommandRegistry& registry);

}  // namespace wib
