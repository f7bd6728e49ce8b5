// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/float_layer_blend.h"

#include <algorithm>
#include <cmath>

namespace wib::testing {
namespace {

struct Rgb {
    double r, g, b;
};

double Separable(BlendMode mode, double cb, double cs) {
    switch (mode) {
        case BlendMode::Multiply:
            return cb * cs;
        case BlendMode::Screen:
            return cb + cs - cb * cs;
        case BlendMode::Overlay:
            return Separable(BlendMode::HardLight, cs, cb);
        case BlendMode::Darken:
            return std::min(cb, cs);
        case BlendMode::Lighten:
            return std::max(cb, cs);
        case BlendMode::ColorDodge:
            if (cb == 0)
                return 0;
            if (cs >= 1)
                return 1;
            return std::min(1.0, cb / (1 - cs));
        case BlendMode::ColorBurn:
            if (cb >= 1)
                return 1;
            if (cs <= 0)
                return 0;
            return 1 - std::min(1.0, (1 - cb) / cs);
        case BlendMode::HardLight:
            return cs <= 0.5 ? cb * 2 * cs : Separable(BlendMode::Screen, cb, 2 * cs - 1);
        case BlendMode::SoftLight: {
            if (cs <= 0.5)
                return cb - (1 - 2 * cs) * cb * (1 - cb);
            const double d = cb <= 0.25 ? ((16 * cb - 12) * cb + 4) * cb : std::sqrt(cb);
            return cb + (2 * cs - 1) * (d - cb);
        }
        case BlendMode::Difference:
            return std::abs(cb - cs);
        case BlendMode::Exclusion:
            return cb + cs - 2 * cb * cs;
        case BlendMode::Add:
            return std::min(1.0, cb + cs);
        case BlendMode::Subtract:
            return std::max(0.0, cb - cs);
        default:
            return cs;
    }
}

double Lum(Rgb c) {
    return 0.3 * c.r + 0.59 * c.g + 0.11 * c.b;
}

Rgb ClipColor(Rgb c) {
    const double l = Lum(c);
    const double n = std::min({c.r, c.g, c.b});
    const double x = std::max({c.r, c.g, c.b});
    auto scale = [&](double v) {
        if (n < 0)
            v = l + (v - l) * l / (l - n);
        if (x > 1)
            v = l + (v - l) * (1 - l) / (x - l);
        return v;
    };
    return {scale(c.r), scale(c.g), scale(c.b)};
}

Rgb SetLum(Rgb c, double l) {
    const double d = l - Lum(c);
    return ClipColor({c.r + d, c.g + d, c.b + d});
}

double Sat(Rgb c) {
    return std::max({c.r, c.g, c.b}) - std::min({c.r, c.g, c.b});
}

Rgb SetSat(Rgb c, double s) {
    double* v[3] = {&c.r, &c.g, &c.b};
    std::sort(std::begin(v), std::end(v), [](double* x, double* y) { return *x < *y; });
    if (*v[2] > *v[0]) {
        *v[1] = (*v[1] - *v[0]) * s / (*v[2] - *v[0]);
        *v[2] = s;
    } else {
        *v[1] = *v[2] = 0;
    }
    *v[0] = 0;
    return c;
}

Rgb Blend(BlendMode mode, Rgb cb, Rgb cs) {
    switch (mode) {
        case BlendMode::Hue:
            return SetLum(SetSat(cs, Sat(cb)), Lum(cb));
        case BlendMode::Saturation:
            return SetLum(SetSat(cb, Sat(cs)), Lum(cb));
        case BlendMode::Color:
            return SetLum(cs, Lum(cb));
        case BlendMode::Luminosity:
            return SetLum(cb, Lum(cs));
        default:
            return {Separable(mode, cb.r, cs.r), Separable(mode, cb.g, cs.g),
                    Separable(mode, cb.b, cs.b)};
    }
}

std::uint8_t ToByte(double v) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
}

}  // namespace

void FloatCompositeLayerRow(BlendMode mode, std::uint8_t opacity, LayerRow layer,
                            CompositeRow target, int count) {
    for (int x = 0; x < count; ++x) {
        const double as = layer.a[x] / 255.0 * (opacity / 255.0);
        if (as <= 0)
            continue;
        const double ab = target.a[x] / 255.0;
        const Rgb cs{layer.r[x] / 255.0, layer.g[x] / 255.0, layer.b[x] / 255.0};
        const Rgb cb{target.r[x] / 255.0, target.g[x] / 255.0, target.b[x] / 255.0};
        const Rgb mixed = Blend(mode, cb, cs);
        const double ao = as + ab * (1 - as);
        auto channel = [&](double s, double m, double b) {
            const double sourced = (1 - ab) * s + ab * m;
            return (as * sourced + ab * (1 - as) * b) / ao;
        };
        target.r[x] = ToByte(channel(cs.r, mixed.r, cb.r));
        target.g[x] = ToByte(channel(cs.g, mixed.g, cb.g));
        target.b[x] = ToByte(channel(cs.b, mixed.b, cb.b));
        target.a[x] = ToByte(ao);
    }
}

}  // namespace wib::testing
