// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// How a new selection meets the one in force, value by value (soft edges
// included): replace takes the new one, add the larger, subtract
// min(old, 255 - new), intersect the smaller.
enum class MatteMode : std::uint8_t { Replace, Add, Subtract, Intersect };

// Combines `count` values of the new matte into the old one, in place.
void CombineMatteRow(std::uint8_t* old, const std::uint8_t* incoming, MatteMode mode, int count);

// 255 - value, in place.
void InvertMatteRow(std::uint8_t* row, int count);

// 255 where a value is 128 or more, 0 below.
void ThresholdMatteRow(std::uint8_t* row, int count);

// Lays `colour` (one channel) over `target` weighted by `weight`:
// (colour w + target (255 - w) + 127) / 255, so 255 gives the colour exactly
// and 0 leaves the target.
void FillThroughMatteRow(std::uint8_t* target, const std::uint8_t* weight, std::uint8_t colour,
                         int count);

}  // namespace wib
