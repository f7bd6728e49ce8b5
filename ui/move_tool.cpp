// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/move_tool.h"

#include <cmath>

#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

MoveTool::MoveTool(const CanvasToolContext& context)
    : context_(context), preview_(context.workspace, context.canvas) {}

TransformSpec MoveTool::shiftTo(const ToolInput& input) const {
    const double zoom = context_.workspace.view.scale();
    TransformSpec spec;
    spec.dx = std::round(input.x / zoom - startX_);
    spec.dy = std::round(input.y / zoom - startY_);
    return spec;
}

void MoveTool::press(const ToolInput& input) {
    if (input.button != 1 || preview_.box().empty()) {
        return;
    }
    const double zoom = context_.workspace.view.scale();
    startX_ = input.x / zoom;
    startY_ = input.y / zoom;
    dragging_ = true;
}

void MoveTool::drag(const ToolInput& input) {
    if (dragging_) {
        preview_.show(shiftTo(input));
    }
}

void MoveTool::release(const ToolInput& input) {
    if (!dragging_) {
        return;
    }
    dragging_ = false;
    preview_.clear();
    const TransformSpec spec = shiftTo(input);
    if (spec.dx != 0 || spec.dy != 0) {
        context_.commands.run(
            context_.workspace, "move.selection",
            {{"dx", static_cast<long long>(spec.dx)}, {"dy", static_cast<long long>(spec.dy)}});
    }
}

void MoveTool::leave() {
    dragging_ = false;
    preview_.clear();
}

}  // namespace wib
