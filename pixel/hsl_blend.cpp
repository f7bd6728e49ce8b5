// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/hsl_blend.h"

#include <algorithm>
#include <utility>

namespace wib {
namespace {

// A colour at 100 units a channel step (white is 25500), which may leave
// 0..25500 on the way; the luminosity weights are whole hundredths, so the
// luminosity of a byte colour is exact at this scale.
struct Fixed {
    int r, g, b;
};

constexpr int kWhite = 25500;

Fixed Widen(Rgb8 c) {
    return {c.r * 100, c.g * 100, c.b * 100};
}

int Lum(Fixed c) {
    const int weighted = 30 * c.r + 59 * c.g + 11 * c.b;
    // Rounds halves away from zero, for the negative values clipping sees.
    return weighted >= 0 ? (weighted + 50) / 100 : (weighted - 50) / 100;
}

int Sat(Fixed c) {
    return std::max({c.r, c.g, c.b}) - std::min({c.r, c.g, c.b});
}

// Pulls a colour that has left the cube back towards its luminosity `l`
// along the line through grey, keeping its hue and luminosity.
Fixed ClipColor(Fixed c, int l) {
    const int n = std::min({c.r, c.g, c.b});
    const int x = std::max({c.r, c.g, c.b});
    for (int* v : {&c.r, &c.g, &c.b}) {
        if (n < 0) {
            *v = l + (*v - l) * l / (l - n);
        }
        if (x > kWhite) {
            *v = l + (*v - l) * (kWhite - l) / (x - l);
        }
    }
    return c;
}

Fixed SetLum(Fixed c, int l) {
    const int d = l - Lum(c);
    return ClipColor({c.r + d, c.g + d, c.b + d}, l);
}

// Stretches the colour's channels so that max - min is `s`, min becoming 0.
Fixed SetSat(Fixed c, int s) {
    int* lo = &c.r;
    int* mid = &c.g;
    int* hi = &c.b;
    if (*lo > *mid) {
        std::swap(lo, mid);
    }
    if (*mid > *hi) {
        std::swap(mid, hi);
    }
    if (*lo > *mid) {
        std::swap(lo, mid);
    }
    if (*hi > *lo) {
        *mid = (*mid - *lo) * s / (*hi - *lo);
        *hi = s;
    } else {
        *mid = *hi = 0;
    }
    *lo = 0;
    return c;
}

std::uint8_t Narrow(int v) {
    return static_cast<std::uint8_t>((std::clamp(v, 0, kWhite) + 50) / 100);
}

Rgb8 Narrow(Fixed c) {
    return {Narrow(c.r), Narrow(c.g), Narrow(c.b)};
}

}  // namespace

Rgb8 BlendHue(Rgb8 paint, Rgb8 image) {
    const Fixed below = Widen(image);
    return Narrow(SetLum(SetSat(Widen(paint), Sat(below)), Lum(below)));
}

Rgb8 BlendSaturation(Rgb8 paint, Rgb8 image) {
    const Fixed below = Widen(image);
    return Narrow(SetLum(SetSat(below, Sat(Widen(paint))), Lum(below)));
}

Rgb8 BlendColor(Rgb8 paint, Rgb8 image) {
    return Narrow(SetLum(Widen(paint), Lum(Widen(image))));
}

Rgb8 BlendLuminosity(Rgb8 paint, Rgb8 image) {
    return Narrow(SetLum(Widen(image), Lum(Widen(paint))));
}

}  // namespace wib
