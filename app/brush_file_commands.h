// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class PaintSession;

// Brush > Load brush...: a Targa or bitmap file becomes the image brush.
void RegisterBrushFileCommands(CommandRegistry& registry, PaintSession& paint);

}  // namespace wib
