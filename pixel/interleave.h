// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

// Conversions between interleaved pixels, as files store them (blue, green,
// red and, for four bytes a pixel, alpha), and the separate planes of the
// image. `count` is the number of pixels.
void SplitBGR(const std::uint8_t* source, std::size_t count, std::uint8_t* r, std::uint8_t* g,
              std::uint8_t* b);
void SplitBGRA(const std::uint8_t* source, std::size_t count, std::uint8_t* r, std::uint8_t* g,
               std::uint8_t* b, std::uint8_t* a);
void JoinBGR(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b, std::size_t count,
             std::uint8_t* destination);
void JoinBGRA(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b,
              const std::uint8_t* a, std::size_t count, std::uint8_t* destination);

// Looks each index up in a palette of 256 blue, green, red triples (768 bytes).
void SplitIndexed(const std::uint8_t* indices, std::size_t count, const std::uint8_t* palette,
                  std::uint8_t* r, std::uint8_t* g, std::uint8_t* b);

// Grey from colour with the integer weights 299, 587 and 114 per thousand,
// rounded to the nearest value.
void JoinGrey(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b,
              std::size_t count, std::uint8_t* destination);

}  // namespace wib
