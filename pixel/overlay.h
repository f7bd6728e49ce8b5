// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// How the overlay routine weighs the second image.
enum class OverlayMode : std::uint8_t {
    ThroughAlpha = 0,  // main = (second a + main (255 - a) + 127) / 255
    InverseAlpha = 1,  // the same with 255 - a: the second image shows where alpha is 0
};

// The overlay routine: blends the second image's three colour rows into the
// main rows through the alpha row, `count` pixels, as `mode` says.
void OverlayRow(std::uint8_t* mainR, std::uint8_t* mainG, std::uint8_t* mainB,
                const std::uint8_t* secondR, const std::uint8_t* secondG,
                const std::uint8_t* secondB, const std::uint8_t* alpha, OverlayMode mode,
                int count);

}  // namespace wib
