// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// The options of the tools other than the brush, as the "Tool options" panel
// shows them. Each tool passes them to the command it runs.
struct ToolOptions {
    // Selections: how a new one meets the current one (0 replace, 1 add,
    // 2 subtract, 3 intersect) when no modifier key says otherwise.
    int selectionMode = 0;
    bool antialias = true;
    double feather = 0;
    // Fill and magic wand.
    int tolerance = 32;
    bool contiguous = true;
    bool eightConnected = false;
    // Gradient: 0 linear, 1 radial, 2 conical, 3 diamond, 4 reflected.
    int gradientShape = 0;
    // Gradient dither: 0 none, 1 ordered, 2 random.
    int gradientDither = 1;
    // Rectangle and ellipse shapes.
    bool shapeFilled = false;
    // Eyedropper: the side of the averaged square (1, 3 or 5) and whether it
    // reads the visible composite rather than the current layer.
    int pickerSize = 1;
    bool pickerComposite = false;
    // Transform: 0 bilinear, 1 bicubic.
    int sampling = 0;
    // Text: the font family, its size in image pixels, anti-aliased edges.
    std::string textFont = "Sans";
    int textSize = 24;
    bool textAntialias = true;
};

}  // namespace wib
