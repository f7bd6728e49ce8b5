// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/plane.h"

namespace wib {

// A palette of at most 256 colours for one image, for 8-bit colour files.
// An image of 256 colours or fewer gets exactly its own colours. A richer one
// gets a median cut: colours are counted in cells of 5 bits a channel, the
// box of cells holding the most pixels is split at the median of its longest
// side until there are 256 boxes, each box gives the mean colour of its
// pixels, and every cell maps to the entry nearest its own mean colour.
class ColourPalette {
  public:
    // From the top-left width x height of three colour planes.
    static ColourPalette Build(const Plane& r, const Plane& g, const Plane& b, int width,
                               int height);

    // Entries as blue, green, red triples, unused ones black.
    const std::array<std::uint8_t, 768>& entries() const { return entries_; }
    int size() const { return size_; }

    // The palette index of each pixel of one row.
    void mapRow(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b, int count,
                std::uint8_t* indices) const;

  private:
    std::array<std::uint8_t, 768> entries_{};
    int size_ = 0;
    // Exact palettes: sorted packed colours (R << 16 | G << 8 | B).
    std::vector<std::uint32_t> exact_;
    // Median-cut palettes: the entry of every 15-bit cell.
    std::vector<std::uint8_t> cellEntry_;
};

}  // namespace wib
