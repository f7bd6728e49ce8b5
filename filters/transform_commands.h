// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The geometry of the picture and the selection: transform and move the
// selected pixels, crop to a rectangle, flip and turn the whole picture.
void RegisterTransformCommands(CommandRegistry& registry);

}  // namespace wib
