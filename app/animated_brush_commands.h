// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;
class PaintSession;

// Brush > Make animated brush from frames (the selected part of every
// animation frame, one brush frame each) and Brush > Stop animated brush.
void RegisterAnimatedBrushCommands(CommandRegistry& registry, PaintSession& paint,
                                   FrameStore& frames);

}  // namespace wib
