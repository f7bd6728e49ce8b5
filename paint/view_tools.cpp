// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/view_tools.h"

#include "paint/paint_session.h"

namespace wib {

void ZoomTool::press(const ToolInput& input) {
    const bool out = input.button == 2 || (input.button == 1 && input.modifiers.alt);
    if (input.button == 1 || out) {
        session_.tools().runCommand(out ? "view.zoom_out" : "view.zoom_in", {});
    }
}

}  // namespace wib
