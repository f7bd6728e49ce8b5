// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/bitmap_format.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "core/document_limits.h"
#include "fileio/byte_source.h"
#include "pixel/interleave.h"

namespace wib {

namespace {

constexpr std::uint16_t kBitmapSignature = 0x4D42;  // "BM"
constexpr std::size_t kPaletteBytes = 768;
// Larger than any info header the format has had (the fifth version has 124 bytes).
constexpr std::uint32_t kMaxInfoHeaderSize = 1024;

std::uint16_t Word(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | (bytes[at + 1] << 8));
}

std::uint32_t Dword(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint32_t>(bytes[at]) |
           (static_cast<std::uint32_t>(bytes[at + 1]) << 8) |
           (static_cast<std::uint32_t>(bytes[at + 2]) << 16) |
           (static_cast<std::uint32_t>(bytes[at + 3]) << 24);
}

template <typename T>
void Put(std::vector<std::uint8_t>& bytes, T value) {
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        bytes.push_back(
            static_cast<std::uint8_t>((static_cast<std::uint64_t>(value) >> (8 * i)) & 0xFF));
    }
}

// Checks the sizes, depth and compression of a parsed header and works out
// where its palette and rows lie.
std::optional<BitmapInfo> CheckInfo(BitmapInfo info, BitmapProblem& problem) {
    const std::int64_t rows = info.height < 0 ? -std::int64_t{info.height} : info.height;
    if (info.width < 1 || rows < 1) {
        return std::nullopt;
    }
    if (info.width > kMaxDocumentSide || rows > kMaxDocumentSide) {
        problem = BitmapProblem::TooLarge;
        return std::nullopt;
    }
    if (info.bitCount != 8 && info.bitCount != 24 && info.bitCount != 32) {
        problem = BitmapProblem::Depth;
        return std::nullopt;
    }
    if (info.compression != 0) {
        problem = BitmapProblem::Compressed;
        return std::nullopt;
    }
    info.paletteOffset = info.infoOffset + info.sizeInfoHeader;
    if (info.bitCount == 8) {
        info.paletteEntries = info.clrUsed == 0 ? 256 : std::min<std::size_t>(info.clrUsed, 256);
    }
    info.rowBytes =
        (static_cast<std::size_t>(info.width) * info.bitCount / 8 + 3) & ~std::size_t{3};
    return info;
}

// The older 12-byte header: 16-bit width and height, no compression, a
// palette of three-byte entries, rows bottom first.
std::optional<BitmapInfo> ParseCoreInfo(std::span<const std::uint8_t> bytes, std::size_t infoOffset,
                                        BitmapProblem& problem) {
    BitmapInfo info;
    info.infoOffset = infoOffset;
    info.sizeInfoHeader = kBitmapCoreHeaderSize;
    info.width = Word(bytes, infoOffset + 4);
    info.height = Word(bytes, infoOffset + 6);
    info.planes = Word(bytes, infoOffset + 8);
    info.bitCount = Word(bytes, infoOffset + 10);
    if (info.bitCount == 32) {
        problem = BitmapProblem::Depth;
        return std::nullopt;
    }
    info.paletteEntryBytes = 3;
    return CheckInfo(info, problem);
}

// Reads the info header at `infoOffset` and checks it; the caller fills in
// the file header fields.
std::optional<BitmapInfo> ParseInfo(std::span<const std::uint8_t> bytes, std::size_t infoOffset,
                                    BitmapProblem& problem) {
    problem = BitmapProblem::NotBitmap;
    if (bytes.size() >= infoOffset + kBitmapCoreHeaderSize &&
        Dword(bytes, infoOffset) == kBitmapCoreHeaderSize) {
        return ParseCoreInfo(bytes, infoOffset, problem);
    }
    if (bytes.size() < infoOffset + kBitmapInfoHeaderSize) {
        return std::nullopt;
    }
    BitmapInfo info;
    info.infoOffset = infoOffset;
    info.sizeInfoHeader = Dword(bytes, infoOffset);
    info.width = static_cast<std::int32_t>(Dword(bytes, infoOffset + 4));
    info.height = static_cast<std::int32_t>(Dword(bytes, infoOffset + 8));
    info.planes = Word(bytes, infoOffset + 12);
    info.bitCount = Word(bytes, infoOffset + 14);
    info.compression = Dword(bytes, infoOffset + 16);
    info.sizeImage = Dword(bytes, infoOffset + 20);
    info.xPelsPerMeter = static_cast<std::int32_t>(Dword(bytes, infoOffset + 24));
    info.yPelsPerMeter = static_cast<std::int32_t>(Dword(bytes, infoOffset + 28));
    info.clrUsed = Dword(bytes, infoOffset + 32);
    info.clrImportant = Dword(bytes, infoOffset + 36);

    if (info.sizeInfoHeader < kBitmapInfoHeaderSize || info.sizeInfoHeader > kMaxInfoHeaderSize) {
        return std::nullopt;
    }
    return CheckInfo(std::move(info), problem);
}

void DecodeRow(const BitmapInfo& info, const std::uint8_t* row,
               const std::array<std::uint8_t, kPaletteBytes>& palette, const ImagePlanes& out,
               int y) {
    const auto count = static_cast<std::size_t>(info.width);
    switch (info.bitCount) {
        case 8:
            SplitIndexed(row, count, palette.data(), out.r.row(y), out.g.row(y), out.b.row(y));
            break;
        case 24:
            SplitBGR(row, count, out.r.row(y), out.g.row(y), out.b.row(y));
            break;
        default:
            SplitBGRA(row, count, out.r.row(y), out.g.row(y), out.b.row(y), out.a.row(y));
            break;
    }
}

}  // namespace

