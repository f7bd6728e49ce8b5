// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/targa_writer.h"

#include <algorithm>
#include <array>
#include <memory>

#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "fileio/colour_palette.h"
#include "fileio/file_messages.h"
#include "pixel/interleave.h"

namespace wib {

namespace {

constexpr std::size_t kBandBytes = std::size_t{1} << 20;

TargaHeader HeaderFor(int width, int height, int formatCode, TargaRowOrder order) {
    TargaHeader header;
    header.width = static_cast<std::uint16_t>(width);
    header.height = static_cast<std::uint16_t>(height);
    switch (formatCode) {
        case kTargaFormat24:
            header.imageType = kTargaTrueColor;
            header.pixelDepth = 24;
            break;
        case kTargaFormat32:
            header.imageType = kTargaTrueColor;
            header.pixelDepth = 32;
            header.descriptor = 8;  // alpha bits
            break;
        case kTargaFormatGrey:
            header.imageType = kTargaGreyscale;
            header.pixelDepth = 8;
            break;
        default:
            header.imageType = kTargaColorMapped;
            header.colorMapType = 1;
            header.colorMapLength = 256;
            header.colorMapEntrySize = 24;
            header.pixelDepth = 8;
            break;
    }
    if (order == TargaRowOrder::TopFirst) {
        header.descriptor |= kTargaTopOrigin;
    }
    return header;
}

}  // namespace

std::optional<int> TargaFormatCode(int choice) {
    constexpr std::array<int, 4> kCodes{kTargaFormat24, kTargaFormat32, kTargaFormatGrey,
                                        kTargaFormatIndexed};
    if (choice < 1 || choice > 4) {
        return std::nullopt;
    }
    return kCodes[static_cast<std::size_t>(choice - 1)];
}

bool EncodeTarga(const SourcePlanes& planes, int width, int height, int formatCode,
                 TargaRowOrder order, ByteSink& sink) {
    if (formatCode != kTargaFormat24 && formatCode != kTargaFormat32 &&
        formatCode != kTargaFormatGrey && formatCode != kTargaFormatIndexed) {
        return false;
    }
    const TargaHeader header = HeaderFor(width, height, formatCode, order);
    std::array<std::uint8_t, kTargaHeaderSize> headerBytes{};
    WriteTargaHeader(header, headerBytes);
    if (!sink.write(headerBytes)) {
        return false;
    }

    std::optional<ColourPalette> palette;
    if (formatCode == kTargaFormatIndexed) {
        palette = ColourPalette::Build(planes.r, planes.g, planes.b, width, height);
        if (!sink.write(palette->entries())) {
            return false;
        }
    }

    const int bytesPerPixel = header.pixelDepth / 8;
    const std::size_t rowBytes = static_cast<std::size_t>(width) * bytesPerPixel;
    if (rowBytes == 0) {
        return true;
    }
    const int bandRows = static_cast<int>(std::max<std::size_t>(1, kBandBytes / rowBytes));
    const auto band = std::make_unique_for_overwrite<std::uint8_t[]>(
        rowBytes * static_cast<std::size_t>(std::min(bandRows, height)));
    for (int first = 0; first < height; first += bandRows) {
        const int rows = std::min(bandRows, height - first);
        for (int i = 0; i < rows; ++i) {
            const int fileRow = first + i;
            const int y = order == TargaRowOrder::TopFirst ? fileRow : height - 1 - fileRow;
            std::uint8_t* out = band.get() + rowBytes * static_cast<std::size_t>(i);
            const std::uint8_t* r = planes.r.row(y);
            const std::uint8_t* g = planes.g.row(y);
            const std::uint8_t* b = planes.b.row(y);
            switch (formatCode) {
                case kTargaFormat24:
                    JoinBGR(r, g, b, static_cast<std::size_t>(width), out);
                    break;
                case kTargaFormat32:
                    JoinBGRA(r, g, b, planes.a.row(y), static_cast<std::size_t>(width), out);
                    break;
                case kTargaFormatGrey:
                    JoinGrey(r, g, b, static_cast<std::size_t>(width), out);
                    break;
                default:
                    palette->mapRow(r, g, b, width, out);
                    break;
            }
        }
        if (!sink.write({band.get(), rowBytes * static_cast<std::size_t>(rows)})) {
            return false;
        }
    }
    return true;
}

bool SaveTarga(Workspace& workspace, const std::string& path, int formatCode, TargaRowOrder order) {
    const Document& doc = workspace.document;
    // A layered picture is saved as the canvas shows it: the composite, its
    // coverage as the alpha channel, colour straight.
    std::optional<LayerPixels> composite;
    if (!IsFlatPicture(workspace)) {
        composite = CompositePicture(workspace);
    }
    const SourcePlanes planes =
        composite ? SourcePlanes{composite->r, composite->g, composite->b, composite->a}
                  : SourcePlanes{doc.RBuffer, doc.GBuffer, doc.BBuffer, doc.ABuffer};
    FileSink sink(path);
    const bool written = sink.isOpen() &&
                         EncodeTarga(planes, doc.width, doc.height, formatCode, order, sink) &&
                         sink.close();
    if (!written) {
        workspace.host.prompter.message(CannotWriteMessage(path, sink.error()));
    }
    return written;
}

}  // namespace wib
