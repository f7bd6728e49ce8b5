// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// Lays a row of pixels with their own coverage (`sa`, 0..255) over an image
// row. On an opaque image (`a` null) the colour mixes by the coverage; on an
// image with coverage the result is the source over the image, its coverage
// raised accordingly and its colour the coverage-weighted mix of the two.
void LayOverRow(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b, std::uint8_t* a,
                const std::uint8_t* sr, const std::uint8_t* sg, const std::uint8_t* sb,
                const std::uint8_t* sa, int count);

}  // namespace wib
