// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/transform_tools.h"

#include <memory>

#include "paint/paint_session.h"
#include "ui/crop_tool.h"
#include "ui/move_tool.h"
#include "ui/text_tool.h"
#include "ui/tool_options_panel.h"
#include "ui/transform_tool.h"

namespace wib {

void InstallTransformTools(const CanvasToolContext& context, ToolOptionsPanel& options) {
    ToolBox& tools = context.session.tools();
    auto transform = std::make_unique<TransformTool>(context);
    TransformTool* shown = transform.get();
    options.addButton("TransformOptions", QObject::tr("Flip horizontally"),
                      [shown] { shown->flipHorizontally(); });
    options.addButton("TransformOptions", QObject::tr("Flip vertically"),
                      [shown] { shown->flipVertically(); });
    tools.install(ToolId::Move, std::make_unique<MoveTool>(context));
    tools.install(ToolId::Transform, std::move(transform));
    tools.install(ToolId::Crop, std::make_unique<CropTool>(context));
    tools.install(ToolId::Text, std::make_unique<TextTool>(context));
}

void RemoveTransformTools(ToolBox& tools) {
    for (const ToolId id : {ToolId::Move, ToolId::Transform, ToolId::Crop, ToolId::Text}) {
        tools.install(id, nullptr);
    }
}

}  // namespace wib
