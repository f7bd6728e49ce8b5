// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace wib {

// The layer blend modes; the number of each is its position here, and its
// name is what files, scripts and the layers panel use.
enum class BlendMode : std::uint8_t {
    Normal,
    Multiply,
    Screen,
    Overlay,
    Darken,
    Lighten,
    ColorDodge,
    ColorBurn,
    HardLight,
    SoftLight,
    Difference,
    Exclusion,
    Hue,
    Saturation,
    Color,
    Luminosity,
    Add,
    Subtract,
};
inline constexpr int kBlendModeCount = 18;

// "normal", "multiply", ... "color-dodge" ...; null for a number out of range.
const char* BlendModeName(BlendMode mode);
std::optional<BlendMode> BlendModeFromName(std::string_view name);
std::optional<BlendMode> BlendModeFromNumber(int number);

// One row of a layer: straight (not premultiplied) colour and its coverage.
struct LayerRow {
    const std::uint8_t* r;
    const std::uint8_t* g;
    const std::uint8_t* b;
    const std::uint8_t* a;
};

// One row of the composite being built, straight colour and coverage, changed
// in place.
struct CompositeRow {
    std::uint8_t* r;
    std::uint8_t* g;
    std::uint8_t* b;
    std::uint8_t* a;
};

// Lays `count` pixels of a layer, its coverage scaled by `opacity`, over the
// composite with `mode`: the blend acts where both are present, the layer's
// own colour where the composite is transparent, and coverage adds as
// source-over.
void CompositeLayerRow(BlendMode mode, std::uint8_t opacity, LayerRow layer, CompositeRow target,
                       int count);

}  // namespace wib
