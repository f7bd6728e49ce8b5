// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "fileio/byte_sink.h"
#include "fileio/read_result.h"

// The binary container the layered picture and the stored animation share:
// a 4-byte magic, the 32-bit version, width and height, then sections (a
// 4-byte tag, a 64-bit length, the bytes) and at the end the CRC-32 of every
// byte before it. All numbers are little-endian.

namespace wib {

using FourCC = std::array<char, 4>;

inline constexpr std::uint32_t kContainerVersion = 1;
inline constexpr std::size_t kContainerHeaderSize = 16;
inline constexpr std::size_t kSectionHeaderSize = 12;
inline constexpr std::size_t kChecksumSize = 4;

// A run of a file's bytes with its CRC-32, computed where the bytes were made
// (by the thread that compressed them), so that the file's checksum is only a
// combination of these.
struct ContainerPiece {
    std::span<const std::uint8_t> bytes;
    std::uint32_t crc = 0;
};

// The CRC-32 of `bytes`, large runs split over the processors.
std::uint32_t ChecksumOf(std::span<const std::uint8_t> bytes);

// Writes a container to a sink as it goes: the header at once, each section
// when it is given, the checksum at the end. Sections are written whole, so
// a writer needs to hold only the section in hand.
class ContainerWriter {
  public:
    ContainerWriter(ByteSink& sink, FourCC magic, int width, int height);
    void section(FourCC tag, std::span<const std::uint8_t> bytes);
    void section(FourCC tag, std::span<const ContainerPiece> pieces);
    // Writes the checksum; false when the sink failed anywhere.
    bool finish();

  private:
    void put(std::span<const std::uint8_t> bytes, std::uint32_t crc);
    void put(std::span<const std::uint8_t> bytes) { put(bytes, ChecksumOf(bytes)); }

    ByteSink& sink_;
    std::uint32_t crc_ = 0;
    bool ok_ = true;
};

// Writes a container atomically to `path`, its sections made by `fill`:
// nothing when written, else the message (the old file, if any, then being
// as it was).
std::optional<std::string> WriteContainerFile(const std::string& path, FourCC magic, int width,
                                              int height,
                                              const std::function<void(ContainerWriter&)>& fill);

// A container whose header, section table and checksum were found sound.
struct Container {
    int width = 0;
    int height = 0;
    std::vector<std::pair<FourCC, std::span<const std::uint8_t>>> sections;

    // The bytes of the section `tag` when there is exactly one, else nothing.
    std::optional<std::span<const std::uint8_t>> section(FourCC tag) const;
    // Every section `tag`, in the file's order.
    std::vector<std::span<const std::uint8_t>> sectionsTagged(FourCC tag) const;
};

// Checks, in this order, the magic (`wrongType` when it differs), the version,
// the picture size, that every section lies inside the file and that the
// checksum matches. The sections point into `bytes`. A tag may appear more
// than once; the formats say which may.
ReadResult<Container> ParseContainer(std::span<const std::uint8_t> bytes, FourCC magic,
                                     const char* wrongType);

}  // namespace wib
