// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/move_tool.h"

#include <cmath>

#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

MoveTool::MoveTool(const CanvasToolContext& context)
    : context_(context), preview_(context.session.workspace(), context.canvas) {}

TransformSpec MoveTool::shiftTo(const ToolInput& input) const {
    const auto [x, y] = ImagePoint(context_.session.workspace(), input);
    TransformSpec spec;
    spec.dx = std::round(x - startX_);
    spec.dy = std::round(y - startY_);
    return spec;
}

void MoveTool::press(const ToolInput& input) {
    if (input.button != 1 || preview_.box().empty()) {
        return;
    }
    const auto [x, y] = ImagePoint(context_.session.workspace(), input);
    startX_ = x;
    startY_ = y;
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
        context_.session.tools().runCommand(
            "move.selection",
            {{"dx", static_cast<long long>(spec.dx)}, {"dy", static_cast<long long>(spec.dy)}});
    }
}

}  // namespace wib
