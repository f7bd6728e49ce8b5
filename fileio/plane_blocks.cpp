// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/plane_blocks.h"

#include <lz4.h>

#include <algorithm>
#include <cstring>

#include "core/byte_fields.h"
#include "fileio/parallel_jobs.h"

namespace wib {

namespace {

constexpr std::size_t kLengthSize = 4;

std::size_t PixelCount(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

// Decompresses into the start of the plane's memory, then moves each row to
// its place, last row first so that no row is overwritten before it moves.
bool DecompressPlane(std::span<const std::uint8_t> block, Plane& plane, int width, int height) {
    const std::size_t count = PixelCount(width, height);
    const int size = LZ4_decompress_safe(reinterpret_cast<const char*>(block.data()),
                                         reinterpret_cast<char*>(plane.data()),
                                         static_cast<int>(block.size()), static_cast<int>(count));
    if (size < 0 || static_cast<std::size_t>(size) != count) {
        return false;
    }
    const auto w = static_cast<std::size_t>(width);
    for (int y = height - 1; y >= 0; --y) {
        std::uint8_t* row = plane.row(y);
        std::memmove(row, plane.data() + static_cast<std::size_t>(y) * w, w);
        row[w] = 0;
    }
    std::memset(plane.row(height), 0, plane.stride());
    return true;
}

}  // namespace

ContainerPiece PlaneCompressor::compress(const Plane& plane, std::size_t slotIndex) {
    Slot& slot = slots_[slotIndex];
    const std::size_t count = PixelCount(width_, height_);
    const auto width = static_cast<std::size_t>(width_);
    slot.pixels.resize(count);
    for (int y = 0; y < height_; ++y) {
        std::memcpy(slot.pixels.data() + static_cast<std::size_t>(y) * width, plane.row(y), width);
    }
    const auto bound = static_cast<std::size_t>(LZ4_compressBound(static_cast<int>(count)));
    slot.block.resize(kLengthSize + bound);
    const int size = LZ4_compress_default(reinterpret_cast<const char*>(slot.pixels.data()),
                                          reinterpret_cast<char*>(slot.block.data() + kLengthSize),
                                          static_cast<int>(count), static_cast<int>(bound));
    for (std::size_t i = 0; i < kLengthSize; ++i) {
        slot.block[i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(size) >> (8 * i));
    }
    const auto bytes = std::span<const std::uint8_t>(slot.block)
                           .first(kLengthSize + static_cast<std::size_t>(size));
    return {bytes, ChecksumOf(bytes)};
}

bool SplitBlocks(std::span<const std::uint8_t> bytes, std::size_t count, int width, int height,
                 std::vector<std::span<const std::uint8_t>>& blocks, std::size_t& used) {
    const std::uint64_t pixels = PixelCount(width, height);
    const std::uint64_t shortest = (pixels + kMostPixelsPerBlockByte - 1) / kMostPixelsPerBlockByte;
    // Every block needs its length and its shortest compressed form: a count
    // the bytes cannot hold is refused before the list is made.
    if (count > bytes.size() / (kLengthSize + shortest)) {
        return false;
    }
    blocks.clear();
    blocks.reserve(count);
    ByteFieldReader reader(bytes);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t size = 0;
        if (!reader.u32(size) || size < shortest || size > reader.left()) {
            return false;
        }
        blocks.push_back(reader.take(size));
    }
    used = reader.position();
    return true;
}

bool DecompressPlanes(std::span<const std::span<const std::uint8_t>> blocks,
                      std::span<Plane* const> planes, int width, int height) {
    std::vector<char> sound(blocks.size(), 0);
    RunJobs(blocks.size(), [&](std::size_t i) {
        *planes[i] = Plane::Uninitialized(width, height);
        sound[i] = DecompressPlane(blocks[i], *planes[i], width, height) ? 1 : 0;
    });
    return std::find(sound.begin(), sound.end(), 0) == sound.end();
}

}  // namespace wib
