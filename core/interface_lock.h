// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class Workspace;

// What keeps the user's input away while a plug-in or a long operation works.
struct InterfaceLock {
    int count = 0;  // InterfaceLockCount: raised and lowered by plug-ins, no floor
    bool canvasEnabled = true;
    bool mainFrameEnabled = true;
};

// The canvas window alone, and the whole main frame: the state changes and the
// windows follow.
void SetCanvasEnabled(Workspace& workspace, bool enabled);
void SetMainFrameEnabled(Workspace& workspace, bool enabled);

// The pointer shape the busy pointer of long operations uses.
inline constexpr int kBusyPointerShape = 11;

}  // namespace wib
