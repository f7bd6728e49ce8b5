// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/canvas_tool_context.h"

namespace wib {

class ToolBox;
class ToolOptionsPanel;

// Puts the move, transform, crop and text tools into the session's tool box
// under ToolId::Move, Transform, Crop and Text, and the transform's flip
// buttons on its page of the Tool options panel.
void InstallTransformTools(const CanvasToolContext& context, ToolOptionsPanel& options);

// Takes them out again before the canvas they draw on goes away.
void RemoveTransformTools(ToolBox& tools);

}  // namespace wib
