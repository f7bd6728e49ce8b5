// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// Combine operations of the main image with the swap image, one row of
// `count` pixels. Channel values widen to int; "divide by 255" truncates.

// White where the swap's rounded mean brightness is at most the main's (ties
// to white), black elsewhere; the three main rows are rewritten.
void BrighterThanSwapMaskRow(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b,
                             const std::uint8_t* sr, const std::uint8_t* sg, const std::uint8_t* sb,
                             int count);

// alpha = round((sr + sg + sb) / 3), halves to even.
void SwapBrightnessToAlphaRow(std::uint8_t* alpha, const std::uint8_t* sr, const std::uint8_t* sg,
                              const std::uint8_t* sb, int count);

// s' = 255 - (255 - swap) a / 255, then main = (s' a + main (255 - a)) / 255:
// the swap colour pulled toward white where alpha is low, then mixed by alpha.
void MergeSwapThroughAlphaRow(std::uint8_t* main, const std::uint8_t* swap,
                              const std::uint8_t* alpha, int count);

}  // namespace wib
