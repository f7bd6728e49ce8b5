// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/tool_box.h"

#include "core/workspace.h"
#include "paint/brush_tool.h"
#include "paint/clone_source_tool.h"
#include "paint/colour_picker_tool.h"
#include "paint/eraser_tool.h"
#include "paint/fill_tools.h"
#include "paint/paint_session.h"
#include "paint/selection_tools.h"
#include "paint/view_tools.h"

namespace wib {

ToolBox::ToolBox(PaintSession& session) : session_(session) {
    using Kind = ToolOverlay::Kind;
    auto put = [this](ToolId id, std::unique_ptr<Tool> tool) {
        tools_[static_cast<std::size_t>(id)] = std::move(tool);
    };
    put(ToolId::Brush, std::make_unique<BrushTool>(session));
    put(ToolId::ColourPicker, std::make_unique<ColourPickerTool>(session));
    put(ToolId::CloneSource, std::make_unique<CloneSourceTool>(session));
    put(ToolId::Eraser, std::make_unique<EraserTool>(session));
    put(ToolId::Fill, std::make_unique<FillTool>(session));
    put(ToolId::Gradient, std::make_unique<GradientTool>(session));
    put(ToolId::SelectRectangle, std::make_unique<SelectBoxTool>(session, false));
    put(ToolId::SelectEllipse, std::make_unique<SelectBoxTool>(session, true));
    put(ToolId::SelectLasso, std::make_unique<SelectPolygonTool>(session, true));
    put(ToolId::SelectPolygon, std::make_unique<SelectPolygonTool>(session, false));
    put(ToolId::MagicWand, std::make_unique<MagicWandTool>(session));
    put(ToolId::Line, std::make_unique<ShapeTool>(session, Kind::Line, "draw.line"));
    put(ToolId::Rectangle, std::make_unique<ShapeTool>(session, Kind::Rectangle, "draw.rectangle"));
    put(ToolId::Ellipse, std::make_unique<ShapeTool>(session, Kind::Ellipse, "draw.ellipse"));
    put(ToolId::Zoom, std::make_unique<ZoomTool>(session));
    put(ToolId::Hand, std::make_unique<HandTool>());
    put(ToolId::SelectByColour, std::make_unique<MagicWandTool>(session, true));
}

ToolBox::~ToolBox() = default;

void ToolBox::install(ToolId id, std::unique_ptr<Tool> tool) {
    tools_[static_cast<std::size_t>(id)] = std::move(tool);
}

Tool& ToolBox::tool(ToolId id) {
    const auto index = static_cast<std::size_t>(id);
    return index < tools_.size() && tools_[index] != nullptr ? *tools_[index] : *tools_[0];
}

Tool& ToolBox::active() {
    return tool(session_.state().activeTool);
}

void ToolBox::choose(ToolId id) {
    if (id != session_.state().activeTool) {
        active().finish();
    }
    session_.state().activeTool = id;
    session_.workspace().events.paintOptionsChanged.notify();
}

Tool& ToolBox::forPress(const ToolModifiers& modifiers) {
    Tool& current = active();
    if (current.cursor() != ToolCursor::BrushOutline) {
        return current;
    }
    if (modifiers.ctrl) {
        return tool(ToolId::CloneSource);
    }
    if (modifiers.alt) {
        return tool(ToolId::ColourPicker);
    }
    return current;
}

bool ToolBox::runCommand(const std::string& id,
                         const std::map<std::string, ParamValue>& values) const {
    return run_ && run_(id, values);
}

}  // namespace wib
