// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/clone_source_tool.h"

#include "paint/paint_session.h"

namespace wib {

void CloneSourceTool::press(const ToolInput& input) {
    session_.setCloneSource(input.x, input.y);
}

}  // namespace wib
