// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/plane.h"
#include "paint/animated_brush.h"
#include "paint/brush_options.h"
#include "paint/brush_shape.h"
#include "paint/paint_modes.h"
#include "paint/paint_surface.h"
#include "paint/pen_reading.h"
#include "paint/tool.h"
#include "paint/tool_options.h"

namespace wib {

// What the stroke engine keeps from one call to the next.
struct StrokeState {
    float previousX = 0, previousY = 0;
    float currentX = 0, currentY = 0;
    std::int16_t spacingCounter = 0;
    float strokeOpacity = 255;
    std::array<int, 3> dabColour{0, 0, 0};
    float lastAngle = 0, lastScale = 1;
    DirtyRect dirty;
    std::array<float, 10> symmetryPreviousX{};
    std::array<float, 10> symmetryPreviousY{};
    // The last dab, rounded to whole pixels: smear reads from it and walks away from it.
    std::int16_t previousDabX = 0, previousDabY = 0;
    // The built-in brush as transformed for the current angle and scale.
    std::optional<Plane> builtMask;
    double builtAngle = 0, builtScale = 1;
    int builtSource = -1;  // the tip generation the mask was built from
    // The smooth brush type's pen, trailing the pointer (image pixels).
    float smoothX = 0, smoothY = 0;
};

// Everything painting needs beside the Workspace's own state (document, brush
// image, colours, erase mode): the options model, the built-in brush,
// offsets, paper and the pen.
struct PaintState {
    BrushOptionsModel options;
    BrushType brushType = BrushType::Dab;
    StrokeState stroke;

    // The tip of the current built-in brush, rebuilt when its options change.
    BrushTip tip;
    int tipGeneration = 0;
    EdgeProfile chalkProfile;  // the chalk's edge, loaded with the program's data
    // Frames painting steps through, one per dab, while it is on.
    AnimatedBrush animatedBrush;
    // Built-in brushes a plug-in replaced with an image brush's shape.
    std::array<std::optional<BrushTip>, kBuiltinBrushCount> replacedTips;
    // Clone paints from the image at this offset from the brush; pattern
    // offset shifts where the image brush tiles from.
    int cloneOffsetX = 0, cloneOffsetY = 0;
    std::int16_t patternOffsetX = 0, patternOffsetY = 0;
    // The point a clone copies from (image pixels), set by Ctrl + click; the
    // next stroke measures the clone offset from it.
    std::optional<std::array<int, 2>> cloneSource;
    bool cloneSourcePending = false;

    Plane paper;  // grain, 128 = flat; empty while none is loaded
    int paperRowOffset = 0;

    // The tool the canvas's pointer drives (modifier keys may pick another
    // for one press).
    ToolId activeTool = ToolId::Brush;
    ToolOptions toolOptions;
    // True during an eraser stroke: the secondary colour on the bottom layer,
    // coverage taken away on the others.
    bool erasing = false;

    double pressure = 1.0;  // 0..1, from the last pen packet
    bool tabletActive = false;
    // Everything the last canvas event said about the pen, for plug-ins.
    PenReading pen;

    // The points the pen went through in the last stroke, press to release
    // (image pixels), for plug-ins that follow its curve.
    std::vector<std::array<float, 2>> curve;

    // Set while many segments are painted in one go: the canvas is repainted
    // once at the end instead of after each segment.
    bool repaintSuspended = false;
};

}  // namespace wib
