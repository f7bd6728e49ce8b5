// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "pixel/layer_blend.h"
#include "pixel/pixel_rect.h"

namespace wib {

// One layer's planes as the compositor reads them: each pointer is the
// plane's pixel (0, 0), and `stride` bytes lead from one row to the next in
// all four planes.
struct LayerPlanes {
    const std::uint8_t* r;
    const std::uint8_t* g;
    const std::uint8_t* b;
    const std::uint8_t* a;  // null: the layer covers every pixel
    std::ptrdiff_t stride;
    BlendMode mode = BlendMode::Normal;
    std::uint8_t opacity = 255;
};

// The composite's planes, straight colour and coverage, addressed the same way.
struct CompositePlanes {
    std::uint8_t* r;
    std::uint8_t* g;
    std::uint8_t* b;
    std::uint8_t* a;
    std::ptrdiff_t stride;
};

// Rebuilds `rect` of the composite from nothing: fully transparent, then each
// layer of `layers`, bottom first, laid over it with its mode and opacity.
// The caller passes the visible layers only; every plane must cover `rect`.
void CompositeRect(std::span<const LayerPlanes> layers, CompositePlanes target, PixelRect rect);

}  // namespace wib