std::optional<BitmapInfo> ParseBitmapFile(std::span<const std::uint8_t> bytes,
                                          BitmapProblem& problem) {
    problem = BitmapProblem::NotBitmap;
    if (bytes.size() < kBitmapFileHeaderSize || Word(bytes, 0) != kBitmapSignature) {
        return std::nullopt;
    }
    auto info = ParseInfo(bytes, kBitmapFileHeaderSize, problem);
    if (info) {
        info->fileType = kBitmapSignature;
        info->fileSize = Dword(bytes, 2);
        info->bitOffset = Dword(bytes, 10);
        // The older header has no colour count: the palette runs up to the bits.
        if (info->paletteEntryBytes == 3 && info->paletteEntries > 0 &&
            info->bitOffset > info->paletteOffset) {
            info->paletteEntries =
                std::min<std::size_t>(256, (info->bitOffset - info->paletteOffset) / 3);
        }
    }
    return info;
}

std::optional<BitmapInfo> ParsePackedBitmap(std::span<const std::uint8_t> bytes,
                                            BitmapProblem& problem) {
    auto info = ParseInfo(bytes, 0, problem);
    if (info) {
        info->bitOffset = static_cast<std::uint32_t>(
            info->paletteOffset + info->paletteEntryBytes * info->paletteEntries);
    }
    return info;
}

bool DecodeBitmap(const BitmapInfo& info, std::span<const std::uint8_t> bytes,
                  const ImagePlanes& out) {
    std::array<std::uint8_t, kPaletteBytes> palette{};
    for (std::size_t i = 0; i < info.paletteEntries; ++i) {
        const std::size_t at = info.paletteOffset + info.paletteEntryBytes * i;
        if (at + 3 > bytes.size()) {
            break;
        }
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), 3, palette.begin() + 3 * i);
    }
    const int rows = info.rows();
    const std::size_t available = info.bitOffset < bytes.size() ? bytes.size() - info.bitOffset : 0;
    const auto whole = static_cast<int>(
        std::min<std::size_t>(available / info.rowBytes, static_cast<std::size_t>(rows)));
    for (int row = 0; row < whole; ++row) {
        const std::uint8_t* data = bytes.data() + info.bitOffset + info.rowBytes * row;
        DecodeRow(info, data, palette, out, info.height < 0 ? row : rows - 1 - row);
    }
    return whole == rows;
}

std::optional<BitmapFile> ReadBitmapFile(const std::string& path) {
    FileSource source(path);
    if (!source.isOpen()) {
        return std::nullopt;
    }
    BitmapFile file;
    const auto head = source.next(kBitmapFileHeaderSize + kBitmapInfoHeaderSize);
    file.bytes.assign(head.begin(), head.end());
    file.info = ParseBitmapFile(file.bytes, file.problem);
    if (!file.info) {
        return file;
    }
    const BitmapInfo& info = *file.info;
    const std::uint64_t used =
        std::max<std::uint64_t>(info.bitOffset,
                                info.paletteOffset + info.paletteEntryBytes * info.paletteEntries) +
        std::uint64_t{info.rowBytes} * static_cast<std::uint64_t>(info.rows());
    const auto rest = source.next(static_cast<std::size_t>(used - file.bytes.size()));
    file.bytes.insert(file.bytes.end(), rest.begin(), rest.end());
    return file;
}

bool EncodeBitmap(const SourcePlanes& planes, int width, int height, int bitCount, ByteSink& sink) {
    const std::size_t rowBytes =
        (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount / 8) + 3) &
        ~std::size_t{3};
    const std::size_t imageBytes = rowBytes * static_cast<std::size_t>(height);
    const std::size_t headerBytes = kBitmapFileHeaderSize + kBitmapInfoHeaderSize;
    std::vector<std::uint8_t> header;
    Put<std::uint16_t>(header, kBitmapSignature);
    Put<std::uint32_t>(header, static_cast<std::uint32_t>(headerBytes + imageBytes));
    Put<std::uint32_t>(header, 0);
    Put<std::uint32_t>(header, static_cast<std::uint32_t>(headerBytes));
    Put<std::uint32_t>(header, kBitmapInfoHeaderSize);
    Put<std::int32_t>(header, width);
    Put<std::int32_t>(header, height);
    Put<std::uint16_t>(header, 1);
    Put<std::uint16_t>(header, static_cast<std::uint16_t>(bitCount));
    Put<std::uint32_t>(header, 0);
    Put<std::uint32_t>(header, static_cast<std::uint32_t>(imageBytes));
    Put<std::int32_t>(header, 2835);  // 72 pixels per inch
    Put<std::int32_t>(header, 2835);
    Put<std::uint32_t>(header, 0);
    Put<std::uint32_t>(header, 0);
    if (!sink.write(header)) {
        return false;
    }
    std::vector<std::uint8_t> row(rowBytes, 0);
    for (int y = height - 1; y >= 0; --y) {
        if (bitCount == 32) {
            JoinBGRA(planes.r.row(y), planes.g.row(y), planes.b.row(y), planes.a.row(y),
                     static_cast<std::size_t>(width), row.data());
        } else {
            JoinBGR(planes.r.row(y), planes.g.row(y), planes.b.row(y),
                    static_cast<std::size_t>(width), row.data());
        }
        if (!sink.write(row)) {
            return false;
        }
    }
    return true;
}

}  // namespace wib
