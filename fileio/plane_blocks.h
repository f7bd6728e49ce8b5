// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/plane.h"
#include "fileio/container.h"

// A plane in a container: its width x height pixels, rows top first without
// the spare column and row, compressed as one LZ4 block and stored after its
// compressed length (32 bits).

namespace wib {

// The most pixels one LZ4 block byte can stand for: a match is extended by at
// most 255 with each further byte.
inline constexpr std::uint64_t kMostPixelsPerBlockByte = 255;

// Compresses planes of one size, from several threads at once, each plane
// into a slot of its own, whose buffers are kept from plane to plane so that
// a long run of planes is compressed without fresh memory for each.
class PlaneCompressor {
  public:
    PlaneCompressor(int width, int height, std::size_t slots)
        : width_(width), height_(height), slots_(slots) {}
    // The block of `plane` (with upper bounds (width, height)), made in slot
    // `slot` (below the count given); it stays valid until the slot is used
    // again. Two threads never use one slot at once.
    ContainerPiece compress(const Plane& plane, std::size_t slot);

  private:
    struct Slot {
        std::vector<std::uint8_t> pixels;
        std::vector<std::uint8_t> block;
    };

    int width_;
    int height_;
    std::vector<Slot> slots_;
};

// Splits the start of `bytes` into `count` blocks; nothing unless every block
// lies inside `bytes` and is long enough to hold width x height pixels at
// LZ4's best ratio. Nothing is allocated for the pixels here.
bool SplitBlocks(std::span<const std::uint8_t> bytes, std::size_t count, int width, int height,
                 std::vector<std::span<const std::uint8_t>>& blocks, std::size_t& used);

// Decompresses each block into the plane beside it, made here with upper
// bounds (width, height) and its spare column and row 0; false when any
// block does not decompress to exactly width x height pixels.
bool DecompressPlanes(std::span<const std::span<const std::uint8_t>> blocks,
                      std::span<Plane* const> planes, int width, int height);

}  // namespace wib
