// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/drag_tool.h"

#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

void DragTool::press(const ToolInput& input) {
    if (held_ || input.button != 1) {
        return;
    }
    held_ = true;
    modifiers_ = input.modifiers;
    from_ = ImagePoint(session_.workspace(), input);
    to_ = from_;
}

void DragTool::drag(const ToolInput& input) {
    if (held_) {
        to_ = ImagePoint(session_.workspace(), input);
    }
}

void DragTool::release(const ToolInput& input) {
    if (!held_) {
        return;
    }
    to_ = ImagePoint(session_.workspace(), input);
    held_ = false;
    apply(from_, to_, modifiers_);
}

ToolOverlay DragTool::overlay() const {
    if (!held_) {
        return {};
    }
    return {shape_,
            {{static_cast<float>(from_[0]), static_cast<float>(from_[1])},
             {static_cast<float>(to_[0]), static_cast<float>(to_[1])}},
            shape_ != ToolOverlay::Kind::Line};
}

}  // namespace wib
