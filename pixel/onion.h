// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace wib {

// Planes of one picture as the onion kernel reads them: straight colour and
// coverage (null: opaque everywhere), `stride` bytes a row.
struct OnionPlanes {
    const std::uint8_t* r = nullptr;
    const std::uint8_t* g = nullptr;
    const std::uint8_t* b = nullptr;
    const std::uint8_t* a = nullptr;
    std::size_t stride = 0;
};

// The planes the covered blend writes, of the current picture's shape.
struct OnionTarget {
    std::uint8_t* r = nullptr;
    std::uint8_t* g = nullptr;
    std::uint8_t* b = nullptr;
    std::uint8_t* a = nullptr;
    std::size_t stride = 0;
};

// The picture the canvas draws, of the current picture's size: opaque
// 0xAARRGGBB words (B, G, R, A bytes in memory on this machine), `stride`
// words a row.
struct OnionWords {
    std::uint32_t* pixels = nullptr;
    std::size_t stride = 0;
};

// Another frame laid over the current one. A tinted frame shows its colour
// halfway to the tint, so that which side it lies on can be told at a glance.
struct OnionLayer {
    OnionPlanes planes;
    std::uint8_t tint[3] = {0, 0, 0};
    bool tinted = false;
    std::uint8_t opacity = 0;
};

// How the layers are laid over the current picture, first layer lowest. A
// layer shows only where it differs from the current picture (colour or
// coverage), so a background that stays still is not washed over; there it
// covers coverage x opacity / 255 of what lies below. Where what lies below
// is opaque a layer only darkens (its colour is the lesser of its own and
// what lies below, per channel), so that the current drawing stays on top of
// the other frames' paper. Over an opaque picture the result stays opaque;
// with coverage it is the straight-colour "over". Both kernels write only
// columns left..right of rows top..bottom and read only those pixels, so
// that bands of rows may run on separate threads.

// An opaque current picture (`current.a` is ignored) with the layers over it,
// written as the words the canvas draws. All the layers are laid over a few
// hundred pixels at a time before the next ones, so no layer's result goes
// through memory.
void BlendOnionOpaque(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                      const OnionWords& out, int left, int top, int right, int bottom);

// A current picture with coverage (`current.a` set) with the layers over it,
// written as straight colour and coverage into `out`.
void BlendOnionCovered(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                       const OnionTarget& out, int left, int top, int right, int bottom);

}  // namespace wib
