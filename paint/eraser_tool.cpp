// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/eraser_tool.h"

#include "paint/paint_session.h"

namespace wib {

void EraserTool::press(const ToolInput& input) {
    if (holdsPointer()) {
        return;
    }
    session().state().erasing = true;
    BrushTool::press(input);
    if (!holdsPointer()) {
        session().state().erasing = false;
    }
}

void EraserTool::release(const ToolInput& input) {
    BrushTool::release(input);
    session().state().erasing = false;
}

}  // namespace wib
