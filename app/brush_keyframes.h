// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/observer_list.h"

namespace wib {

class BrushKeyframer;
class CommandRegistry;
class FrameStore;
class PaintSession;

// With keyframing on, the keyed parameters of the brush take their values at
// `frame`: size, opacity and angle into the options, the colour as primary.
void ApplyBrushKeys(PaintSession& paint, const BrushKeyframer& keys, int frame);

// Puts the keyed values in place as each stroke starts, on the frame shown.
class BrushKeyHook {
  public:
    BrushKeyHook(PaintSession& paint, FrameStore& frames);

  private:
    Subscription strokeStarting_;
};

// brush.keyframing, brush.add_key, brush.delete_key and brush.key_curve.
void RegisterBrushKeyCommands(CommandRegistry& registry, PaintSession& paint, FrameStore& frames);

}  // namespace wib
