// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/lay_over.h"

namespace wib {

namespace {

// (s a + d (255 - a)) / 255, rounded.
std::uint8_t Mix(unsigned s, unsigned d, unsigned a) {
    return static_cast<std::uint8_t>((s * a + d * (255 - a) + 127) / 255);
}

}  // namespace

void LayOverRow(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b, std::uint8_t* a,
                const std::uint8_t* sr, const std::uint8_t* sg, const std::uint8_t* sb,
                const std::uint8_t* sa, int count) {
    std::uint8_t* image[3] = {r, g, b};
    const std::uint8_t* source[3] = {sr, sg, sb};
    for (int x = 0; x < count; ++x) {
        const unsigned over = sa[x];
        if (over == 0) {
            continue;
        }
        if (a == nullptr) {
            for (int c = 0; c < 3; ++c) {
                image[c][x] = Mix(source[c][x], image[c][x], over);
            }
            continue;
        }
        // Both weights scaled by 255: the source's own and what shows of the image below it.
        const unsigned top = over * 255;
        const unsigned below = a[x] * (255 - over);
        const unsigned total = top + below;
        for (int c = 0; c < 3; ++c) {
            image[c][x] = static_cast<std::uint8_t>(
                (source[c][x] * top + image[c][x] * below + total / 2) / total);
        }
        a[x] = static_cast<std::uint8_t>((total + 127) / 255);
    }
}

}  // namespace wib
