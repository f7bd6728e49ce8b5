// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/tool_box.h"

#include "core/workspace.h"
#include "paint/brush_tool.h"
#include "paint/clone_source_tool.h"
#include "paint/colour_picker_tool.h"
#include "paint/paint_session.h"

namespace wib {

ToolBox::ToolBox(PaintSession& session)
    : session_(session),
      brush_(std::make_unique<BrushTool>(session)),
      picker_(std::make_unique<ColourPickerTool>(session)),
      cloneSource_(std::make_unique<CloneSourceTool>(session)) {}

ToolBox::~ToolBox() = default;

void ToolBox::install(ToolId id, std::unique_ptr<Tool> tool) {
    installed_[id] = std::move(tool);
}

Tool& ToolBox::tool(ToolId id) {
    if (const auto found = installed_.find(id); found != installed_.end()) {
        return *found->second;
    }
    switch (id) {
        case ToolId::ColourPicker:
            return *picker_;
        case ToolId::CloneSource:
            return *cloneSource_;
        default:
            break;
    }
    return *brush_;
}

Tool& ToolBox::active() {
    return tool(session_.state().activeTool);
}

void ToolBox::choose(ToolId id) {
    if (id != session_.state().activeTool) {
        active().leave();
    }
    session_.state().activeTool = id;
    session_.workspace().events.paintOptionsChanged.notify();
}

Tool& ToolBox::forPress(const ToolModifiers& modifiers) {
    if (modifiers.ctrl) {
        return *cloneSource_;
    }
    if (modifiers.alt) {
        return *picker_;
    }
    return active();
}

}  // namespace wib
