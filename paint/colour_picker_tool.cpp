// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/colour_picker_tool.h"

#include "core/workspace.h"
#include "paint/paint_session.h"

namespace wib {

void ColourPickerTool::press(const ToolInput& input) {
    const float zoom = session_.workspace().view.scale();
    session_.pickColour(static_cast<int>(input.x / zoom), static_cast<int>(input.y / zoom));
}

}  // namespace wib
