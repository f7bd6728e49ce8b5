// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/packed_colour.h"

namespace wib {

class CommandRegistry;
class Workspace;

// Told when an edit needs a selection and nothing is selected.
inline constexpr const char* kNothingSelected = "Select part of the image first.";

// Clears the selected pixels of the current layer, weighted by the matte (a
// partly selected pixel goes part of the way): the bottom layer takes the
// secondary colour, any other layer loses its coverage there.
void ClearSelectedPixels(Workspace& workspace);

// Crops the document, every frame included, to the selection's bounding box.
// With nothing selected it says so and changes nothing; returns false then.
bool CropToSelection(Workspace& workspace);

// Image > Crop to selection.
void RegisterCropCommands(CommandRegistry& registry);

}  // namespace wib
