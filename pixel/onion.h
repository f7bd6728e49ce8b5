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

// The planes the kernel writes, of the current picture's shape; `a` is
// written exactly when the current picture has coverage.
struct OnionTarget {
    std::uint8_t* r = nullptr;
    std::uint8_t* g = nullptr;
    std::uint8_t* b = nullptr;
    std::uint8_t* a = nullptr;
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

// Writes into `out`, within columns left..right and rows top..bottom, the
// current picture with the layers laid over it, first layer lowest. A layer
// shows only where it differs from the current picture (colour or coverage),
// so a background that stays still is not washed over; there it covers
// coverage x opacity / 255 of what lies below. Where what lies below is
// opaque a layer only darkens (its colour is the lesser of its own and what
// lies below, per channel), so that the current drawing stays on top of the
// other frames' paper. Over an opaque picture the result stays opaque; with
// coverage it is the straight-colour "over".
void BlendOnion(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                const OnionTarget& out, int left, int top, int right, int bottom);

}  // namespace wib
