// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/targa_decode.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "pixel/interleave.h"

namespace wib {

namespace {

constexpr std::size_t kBandBytes = std::size_t{1} << 22;
constexpr std::size_t kPaletteBytes = 768;

// Follows the rows as they come from the file and reports progress when the
// percentage moves.
class RowWalk {
  public:
    RowWalk(int height, TargaRowOrder order, const ProgressReport& progress)
        : height_(height), order_(order), progress_(progress) {}

    // The buffer row of file row `fileRow`.
    int bufferRow(int fileRow) const {
        return order_ == TargaRowOrder::TopFirst ? fileRow : height_ - 1 - fileRow;
    }
    void rowDone(int fileRow) {
        if (!progress_) {
            return;
        }
        const int percent = height_ > 1 ? 100 * fileRow / (height_ - 1) : 100;
        if (percent != lastPercent_) {
            lastPercent_ = percent;
            progress_(percent);
        }
    }

  private:
    int height_;
    TargaRowOrder order_;
    const ProgressReport& progress_;
    int lastPercent_ = -1;
};

void SplitPixels(const std::uint8_t* source, std::size_t count, int bytesPerPixel,
                 const ImagePlanes& out, int x, int y) {
    std::uint8_t* r = out.r.row(y) + x;
    std::uint8_t* g = out.g.row(y) + x;
    std::uint8_t* b = out.b.row(y) + x;
    if (bytesPerPixel == 4) {
        SplitBGRA(source, count, r, g, b, out.a.row(y) + x);
    } else {
        SplitBGR(source, count, r, g, b);
    }
}

void RepeatPixel(const std::uint8_t* pixel, std::size_t count, int bytesPerPixel,
                 const ImagePlanes& out, int x, int y) {
    std::memset(out.b.row(y) + x, pixel[0], count);
    std::memset(out.g.row(y) + x, pixel[1], count);
    std::memset(out.r.row(y) + x, pixel[2], count);
    if (bytesPerPixel == 4) {
        std::memset(out.a.row(y) + x, pixel[3], count);
    }
}

// Takes whole rows of `rowBytes` from `body` in bands and hands each to
// `decodeRow` with its buffer row.
template <typename DecodeRow>
bool DecodeRows(ByteSource& body, std::size_t rowBytes, int height, RowWalk& walk,
                DecodeRow decodeRow) {
    const int bandRows = static_cast<int>(std::max<std::size_t>(1, kBandBytes / rowBytes));
    for (int first = 0; first < height; first += bandRows) {
        const int rows = std::min(bandRows, height - first);
        const auto band = body.next(rowBytes * rows);
        const int whole = static_cast<int>(band.size() / rowBytes);
        for (int i = 0; i < whole; ++i) {
            decodeRow(band.data() + rowBytes * i, walk.bufferRow(first + i));
            walk.rowDone(first + i);
        }
        if (whole < rows) {
            return false;
        }
    }
    return true;
}

bool DecodeTrueColor(const TargaHeader& header, ByteSource& body, const ImagePlanes& out,
                     RowWalk& walk) {
    const int bpp = TargaBytesPerPixel(header);
    return DecodeRows(
        body, std::size_t{header.width} * bpp, header.height, walk,
        [&](const std::uint8_t* row, int y) { SplitPixels(row, header.width, bpp, out, 0, y); });
}

bool DecodeTrueColorRle(const TargaHeader& header, ByteSource& body, const ImagePlanes& out,
                        RowWalk& walk) {
    const int bpp = TargaBytesPerPixel(header);
    const auto data = body.next(static_cast<std::size_t>(TargaRleBodyLimit(header)));
    const std::uint8_t* at = data.data();
    const std::uint8_t* const end = at + data.size();
    const int width = header.width;
    for (int row = 0; row < header.height; ++row) {
        const int y = walk.bufferRow(row);
        int x = 0;
        while (x < width) {
            if (at == end) {
                return false;
            }
            const int packet = *at++;
            const int count = (packet & 127) + 1;
            const int kept = std::min(count, width - x);
            if (packet >= 128) {
                if (end - at < bpp) {
                    return false;
                }
                RepeatPixel(at, static_cast<std::size_t>(kept), bpp, out, x, y);
                at += bpp;
            } else {
                const std::ptrdiff_t bytes = static_cast<std::ptrdiff_t>(count) * bpp;
                if (end - at < bytes) {
                    const auto whole = static_cast<int>((end - at) / bpp);
                    SplitPixels(at, static_cast<std::size_t>(std::min(whole, kept)), bpp, out, x,
                                y);
                    return false;
                }
                SplitPixels(at, static_cast<std::size_t>(kept), bpp, out, x, y);
                at += bytes;
            }
            x += count;
        }
        walk.rowDone(row);
    }
    return true;
}

// The palette of a colour-mapped file: its entries copied in starting at the
// first-entry value taken as a byte offset, as the program always has (files
// with a non-zero first entry come out with their channels shifted).
bool ReadColorMap(const TargaHeader& header, ByteSource& body,
                  std::array<std::uint8_t, kPaletteBytes>& palette) {
    const std::size_t mapBytes = std::size_t{header.colorMapLength} * 3;
    const auto map = body.next(mapBytes);
    if (map.size() < mapBytes) {
        return false;
    }
    const std::size_t offset = header.colorMapFirstEntry;
    if (offset < kPaletteBytes) {
        const std::size_t copied = std::min(map.size(), kPaletteBytes - offset);
        std::memcpy(palette.data() + offset, map.data(), copied);
    }
    return true;
}

bool DecodeIndexed(const TargaHeader& header, ByteSource& body, const ImagePlanes& out,
                   RowWalk& walk) {
    std::array<std::uint8_t, kPaletteBytes> palette{};
    if (header.imageType == kTargaGreyscale) {
        for (std::size_t i = 0; i < kPaletteBytes; i += 3) {
            palette[i] = palette[i + 1] = palette[i + 2] = static_cast<std::uint8_t>(i / 3);
        }
    } else if (!ReadColorMap(header, body, palette)) {
        return false;
    }
    return DecodeRows(body, header.width, header.height, walk, [&](const std::uint8_t* row, int y) {
        SplitIndexed(row, header.width, palette.data(), out.r.row(y), out.g.row(y), out.b.row(y));
    });
}

}  // namespace

std::uint64_t TargaRleBodyLimit(const TargaHeader& header) {
    return std::uint64_t{header.width} * header.height * (TargaBytesPerPixel(header) + 1);
}

bool DecodeTarga(const TargaHeader& header, ByteSource& body, const ImagePlanes& out,
                 TargaRowOrder order, const ProgressReport& progress) {
    if (header.width == 0 || header.height == 0) {
        return true;
    }
    RowWalk walk(header.height, order, progress);
    switch (header.imageType) {
        case kTargaTrueColor:
            return DecodeTrueColor(header, body, out, walk);
        case kTargaTrueColorRle:
            return DecodeTrueColorRle(header, body, out, walk);
        default:
            return DecodeIndexed(header, body, out, walk);
    }
}

}  // namespace wib
