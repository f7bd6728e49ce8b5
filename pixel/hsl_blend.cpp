// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/hsl_blend.h"

#include <algorithm>

// Inlined into the row loops, so that colours stay in registers.
#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {
namespace {

// A colour at 100 units a channel step (white is 25500), which may leave
// 0..25500 on the way; the luminosity weights are whole hundredths, so the
// luminosity of a byte colour is exact at this scale.
struct Fixed {
    int r, g, b;
};

constexpr int kWhite = 25500;

WIB_INLINE Fixed Widen(Rgb8 c) {
    return {c.r * 100, c.g * 100, c.b * 100};
}

// For colours with no channel below 0, which are all it is asked about.
WIB_INLINE int Lum(Fixed c) {
    return (30 * c.r + 59 * c.g + 11 * c.b + 50) / 100;
}

WIB_INLINE int Sat(Fixed c) {
    return std::max({c.r, c.g, c.b}) - std::min({c.r, c.g, c.b});
}

// num / den as a fraction with 16 bits below the point, 0 <= num <= 25500,
// den > 0.
WIB_INLINE int Fraction(int num, int den) {
    return (num << 16) / den;
}

// base + v * fraction, rounded.
WIB_INLINE int Scale(int base, int v, int fraction) {
    return base + static_cast<int>((std::int64_t{v} * fraction + (1 << 15)) >> 16);
}

// Pulls a colour that has left the cube back towards its luminosity `l`
// along the line through grey, keeping its hue and luminosity. A colour
// shifted from inside the cube spans at most its side, so it leaves on one
// side only; one ratio, chosen without branching, serves both cases (and is 1
// for a colour inside).
WIB_INLINE Fixed ClipColor(Fixed c, int l) {
    const int n = std::min({c.r, c.g, c.b});
    const int x = std::max({c.r, c.g, c.b});
    const bool low = n < 0;
    const bool high = x > kWhite;
    const int num = low ? l : high ? kWhite - l : 1;
    const int den = low ? l - n : high ? x - l : 1;
    const int fraction = Fraction(num, den);
    return {Scale(l, c.r - l, fraction), Scale(l, c.g - l, fraction), Scale(l, c.b - l, fraction)};
}

WIB_INLINE Fixed SetLum(Fixed c, int l) {
    const int d = l - Lum(c);
    return ClipColor({c.r + d, c.g + d, c.b + d}, l);
}

// Stretches the colour's channels so that max - min is `s`, min becoming 0:
// every channel moves to (v - min) * s / (max - min), and a grey becomes black.
WIB_INLINE Fixed SetSat(Fixed c, int s) {
    const int lo = std::min({c.r, c.g, c.b});
    const int span = std::max({c.r, c.g, c.b}) - lo;
    const int fraction = span > 0 ? Fraction(s, span) : 0;
    return {Scale(0, c.r - lo, fraction), Scale(0, c.g - lo, fraction),
            Scale(0, c.b - lo, fraction)};
}

WIB_INLINE std::uint8_t Narrow(int v) {
    return static_cast<std::uint8_t>((std::clamp(v, 0, kWhite) + 50) / 100);
}

WIB_INLINE Rgb8 Narrow(Fixed c) {
    return {Narrow(c.r), Narrow(c.g), Narrow(c.b)};
}

// The paint's hue with the image's saturation and luminosity.
WIB_INLINE Rgb8 Hue(Rgb8 paint, Rgb8 image) {
    const Fixed below = Widen(image);
    return Narrow(SetLum(SetSat(Widen(paint), Sat(below)), Lum(below)));
}

// The paint's saturation with the image's hue and luminosity.
WIB_INLINE Rgb8 Saturation(Rgb8 paint, Rgb8 image) {
    const Fixed below = Widen(image);
    return Narrow(SetLum(SetSat(below, Sat(Widen(paint))), Lum(below)));
}

// The paint's hue and saturation with the image's luminosity.
WIB_INLINE Rgb8 Color(Rgb8 paint, Rgb8 image) {
    return Narrow(SetLum(Widen(paint), Lum(Widen(image))));
}

// The paint's luminosity with the image's hue and saturation.
WIB_INLINE Rgb8 Luminosity(Rgb8 paint, Rgb8 image) {
    return Narrow(SetLum(Widen(image), Lum(Widen(paint))));
}

template <Rgb8 (*Formula)(Rgb8, Rgb8)>
void BlendRow(LayerRow paint, CompositeRow image, std::uint8_t* const out[3], int count) {
    for (int i = 0; i < count; ++i) {
        // Uncovered pixels are left out of the blend, which they cannot
        // show, but still get a value.
        const Rgb8 mixed = paint.a[i] == 0 ? Rgb8{0, 0, 0}
                                           : Formula({paint.r[i], paint.g[i], paint.b[i]},
                                                     {image.r[i], image.g[i], image.b[i]});
        out[0][i] = mixed.r;
        out[1][i] = mixed.g;
        out[2][i] = mixed.b;
    }
}

}  // namespace

void BlendWholeColourRow(BlendMode mode, LayerRow paint, CompositeRow image,
                         std::uint8_t* const out[3], int count) {
    switch (mode) {
        case BlendMode::Hue:
            return BlendRow<Hue>(paint, image, out, count);
        case BlendMode::Saturation:
            return BlendRow<Saturation>(paint, image, out, count);
        case BlendMode::Color:
            return BlendRow<Color>(paint, image, out, count);
        default:
            return BlendRow<Luminosity>(paint, image, out, count);
    }
}

}  // namespace wib
