// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/canvas_tool_context.h"

namespace wib {

class ToolBox;

// Puts the move, transform, crop and text tools into the tool box under
// ToolId::Move, Transform, Crop and Text; the tool.* commands choose them.
void InstallTransformTools(ToolBox& tools, const CanvasToolContext& context);

}  // namespace wib
