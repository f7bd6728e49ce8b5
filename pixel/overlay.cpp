// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/overlay.h"

namespace wib {

namespace {

// a x + (255 - a) y, rounded to nearest: exact for a of 0 and 255.
std::uint8_t Mix(int a, int x, int y) {
    return static_cast<std::uint8_t>((a * x + (255 - a) * y + 127) / 255);
}

}  // namespace

void OverlayRow(std::uint8_t* mainR, std::uint8_t* mainG, std::uint8_t* mainB,
                const std::uint8_t* secondR, const std::uint8_t* secondG,
                const std::uint8_t* secondB, const std::uint8_t* alpha, OverlayMode mode,
                int count) {
    const bool inverse = mode == OverlayMode::InverseAlpha;
    for (int x = 0; x < count; ++x) {
        const int a = inverse ? 255 - alpha[x] : alpha[x];
        mainR[x] = Mix(a, secondR[x], mainR[x]);
        mainG[x] = Mix(a, secondG[x], mainG[x]);
        mainB[x] = Mix(a, secondB[x], mainB[x]);
    }
}

}  // namespace wib
