// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/blend.h"

namespace wib {

// The paint modes: where the colour mixed into the image comes from.
enum class PaintMode : int {
    Plain = 0,
    Add = 1,
    Screen = 2,
    Multiply = 3,
    FromSwap = 4,  // restores from the swap buffer
    Clone = 5,
    Smear = 6,
    Pattern = 7,
    PatternOffset = 8,
    Lighten = 9,
    Subtract = 10,
    Difference = 11,
};
inline constexpr int kPaintModeCount = 12;
const char* PaintModeName(int mode);

// The blend a look-up mode (Add, Screen, Lighten, Subtract, Difference)
// applies to the brush-weighted paint value (w * P / 255) and the image value;
// Add for any mode that has no blend of its own.
BlendOp PaintModeBlend(int mode);

}  // namespace wib
