// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "pixel/rounding.h"

namespace wib {

// Blend formulas over one channel: `paint` is the value laid on, `image` the
// value beneath, both 0..255. Paint modes, layer modes and combine
// operations share them. Divisions by 255 truncate.
inline std::uint8_t BlendAdd(int paint, int image) {
    return static_cast<std::uint8_t>(std::min(255, paint + image));
}
inline std::uint8_t BlendScreen(int paint, int image) {
    return static_cast<std::uint8_t>(255 - (255 - paint) * (255 - image) / 255);
}
inline std::uint8_t BlendLighten(int paint, int image) {
    return static_cast<std::uint8_t>(std::max(paint, image));
}
inline std::uint8_t BlendSubtract(int paint, int image) {
    return static_cast<std::uint8_t>(std::max(0, image - paint));
}
inline std::uint8_t BlendDifference(int paint, int image) {
    return static_cast<std::uint8_t>(paint > image ? paint - image : image - paint);
}
inline std::uint8_t BlendMultiply(int paint, int image) {
    return static_cast<std::uint8_t>(paint * image / 255);
}

inline std::uint8_t BlendDarken(int paint, int image) {
    return static_cast<std::uint8_t>(std::min(paint, image));
}
// image / paint scaled so that equal values give 255; a paint of 0 gives 255.
inline std::uint8_t BlendDivide(int paint, int image) {
    return static_cast<std::uint8_t>(paint == 0 ? 255 : std::min(255, image * 255 / paint));
}
// The paint as an offset around mid grey: 128 leaves the image as it is.
inline std::uint8_t BlendAroundGrey(int paint, int image) {
    return static_cast<std::uint8_t>(std::clamp(image + paint - 128, 0, 255));
}
// The bits of either but not both.
inline std::uint8_t BlendExclusiveOr(int paint, int image) {
    return static_cast<std::uint8_t>(paint ^ image);
}
// The mean of the two, halves rounded up.
inline std::uint8_t BlendMix(int paint, int image) {
    return static_cast<std::uint8_t>((paint + image + 1) / 2);
}

// Hard light: the image multiplied by twice the paint where the paint is dark,
// screened by twice the paint less one where it is light.
inline std::uint8_t BlendHardLight(int paint, int image) {
    return paint <= 127 ? BlendMultiply(2 * paint, image) : BlendScreen(2 * paint - 255, image);
}
// Overlay is hard light with paint and image swapped.
inline std::uint8_t BlendOverlay(int paint, int image) {
    return BlendHardLight(image, paint);
}
// The image divided by the inverted paint; a black image stays black.
inline std::uint8_t BlendColorDodge(int paint, int image) {
    return image == 0 ? 0 : BlendDivide(255 - paint, image);
}
// The inverted image divided by the paint, inverted; a white image stays white.
inline std::uint8_t BlendColorBurn(int paint, int image) {
    return image == 255 ? 255 : static_cast<std::uint8_t>(255 - BlendDivide(paint, 255 - image));
}
// paint + image - 2 * paint * image / 255, the product's division truncating.
inline std::uint8_t BlendExclusion(int paint, int image) {
    return static_cast<std::uint8_t>(paint + image - 2 * paint * image / 255);
}

namespace blend_detail {

// round(sqrt(n)) for 0 <= n < 2^36.
constexpr std::int64_t RoundedSqrt(std::int64_t n) {
    std::int64_t r = 0;
    for (std::int64_t bit = std::int64_t{1} << 18; bit > 0; bit >>= 1) {
        if ((r + bit) * (r + bit) <= n) {
            r += bit;
        }
    }
    return n - r * r > r ? r + 1 : r;
}

// 255 * 256 * D(image / 255), rounded, where D is soft light's lift curve:
// ((16 x - 12) x + 4) x up to x = 1/4 and sqrt(x) above.
constexpr std::array<std::uint16_t, 256> MakeSoftLightCurve() {
    std::array<std::uint16_t, 256> curve{};
    for (std::int64_t i = 0; i < 256; ++i) {
        const std::int64_t value =
            i <= 63 ? (((16 * i - 12 * 255) * i + 4 * 65025) * i * 256 + 32512) / 65025
                    : RoundedSqrt(i * 255 * 65536);
        curve[static_cast<std::size_t>(i)] = static_cast<std::uint16_t>(value);
    }
    return curve;
}

}  // namespace blend_detail

inline constexpr std::array<std::uint16_t, 256> kSoftLightCurve =
    blend_detail::MakeSoftLightCurve();

// How far soft light can lift `image`: the curve above less the image, at
// 256 units a channel step.
inline int SoftLightLift(int image) {
    return kSoftLightCurve[static_cast<std::size_t>(image)] - 256 * image;
}

// Soft light given the image's lift: a dark paint darkens the image by
// (255 - 2 paint) * image * (255 - image) / 255^2, a light one lifts it by
// (2 paint - 255) / 255 of its lift; both truncate. Both are worked out and
// one chosen, so that row loops over it need no branch.
inline std::uint8_t BlendSoftLightLifted(int paint, int image, int lift) {
    const int dark = image - (255 - 2 * paint) * image * (255 - image) / 65025;
    const int light = image + (2 * paint - 255) * lift / 65280;
    return static_cast<std::uint8_t>(paint <= 127 ? dark : light);
}

inline std::uint8_t BlendSoftLight(int paint, int image) {
    return BlendSoftLightLifted(paint, image, SoftLightLift(image));
}

// `source` laid over `image` by a brush mask value m (0 full strength, 255
// none): round(source * (1 - m / 255) + image * m / 255).
inline std::uint8_t MaskMix(int source, int image, int m) {
    const double t = m / 255.0;
    return static_cast<std::uint8_t>(RoundHalfEven(source * (1.0 - t) + image * t));
}

// The blends the look-up tables hold.
enum class BlendOp : int { Add, Screen, Lighten, Subtract, Difference, Multiply };
inline constexpr int kBlendOpCount = 6;

std::uint8_t Blend(BlendOp op, int paint, int image);

// Every result of one blend, indexed [paint][image]: one look-up per channel
// where a loop would otherwise branch on the blend per pixel. Built once, on
// first use, from the formulas above.
using BlendTable = std::array<std::array<std::uint8_t, 256>, 256>;
const BlendTable& BlendLookup(BlendOp op);

}  // namespace wib
