// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The View menu's rotation and mirror: view.rotate (to an angle),
// view.rotate_left and view.rotate_right (a step either way), view.mirror
// (on or off; without a value it flips) and view.reset_rotation. They change
// how the canvas shows the image only: no undo step, nothing saved.
void RegisterViewCommands(CommandRegistry& registry);

}  // namespace wib
