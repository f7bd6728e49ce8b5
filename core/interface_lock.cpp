// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/interface_lock.h"

#include "core/workspace.h"

namespace wib {

void SetCanvasEnabled(Workspace& workspace, bool enabled) {
    workspace.lock.canvasEnabled = enabled;
    workspace.host.view.setCanvasEnabled(enabled);
}

void SetMainFrameEnabled(Workspace& workspace, bool enabled) {
    workspace.lock.mainFrameEnabled = enabled;
    workspace.host.view.setMainFrameEnabled(enabled);
}

}  // namespace wib
