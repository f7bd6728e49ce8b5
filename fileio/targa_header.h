// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace wib {

// The 18-byte header that opens every Targa file, little-endian.
struct TargaHeader {
    std::uint8_t idLength = 0;
    std::uint8_t colorMapType = 0;
    std::uint8_t imageType = 0;
    std::uint16_t colorMapFirstEntry = 0;
    std::uint16_t colorMapLength = 0;
    std::uint8_t colorMapEntrySize = 0;
    std::uint16_t xOrigin = 0;
    std::uint16_t yOrigin = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint8_t pixelDepth = 0;
    std::uint8_t descriptor = 0;
};

inline constexpr std::size_t kTargaHeaderSize = 18;

// Image types the reader knows.
enum TargaType : std::uint8_t {
    kTargaNone = 0,
    kTargaColorMapped = 1,
    kTargaTrueColor = 2,
    kTargaGreyscale = 3,
    kTargaColorMappedRle = 9,
    kTargaTrueColorRle = 10,
    kTargaGreyscaleRle = 11,
};

// In which order a file's rows lie. The reader takes every file as bottom
// row first, as the format's default origin has it, whatever its descriptor
// says; only the converter bridge, which knows how its converter writes,
// asks for the other order.
enum class TargaRowOrder { BottomFirst, TopFirst };

// Bit 5 of the descriptor: rows run from the top.
inline constexpr std::uint8_t kTargaTopOrigin = 0x20;

TargaHeader ParseTargaHeader(std::span<const std::uint8_t, kTargaHeaderSize> bytes);
void WriteTargaHeader(const TargaHeader& header, std::span<std::uint8_t, kTargaHeaderSize> bytes);

// The message a header is refused with, or nothing when it can be read: types
// 0, 9 and 11 with their fixed texts, pixel depths other than 8 (types 1 and
// 3) or 24 and 32 (types 2 and 10) with "N bit Targas not currently
// supported", any other type as a corrupt file.
std::optional<std::string> TargaRefusal(const TargaHeader& header);

// Bytes per pixel of an accepted header.
inline int TargaBytesPerPixel(const TargaHeader& header) {
    return header.pixelDepth / 8;
}

}  // namespace wib
