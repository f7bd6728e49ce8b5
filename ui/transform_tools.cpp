// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/transform_tools.h"

#include <memory>

#include "paint/tool_box.h"
#include "ui/crop_tool.h"
#include "ui/move_tool.h"
#include "ui/text_tool.h"
#include "ui/transform_tool.h"

namespace wib {

void InstallTransformTools(ToolBox& tools, const CanvasToolContext& context) {
    tools.install(ToolId::Move, std::make_unique<MoveTool>(context));
    tools.install(ToolId::Transform, std::make_unique<TransformTool>(context));
    tools.install(ToolId::Crop, std::make_unique<CropTool>(context));
    tools.install(ToolId::Text, std::make_unique<TextTool>(context));
}

}  // namespace wib
