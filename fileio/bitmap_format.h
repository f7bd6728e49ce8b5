// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fileio/byte_sink.h"
#include "fileio/image_planes.h"
#include "fileio/targa_writer.h"

namespace wib {

inline constexpr std::size_t kBitmapFileHeaderSize = 14;
inline constexpr std::size_t kBitmapInfoHeaderSize = 40;
// The older header of OS/2 bitmaps: 16-bit sizes, three-byte palette entries.
inline constexpr std::size_t kBitmapCoreHeaderSize = 12;

// The headers of a Windows bitmap and where its parts lie. Offsets count from
// the start of the bytes that were parsed: a whole file, or a packed bitmap
// (the info header, the palette and the bits, as the clipboard holds one).
struct BitmapInfo {
    std::uint16_t fileType = 0;  // "BM" as a little-endian word; 0 for a packed bitmap
    std::uint32_t fileSize = 0;
    std::uint32_t bitOffset = 0;
    std::uint32_t sizeInfoHeader = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;  // negative for rows stored top first
    std::uint16_t planes = 0;
    std::uint16_t bitCount = 0;
    std::uint32_t compression = 0;
    std::uint32_t sizeImage = 0;
    std::int32_t xPelsPerMeter = 0;
    std::int32_t yPelsPerMeter = 0;
    std::uint32_t clrUsed = 0;
    std::uint32_t clrImportant = 0;

    std::size_t infoOffset = 0;     // where the info header starts
    std::size_t paletteOffset = 0;  // where the palette starts
    std::size_t paletteEntries = 0;
    std::size_t paletteEntryBytes = 4;  // 3 under the older 12-byte header
    std::size_t rowBytes = 0;           // one stored row, padded to 4 bytes

    int rows() const { return height < 0 ? -height : height; }
};

enum class BitmapProblem {
    NotBitmap,   // no signature, an unknown header or an impossible size
    Depth,       // not 8, 24 or 32 bits a pixel
    Compressed,  // a compression other than none
    TooLarge,    // wider or taller than the largest image the program makes
};

// Parses the headers; on failure `problem` says why. Sizes are checked
// against the program's largest image before anything is made of them.
std::optional<BitmapInfo> ParseBitmapFile(std::span<const std::uint8_t> bytes,
                                          BitmapProblem& problem);
std::optional<BitmapInfo> ParsePackedBitmap(std::span<const std::uint8_t> bytes,
                                            BitmapProblem& problem);

// A bitmap file read as far as its headers say it goes (a damaged file may
// hold less), with its parsed headers or the reason they were refused.
struct BitmapFile {
    std::vector<std::uint8_t> bytes;
    std::optional<BitmapInfo> info;
    BitmapProblem problem = BitmapProblem::NotBitmap;
};

// Nothing when the file cannot be opened.
std::optional<BitmapFile> ReadBitmapFile(const std::string& path);

// Copies the pixels of a parsed 8, 24 or 32-bit bitmap into the top-left of
// `out`; 32-bit pixels give the alpha plane too. Palette indices past the
// palette give black. False when the bits end before the last row (the rows
// read are in).
bool DecodeBitmap(const BitmapInfo& info, std::span<const std::uint8_t> bytes,
                  const ImagePlanes& out);

// Writes the top-left width x height of the planes as an uncompressed bitmap
// of 24 bits a pixel, or 32 with the alpha plane, rows bottom first.
bool EncodeBitmap(const SourcePlanes& planes, int width, int height, int bitCount, ByteSink& sink);

}  // namespace wib
