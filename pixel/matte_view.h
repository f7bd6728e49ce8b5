// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

// A matte of `width` x `height` pixels, `stride` bytes a row.
struct MatteView {
    std::uint8_t* data = nullptr;
    std::size_t stride = 0;
    int width = 0;
    int height = 0;

    std::uint8_t* row(int y) const { return data + static_cast<std::size_t>(y) * stride; }
};

// The same, read only.
struct MatteSource {
    const std::uint8_t* data = nullptr;
    std::size_t stride = 0;
    int width = 0;
    int height = 0;

    const std::uint8_t* row(int y) const { return data + static_cast<std::size_t>(y) * stride; }
};

}  // namespace wib
