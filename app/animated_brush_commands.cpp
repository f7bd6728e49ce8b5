// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/animated_brush_commands.h"

#include "anim/frame_store.h"
#include "core/commands.h"
#include "paint/paint_session.h"

namespace wib {

void RegisterAnimatedBrushCommands(CommandRegistry& registry, PaintSession& paint,
                                   FrameStore& frames) {
    registry.add({"brush.animated_from_frames",
                  "Make a&nimated brush from frames",
                  "Brush",
                  "",
                  {},
                  [&paint, &frames](Workspace&, const ParamValues&) {
                      // The shown frame's stored copy may be behind the image.
                      frames.StoreCurrentFrame();
                      return paint.makeAnimatedBrush(frames.FrameCount(), [&frames](int index) {
                          return FrameColours{frames.framePlane(FrameColour::Red, index),
                                              frames.framePlane(FrameColour::Green, index),
                                              frames.framePlane(FrameColour::Blue, index)};
                      });
                  }});
    registry.add({"brush.animated_off",
                  "S&top animated brush",
                  "Brush",
                  "",
                  {},
                  [&paint](Workspace&, const ParamValues&) {
                      paint.stopAnimatedBrush();
                      return true;
                  }});
}

}  // namespace wib
