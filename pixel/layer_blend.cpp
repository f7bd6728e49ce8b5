// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/layer_blend.h"

#include <array>
#include <bit>

#include "pixel/blend.h"
#include "pixel/hsl_blend.h"

// The row loops are written without branches where they can be, so that the
// compiler vectorises them; each kernel is built for AVX2 and for plain x86-64
// and picked at run time.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define WIB_LAYER_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define WIB_LAYER_KERNEL
#endif

// Inlined into each target clone, so that each is compiled for its own target.
#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {
namespace {

constexpr std::array<const char*, kBlendModeCount> kNames = {
    "normal",      "multiply",   "screen",     "overlay",    "darken",     "lighten",
    "color-dodge", "color-burn", "hard-light", "soft-light", "difference", "exclusion",
    "hue",         "saturation", "color",      "luminosity", "add",        "subtract"};

// Rows are worked in chunks whose blend results fit on the stack.
constexpr int kChunk = 256;

// Coverage times opacity, the layer's effective coverage, is kept whole at
// 255 * 255 units: rounding it to a byte first would put a faint layer over a
// faint composite far from where the equations put it.
constexpr unsigned kFull = 255 * 255;

// floor(2^40 / m) for the 12-bit mantissas m = 2048..4095.
constexpr std::array<std::uint32_t, 2048> MakeReciprocals() {
    std::array<std::uint32_t, 2048> table{};
    for (std::uint64_t m = 2048; m < 4096; ++m) {
        table[m - 2048] = static_cast<std::uint32_t>((std::uint64_t{1} << 40) / m);
    }
    return table;
}
constexpr std::array<std::uint32_t, 2048> kReciprocals = MakeReciprocals();

// round(n / d), halves up, for n < 2^32 and 2^11 <= d < 2^32. The table's
// reciprocal of d's top 12 bits puts the quotient within one of the truth; the
// remainder then corrects it, so the result is exact without a division.
WIB_INLINE unsigned RoundedQuotient(std::uint64_t n, std::uint32_t d) {
    const int shift = std::bit_width(d) - 12;
    const std::uint64_t reciprocal = kReciprocals[(d >> shift) - 2048];
    std::uint64_t q = (n * reciprocal) >> (40 + shift);
    auto rem = static_cast<std::int64_t>(n - q * d);
    if (rem < 0) {
        --q;
        rem += d;
    } else if (rem >= static_cast<std::int64_t>(d)) {
        ++q;
        rem -= d;
    }
    return static_cast<unsigned>(q) + (2 * rem >= static_cast<std::int64_t>(d) ? 1 : 0);
}

using ChannelFormula = std::uint8_t (*)(int paint, int image);

// Normal mode's B: the paint itself.
WIB_INLINE std::uint8_t BlendNormal(int paint, int) {
    return static_cast<std::uint8_t>(paint);
}

// Calls visit.template operator()<F>() with the channel formula F of a
// separable mode, so that each mode gets a row loop of its own.
template <typename Visit>
WIB_INLINE void WithChannelFormula(BlendMode mode, Visit&& visit) {
    switch (mode) {
        case BlendMode::Multiply:
            return visit.template operator()<BlendMultiply>();
        case BlendMode::Screen:
            return visit.template operator()<BlendScreen>();
        case BlendMode::Overlay:
            return visit.template operator()<BlendOverlay>();
        case BlendMode::Darken:
            return visit.template operator()<BlendDarken>();
        case BlendMode::Lighten:
            return visit.template operator()<BlendLighten>();
        case BlendMode::ColorDodge:
            return visit.template operator()<BlendColorDodge>();
        case BlendMode::ColorBurn:
            return visit.template operator()<BlendColorBurn>();
        case BlendMode::HardLight:
            return visit.template operator()<BlendHardLight>();
        case BlendMode::SoftLight:
            return visit.template operator()<BlendSoftLight>();
        case BlendMode::Difference:
            return visit.template operator()<BlendDifference>();
        case BlendMode::Exclusion:
            return visit.template operator()<BlendExclusion>();
        case BlendMode::Add:
            return visit.template operator()<BlendAdd>();
        case BlendMode::Subtract:
            return visit.template operator()<BlendSubtract>();
        default:
            return visit.template operator()<BlendNormal>();
    }
}

// B(image, paint) of a separable mode over one channel of a chunk.
WIB_LAYER_KERNEL void BlendSeparable(BlendMode mode, const std::uint8_t* paint,
                                     const std::uint8_t* image, std::uint8_t* out, int count) {
    WithChannelFormula(
        mode, [&]<ChannelFormula Formula>() __attribute__((always_inline)) {
            for (int i = 0; i < count; ++i) {
                out[i] = Formula(paint[i], image[i]);
            }
        });
}

// One channel of a separable mode over a chunk where the composite is opaque:
// it stays opaque and the channel is round((s B + (kFull - s) below) / kFull),
// s the layer's effective coverage, with no division by the result's coverage.
// Soft light reads a curve at the image's value; reading it for the whole
// chunk first leaves the blend loop free of look-ups, so that it vectorises.
WIB_INLINE void SoftLightOverOpaque(const std::uint8_t* coverage, unsigned opacity,
                                    const std::uint8_t* paint, std::uint8_t* below, int count) {
    std::int32_t lift[kChunk];
    for (int i = 0; i < count; ++i) {
        lift[i] = SoftLightLift(below[i]);
    }
    for (int i = 0; i < count; ++i) {
        const unsigned s = coverage[i] * opacity;
        const unsigned mixed = BlendSoftLightLifted(paint[i], below[i], lift[i]);
        below[i] =
            static_cast<std::uint8_t>((s * mixed + (kFull - s) * below[i] + kFull / 2) / kFull);
    }
}

WIB_LAYER_KERNEL void SeparableOverOpaque(BlendMode mode, const std::uint8_t* coverage,
                                          unsigned opacity, const std::uint8_t* paint,
                                          std::uint8_t* below, int count) {
    if (mode == BlendMode::SoftLight) {
        return SoftLightOverOpaque(coverage, opacity, paint, below, count);
    }
    WithChannelFormula(
        mode, [&]<ChannelFormula Formula>() __attribute__((always_inline)) {
            for (int i = 0; i < count; ++i) {
                const unsigned s = coverage[i] * opacity;
                const unsigned mixed = Formula(paint[i], below[i]);
                below[i] = static_cast<std::uint8_t>(
                    (s * mixed + (kFull - s) * below[i] + kFull / 2) / kFull);
            }
        });
}

bool IsNonSeparable(BlendMode mode) {
    return mode == BlendMode::Hue || mode == BlendMode::Saturation || mode == BlendMode::Color ||
           mode == BlendMode::Luminosity;
}

// Whether every byte of `values` is `value`.
WIB_LAYER_KERNEL bool AllEqual(const std::uint8_t* values, int count, std::uint8_t value) {
    unsigned differ = 0;
    for (int i = 0; i < count; ++i) {
        differ |= values[i] ^ value;
    }
    return differ == 0;
}

// The composite is transparent over the whole chunk: the layer's own colour
// shows wherever it has coverage, and the coverage is round(s / 255).
WIB_LAYER_KERNEL void OverTransparent(LayerRow layer, unsigned opacity, CompositeRow target,
                                      int count) {
    const std::uint8_t* source[3] = {layer.r, layer.g, layer.b};
    std::uint8_t* below[3] = {target.r, target.g, target.b};
    for (int c = 0; c < 3; ++c) {
        for (int i = 0; i < count; ++i) {
            below[c][i] = layer.a[i] != 0 ? source[c][i] : below[c][i];
        }
    }
    for (int i = 0; i < count; ++i) {
        target.a[i] = static_cast<std::uint8_t>((layer.a[i] * opacity + 127) / 255);
    }
}

// The general equation, pixel by pixel, with its special cases: with s and
// the composite's coverage a (0..255) both whole,
//   colour   = round(N / D),  N = s * ((255 - a) cs + a cm) + a (kFull - s) cb,
//   coverage = round(D / kFull),  D = 255 s + a (kFull - s).
void OverAny(LayerRow layer, unsigned opacity, const std::uint8_t* const mixed[3],
             CompositeRow target, int count) {
    const std::uint8_t* source[3] = {layer.r, layer.g, layer.b};
    std::uint8_t* below[3] = {target.r, target.g, target.b};
    for (int i = 0; i < count; ++i) {
        const unsigned s = layer.a[i] * opacity;
        const unsigned a = target.a[i];
        if (s == 0) {
            continue;
        }
        if (a == 0) {
            for (int c = 0; c < 3; ++c) {
                below[c][i] = source[c][i];
            }
            target.a[i] = static_cast<std::uint8_t>((s + 127) / 255);
            continue;
        }
        if (s == kFull) {
            for (int c = 0; c < 3; ++c) {
                below[c][i] = static_cast<std::uint8_t>(
                    ((255 - a) * source[c][i] + a * mixed[c][i] + 127) / 255);
            }
            target.a[i] = 255;
            continue;
        }
        const std::uint32_t d = 255 * s + a * (kFull - s);
        for (int c = 0; c < 3; ++c) {
            const std::uint64_t n =
                std::uint64_t{s} * ((255 - a) * source[c][i] + a * mixed[c][i]) +
                std::uint64_t{a} * (kFull - s) * below[c][i];
            below[c][i] = static_cast<std::uint8_t>(RoundedQuotient(n, d));
        }
        target.a[i] = static_cast<std::uint8_t>((d + kFull / 2) / kFull);
    }
}

LayerRow Offset(LayerRow row, int start) {
    return {row.r + start, row.g + start, row.b + start, row.a + start};
}

CompositeRow Offset(CompositeRow row, int start) {
    return {row.r + start, row.g + start, row.b + start, row.a + start};
}

void CompositeChunk(BlendMode mode, unsigned opacity, LayerRow layer, CompositeRow target,
                    int count) {
    if (AllEqual(layer.a, count, 0)) {
        return;
    }
    if (AllEqual(target.a, count, 0)) {
        return OverTransparent(layer, opacity, target, count);
    }
    const bool opaque = AllEqual(target.a, count, 255);
    const std::uint8_t* source[3] = {layer.r, layer.g, layer.b};
    std::uint8_t* below[3] = {target.r, target.g, target.b};
    std::uint8_t buffer[3][kChunk];
    std::uint8_t* const out[3] = {buffer[0], buffer[1], buffer[2]};
    const std::uint8_t* const blended[3] = {buffer[0], buffer[1], buffer[2]};
    if (IsNonSeparable(mode)) {
        BlendWholeColourRow(mode, layer, target, out, count);
        if (!opaque) {
            return OverAny(layer, opacity, blended, target, count);
        }
        for (int c = 0; c < 3; ++c) {
            SeparableOverOpaque(BlendMode::Normal, layer.a, opacity, blended[c], below[c], count);
        }
        return;
    }
    if (opaque) {
        for (int c = 0; c < 3; ++c) {
            SeparableOverOpaque(mode, layer.a, opacity, source[c], below[c], count);
        }
        return;
    }
    for (int c = 0; c < 3; ++c) {
        BlendSeparable(mode, source[c], below[c], out[c], count);
    }
    OverAny(layer, opacity, blended, target, count);
}

}  // namespace

const char* BlendModeName(BlendMode mode) {
    const auto index = static_cast<std::size_t>(mode);
    return index < kNames.size() ? kNames[index] : nullptr;
}

std::optional<BlendMode> BlendModeFromName(std::string_view name) {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (name == kNames[i])
            return static_cast<BlendMode>(i);
    }
    return std::nullopt;
}

std::optional<BlendMode> BlendModeFromNumber(int number) {
    if (number < 0 || number >= kBlendModeCount)
        return std::nullopt;
    return static_cast<BlendMode>(number);
}

void CompositeLayerRow(BlendMode mode, std::uint8_t opacity, LayerRow layer, CompositeRow target,
                       int count) {
    if (opacity == 0) {
        return;
    }
    for (int start = 0; start < count; start += kChunk) {
        const int n = count - start < kChunk ? count - start : kChunk;
        CompositeChunk(mode, opacity, Offset(layer, start), Offset(target, start), n);
    }
}

}  // namespace wib
