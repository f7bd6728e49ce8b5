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
