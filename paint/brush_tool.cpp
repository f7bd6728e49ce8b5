// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/brush_tool.h"

#include "paint/paint_session.h"

namespace wib {

void BrushTool::press(const ToolInput& input) {
    if (button_ != 0 || (input.button != 1 && input.button != 2)) {
        return;
    }
    button_ = input.button;
    session_.penPress(button_, input.x, input.y, input.pressure, input.tablet);
}

void BrushTool::drag(const ToolInput& input) {
    if (button_ != 0) {
        session_.penDrag(button_, input.x, input.y, input.pressure, input.tablet);
    }
}

void BrushTool::release(const ToolInput& input) {
    if (button_ != 0) {
        session_.penRelease(input.x, input.y);
    }
    button_ = 0;
}

}  // namespace wib
